#include "shell/application_folder.h"

#include "platform/system/files.h"
#include "platform/system/folders.h"
#include "platform/system/installation.h"
#include "platform/text/paths.h"

namespace blockhouse {

std::string ApplicationFolder::readPath(std::string_view name) const {
    const std::string own = joinPath(folder_, name);
    if (fallback_.empty() || FileExists(own))
        return own;
    const std::string shipped = joinPath(fallback_, name);
    return FileExists(shipped) ? shipped : own;
}

std::string ApplicationFolder::writePath(std::string_view name) const {
    makeFolder(folder_);
    return joinPath(folder_, name);
}

ApplicationFolder applicationFolderOf(std::string programFolder, bool programFolderIsWritable,
                                      std::string userDataFolder) {
    // An administrator, or the owner of a private prefix, could write to a folder of programs, and should not.
    if (programFolderIsWritable && !isInstalled(programFolder))
        return ApplicationFolder(std::move(programFolder));
    return {std::move(userDataFolder), std::move(programFolder)};
}

} // namespace blockhouse
