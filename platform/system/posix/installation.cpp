#include "platform/system/installation.h"

#include "platform/system/files.h"
#include "platform/text/paths.h"

namespace blockhouse {

bool isInstalled(const std::string& programFolder) {
    // Installed, the program is in <prefix>/bin and its entry for the desktop's menus in <prefix>/share.
    return FileExists(joinPath(programFolder, "../share/applications/blockhouse.desktop"));
}

} // namespace blockhouse
