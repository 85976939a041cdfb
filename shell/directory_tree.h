// The tree of the user's directories and the files in each: two levels, and keys that are unique within the tree.
//
//   directory  key and text are its last folder name, so directories of the same last name share one node
//   file       key is the directory's path joined with the file name, text is the file name
//
// What is already there is refused; nothing is ever removed. Keys and texts are the platform's bytes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace blockhouse {

class DirectoryTree {
public:
    class File {
    public:
        [[nodiscard]] const std::string& key() const { return *key_; }

        [[nodiscard]] std::string_view text() const { return std::string_view(*key_).substr(textStart_); }

    private:
        friend class DirectoryTree;
        const std::string* key_; // in files_, whose elements stay where they are
        std::size_t textStart_;
    };

    struct Directory {
        std::string key;
        std::vector<File> files;
    };

    // What a listed directory would bring into the tree as it is now.
    struct Addition {
        std::size_t directory = 0; // position of its node, existing or to come
        bool directoryIsNew = false;
        std::string directoryKey;
        std::vector<File> files; // none of them in the tree yet
    };

    DirectoryTree() = default;
    DirectoryTree(const DirectoryTree&) = delete;
    DirectoryTree& operator=(const DirectoryTree&) = delete;

    [[nodiscard]] const std::vector<Directory>& directories() const { return directories_; }

    // Takes the keys in, so that each is offered once; the nodes show up with the calls below. Those are made once
    // each, in this order, before the next directory is added.
    [[nodiscard]] Addition add(std::string_view path, const std::vector<std::string>& fileNames);
    void showDirectory(Addition& addition);
    void showFiles(Addition& addition);

private:
    std::vector<Directory> directories_;
    std::unordered_map<std::string, std::size_t> directoryPositions_;
    std::unordered_set<std::string> files_;
};

} // namespace blockhouse
