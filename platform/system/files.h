// Files read whole and replaced whole, and the files of a directory. Paths are the platform's bytes.
#pragma once

#include "platform/system/FileStamp.h"
#include "platform/text/Result.h"

#include <string>
#include <string_view>
#include <vector>

namespace blockhouse {

// True for an existing normal file (through links); false for directories, hidden files and at any error.
[[nodiscard]] bool FileExists(const std::string& path);

// The most bytes of a file that is opened to be worked on: what the text engine and its undo history still count
// without overflow.
inline constexpr std::size_t largestDocument = 1'000'000'000;

// Every byte of a normal file. A directory, a pipe, a device and a file of more than `limit` bytes are errors, never a
// wait.
Result<std::string> readWholeFile(const std::string& path, std::size_t limit = std::string::npos);

// Replaces the whole content: afterwards the file holds the old bytes or the new ones, never a mix, whatever
// happens in between. Permissions survive, a symbolic link stays one and its target is replaced. Where the folder
// forbids a new file, the file is written in place.
Result<Done> replaceWholeFile(const std::string& path, std::string_view bytes);

struct StampedBytes {
    std::string bytes;
    FileStamp stamp;
};

Result<StampedBytes> readStampedFile(const std::string& path, std::size_t limit = std::string::npos);

struct Replaced {
    FileStamp stamp;
    std::string backup;
};

Result<Replaced> replaceKnownFile(const std::string& path, std::string_view bytes,
                                  const std::optional<FileStamp>& known);
// Names of the directory's normal files, hidden ones left out, ordered byte by byte after lowering. A name that
// does not match `pattern` is left out ("" takes every name; see matchesPattern).
Result<std::vector<std::string>> fileNamesIn(const std::string& directory, std::string_view pattern = {});

// Names of the directory's directories, links to directories counted in, ordered alike; hidden ones come last.
Result<std::vector<std::string>> folderNamesIn(const std::string& directory);

// Wildcard rule without regard to case: "*" stands for any text, "?" for one character, and a final ".*" also
// matches the end of a name, so "*ini.*" takes "data.ini", "ini.bak" and "ini", but not "foo.inix".
[[nodiscard]] bool matchesPattern(std::string_view name, std::string_view pattern);

} // namespace blockhouse
