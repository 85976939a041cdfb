// Tells one state of a file from another without its bytes: another program's write makes another stamp. Compare for
// equality; the numbers are the system's own.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace blockhouse {

struct FileStamp {
    std::uint64_t volume = 0;
    std::uint64_t file = 0; // a file that took the name has another one
    std::uint64_t size = 0;
    std::int64_t changedSeconds = 0;
    std::int64_t changedNanoseconds = 0;
    // Of the last change of anything about the file, its name and its rights included. No program can set it back. 0 on
    // Windows, where programs that only look after files move it.
    std::int64_t touchedSeconds = 0;
    std::int64_t touchedNanoseconds = 0;

    // What stays when nothing but the file's name changes.
    [[nodiscard]] FileStamp withoutTouch() const { return {volume, file, size, changedSeconds, changedNanoseconds}; }

    bool operator==(const FileStamp&) const = default;
};

// Of the file as it is now; nothing when there is none, or the system does not tell.
[[nodiscard]] std::optional<FileStamp> stampOf(const std::string& path);

// Both paths lead to one file that exists, or are the same.
[[nodiscard]] bool isSameFile(const std::string& path, const std::string& other);

} // namespace blockhouse
