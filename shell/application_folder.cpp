#include "shell/application_folder.h"

#include "platform/files.h"
#include "platform/installation.h"
#include "platform/paths.h"

#include <filesystem>
#include <system_error>

namespace blockhouse {

std::string ListFiles::readPath(std::string_view name) const {
    const std::string own = joinPath(folder_, name);
    if (fallback_.empty() || FileExists(own))
        return own;
    const std::string shipped = joinPath(fallback_, name);
    return FileExists(shipped) ? shipped : own;
}

std::string ListFiles::writePath(std::string_view name) const {
    std::error_code ignored;
    std::filesystem::create_directories(folder_, ignored);
    return joinPath(folder_, name);
}

ListFiles listFilesOf(std::string programFolder, bool programFolderIsWritable, std::string userDataFolder) {
    // An administrator, or the owner of a private prefix, could write to a folder of programs, and should not.
    if (programFolderIsWritable && !isInstalled(programFolder))
        return ListFiles(std::move(programFolder));
    return {std::move(userDataFolder), std::move(programFolder)};
}

} // namespace blockhouse
