// The bytes of a file that lists paths. Such a file is in the encoding that the system's plain text files are in.
#pragma once

#include <string>

namespace blockhouse {

// From the file's bytes to paths as the program holds them, and back. Where the system's encoding lacks a character of
// a path, the file is UTF-8 and begins with a byte order mark; either kind is read.
[[nodiscard]] std::string pathListFrom(std::string fileBytes);
[[nodiscard]] std::string fileBytesOf(std::string pathList);

} // namespace blockhouse
