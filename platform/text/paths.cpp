#include "platform/text/paths.h"

#include <algorithm>
#include <filesystem>

namespace blockhouse {

std::size_t lastPathSeparator(std::string_view path) {
    return path.find_last_of("\\/");
}

std::string LastPathPart(std::string_view path) {
    const std::size_t separator = lastPathSeparator(path);
    return std::string(separator == std::string_view::npos ? path : path.substr(separator + 1));
}

std::string captionOf(std::string_view path) {
    const std::size_t separator = lastPathSeparator(path);
    return std::string(separator == std::string_view::npos ? path : path.substr(separator));
}

std::string joinPath(std::string_view directory, std::string_view name) {
    std::string joined(directory);
    if (!joined.empty() && !isPathSeparator(joined.back()))
        joined += static_cast<char>(std::filesystem::path::preferred_separator);
    joined += name;
    return joined;
}

std::size_t driveLength(std::string_view path) {
    if (path.starts_with("\\\\")) {
        const std::size_t machineEnd = path.find_first_of("\\/", 2);
        return std::min(machineEnd == std::string_view::npos ? path.size() : path.find_first_of("\\/", machineEnd + 1),
                        path.size());
    }
    if (!path.empty() && isPathSeparator(path.front()))
        return 1;
    const bool hasLetter = path.size() >= 3 && path[1] == ':' && isPathSeparator(path[2]);
    return hasLetter ? 3 : 0;
}

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

} // namespace blockhouse
