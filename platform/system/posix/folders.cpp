#include "platform/system/folders.h"

#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace blockhouse {

std::string absoluteFolder(const std::string& path) {
    if (path.empty())
        return {};
    std::error_code error;
    std::filesystem::path folder = std::filesystem::absolute(path, error);
    if (error)
        return {};
    while (folder.has_relative_path() && folder.filename().empty())
        folder = folder.parent_path();
    return folder.string();
}

void makeFolder(const std::string& path) {
    std::error_code ignored;
    std::filesystem::create_directories(path, ignored);
}

bool takesNewFiles(const std::string& folder) {
    return ::access(folder.c_str(), W_OK) == 0;
}

} // namespace blockhouse
