// Paths as the platform's bytes. Both "\" and "/" separate parts everywhere.
#pragma once

#include <string>
#include <string_view>

namespace blockhouse {

[[nodiscard]] constexpr bool isPathSeparator(char c) {
    return c == '\\' || c == '/';
}

// 0-based offset of the last separator, or npos.
[[nodiscard]] std::size_t lastPathSeparator(std::string_view path);

// The text after the last separator; the whole path when it has none; empty when it ends in one.
[[nodiscard]] std::string LastPathPart(std::string_view path);

// The path from its last separator on, as a window shows it: the separator and the file name. The whole path when it
// has no separator.
[[nodiscard]] std::string captionOf(std::string_view path);

// Joined with the platform's own separator; a directory that already ends in a separator gets no second one
// and an empty directory none at all.
[[nodiscard]] std::string joinPath(std::string_view directory, std::string_view name);

} // namespace blockhouse
