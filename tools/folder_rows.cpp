#include "tools/folder_rows.h"

#include "platform/text/paths.h"

namespace blockhouse {
namespace {

// How much of a path is its drive: "/" or "C:\".
std::size_t driveLength(std::string_view path) {
    if (!path.empty() && isPathSeparator(path.front()))
        return 1;
    const bool hasLetter = path.size() >= 3 && path[1] == ':' && isPathSeparator(path[2]);
    return hasLetter ? 3 : 0;
}

} // namespace

std::string withoutTrailingSeparators(std::string_view path) {
    const std::size_t drive = driveLength(path);
    while (path.size() > drive && isPathSeparator(path.back()))
        path.remove_suffix(1);
    return std::string(path);
}

std::string folderAbove(std::string_view path) {
    const std::string inside = withoutTrailingSeparators(path);
    const std::size_t drive = driveLength(inside);
    const std::size_t separator = lastPathSeparator(inside);
    if (inside.size() <= drive || separator == std::string::npos)
        return inside;
    return withoutTrailingSeparators(inside.substr(0, std::max(separator, drive)));
}

bool isInside(std::string_view path, std::string_view folder) {
    const std::string inner = withoutTrailingSeparators(path);
    const std::string outer = withoutTrailingSeparators(folder);
    if (!inner.starts_with(outer) || outer.empty())
        return false;
    return inner.size() == outer.size() || isPathSeparator(outer.back()) || isPathSeparator(inner[outer.size()]);
}

std::vector<FolderRow> folderRows(std::string_view current, const std::vector<std::string>& folders) {
    const std::string path = withoutTrailingSeparators(current);
    std::vector<FolderRow> rows;
    int depth = 0;
    const std::size_t drive = driveLength(path);
    if (drive > 0)
        rows.push_back({path.substr(0, drive), path.substr(0, drive), depth++, true});
    for (std::size_t begin = drive; begin < path.size();) {
        const std::size_t end = std::min(path.find_first_of("\\/", begin), path.size());
        if (end > begin)
            rows.push_back({path.substr(0, end), path.substr(begin, end - begin), depth++, true});
        begin = end + 1;
    }
    rows.reserve(rows.size() + folders.size());
    for (const std::string& name : folders)
        rows.push_back({joinPath(path, name), name, depth, false});
    return rows;
}

} // namespace blockhouse
