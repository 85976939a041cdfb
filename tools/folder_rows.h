// The lines of a directory list: the way from the drive to the current folder, one deeper than the other, and below
// it the folders inside. Paths are the platform's bytes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace blockhouse {

struct FolderRow {
    std::string path;
    std::string name; // its last part; for the drive its whole path
    int depth = 0;    // the drive has 0
    bool isOpen = false;

    bool operator==(const FolderRow&) const = default;
};

// `current` is an absolute path. `folders` are the names of the folders inside it, in the order wanted. The last open
// row is the current folder's.
[[nodiscard]] std::vector<FolderRow> folderRows(std::string_view current, const std::vector<std::string>& folders);

// True for the folder itself and for everything below it. Trailing separators do not count.
[[nodiscard]] bool isInside(std::string_view path, std::string_view folder);

} // namespace blockhouse
