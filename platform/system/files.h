// Files read whole and replaced whole, and the files of a directory. Paths are the platform's bytes.
#pragma once

#include "platform/system/FileStamp.h"
#include "platform/text/Result.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace blockhouse {

// True for an existing normal file (through links); false for directories, hidden files and at any error.
[[nodiscard]] bool FileExists(const std::string& path);

// The most bytes of a file that is opened to be worked on: what the text engine and its undo history still count
// without overflow.
inline constexpr std::size_t largestDocument = 1'000'000'000;

// The most bytes of a file that holds a list.
inline constexpr std::size_t largestListFile = 16'000'000;

// Every byte of a normal file. A directory, a pipe and a device are errors, never a wait; so are more than `limit`
// bytes, whatever size the file claims to have.
Result<std::string> readWholeFile(const std::string& path, std::size_t limit = std::string::npos);

struct StampedBytes {
    std::string bytes;
    FileStamp stamp; // of the state before the first byte was read
};

// As readWholeFile().
Result<StampedBytes> readStampedFile(const std::string& path, std::size_t limit = std::string::npos);

// Replaces the whole content: afterwards the file holds the old bytes or the new ones, never a mix, whatever happens
// in between. A symbolic link stays one and its target is replaced.
//
// Owner, permissions, access list and extended attributes survive; on Windows attributes, access list and further
// streams. A group that cannot be kept leaves the new group no more rights than everybody has. The file is written in
// place where the folder forbids a new file, where something holds on to the file's name, and where access list,
// attributes or further names of the file (hard links) could not be kept otherwise; only then an I/O error or the end
// of the process can leave a mix.
Result<Done> replaceWholeFile(const std::string& path, std::string_view bytes);

struct Replaced {
    FileStamp stamp;    // of what was written
    std::string backup; // the path of what others had written, empty if nobody had
};

// As replaceWholeFile(). But a file that is in another state than `known` holds what somebody else wrote, and that is
// kept in the same folder as "<stem> <date> <time>.bak"; if it cannot be kept, nothing is written. Without a known
// state nothing is kept.
Result<Replaced> replaceKnownFile(const std::string& path, std::string_view bytes,
                                  const std::optional<FileStamp>& known);

// Names of the directory's normal files, hidden ones left out, ordered byte by byte after lowering. A name that
// does not match `pattern` is left out ("" takes every name; see matchesPattern).
Result<std::vector<std::string>> fileNamesIn(const std::string& directory, std::string_view pattern = {});

// Names of the directory's directories, links to directories counted in, ordered alike; those whose name begins with a
// dot come last.
Result<std::vector<std::string>> folderNamesIn(const std::string& directory);

// Wildcard rule without regard to case: "*" stands for any text, "?" for one character, and a final ".*" also
// matches the end of a name, so "*ini.*" takes "data.ini", "ini.bak" and "ini", but not "foo.inix".
[[nodiscard]] bool matchesPattern(std::string_view name, std::string_view pattern);

} // namespace blockhouse
