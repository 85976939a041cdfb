#include "platform/system/volumes.h"

#include "platform/system/windows/windows_file.h"

#include <algorithm>

namespace blockhouse {

std::vector<Volume> mountedVolumes() {
    std::vector<Volume> volumes;
    const DWORD letters = ::GetLogicalDrives();
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        if ((letters >> (letter - 'A') & 1) != 0)
            volumes.push_back({std::string(1, letter) + ":\\", {}});
    return volumes;
}

std::vector<std::string> drivesOf(const std::vector<Volume>& volumes, const std::string& home) {
    std::vector<std::string> drives;
    const auto add = [&drives](const std::string& root) {
        if (!root.empty() && std::find(drives.begin(), drives.end(), root) == drives.end())
            drives.push_back(root);
    };
    add(home);
    for (const Volume& volume : volumes)
        add(volume.root);
    return drives;
}

} // namespace blockhouse
