// Paths as the platform's bytes: UTF-8 on Windows, elsewhere what the system stores. Both "\" and "/" separate parts
// everywhere.
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

// How many bytes of an absolute path are its drive: "/", "C:\" or "\\machine\share". 0 for other paths.
[[nodiscard]] std::size_t driveLength(std::string_view path);

// Without separators at its end, unless it is a drive.
[[nodiscard]] std::string withoutTrailingSeparators(std::string_view path);

// The folder that holds `path`; the path itself for a drive.
[[nodiscard]] std::string folderAbove(std::string_view path);

} // namespace blockhouse
