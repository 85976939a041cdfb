#include "tools/folder_rows.h"

#include "platform/text/paths.h"

namespace blockhouse {

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
