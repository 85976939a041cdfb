#include "platform/system/installation.h"

#include "platform/system/files.h"
#include "platform/text/paths.h"

namespace blockhouse {

bool isInstalled(const std::string& programFolder) {
    // The installer puts it beside the program.
    return FileExists(joinPath(programFolder, "uninstall.exe"));
}

} // namespace blockhouse
