#include "shell/directory_tree.h"

#include "platform/text/paths.h"

namespace blockhouse {
namespace {

// A root has no folder name; a node without text would be no help, so it goes by its path.
std::string folderName(std::string_view path) {
    std::string name = LastPathPart(path);
    return name.empty() ? std::string(path) : name;
}

} // namespace

DirectoryTree::Addition DirectoryTree::add(std::string_view path, const std::vector<std::string>& fileNames) {
    Addition addition;
    addition.directoryKey = folderName(path);
    // No file can have taken this key: file keys hold a separator before a name.
    const auto [position, isNew] = directoryPositions_.try_emplace(addition.directoryKey, directories_.size());
    addition.directory = position->second;
    addition.directoryIsNew = isNew;
    addition.files.reserve(fileNames.size());
    for (const std::string& name : fileNames) {
        const auto [key, fileIsNew] = files_.insert(joinPath(path, name));
        if (!fileIsNew)
            continue;
        File& file = addition.files.emplace_back();
        file.key_ = &*key;
        file.textStart_ = key->size() - name.size();
    }
    return addition;
}

void DirectoryTree::showDirectory(Addition& addition) {
    if (addition.directoryIsNew)
        directories_.push_back({std::move(addition.directoryKey), {}});
}

void DirectoryTree::showFiles(Addition& addition) {
    std::vector<File>& files = directories_[addition.directory].files;
    files.insert(files.end(), addition.files.begin(), addition.files.end());
}

} // namespace blockhouse
