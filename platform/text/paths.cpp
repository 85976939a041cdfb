#include "platform/text/paths.h"

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

} // namespace blockhouse
