#include "platform/system/volumes.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <mntent.h>
#include <string_view>

namespace blockhouse {
namespace {

bool holdsData(const Volume& volume) {
    constexpr std::array<std::string_view, 4> systemFolders{"/proc", "/sys", "/dev", "/run"};
    constexpr std::array<std::string_view, 10> systemKinds{"proc",       "sysfs",  "devtmpfs", "devpts",   "nsfs",
                                                           "rpc_pipefs", "cgroup", "cgroup2",  "squashfs", "autofs"};
    // Media that a user plugs in are mounted below /run by some desktops.
    if (volume.root.starts_with("/run/media/"))
        return true;
    const auto isInside = [&volume](std::string_view folder) {
        return volume.root == folder || volume.root.starts_with(std::string(folder) + "/");
    };
    return std::none_of(systemFolders.begin(), systemFolders.end(), isInside) &&
           std::find(systemKinds.begin(), systemKinds.end(), volume.fileSystem) == systemKinds.end();
}

} // namespace

std::vector<Volume> mountedVolumes() {
    struct Closer {
        void operator()(std::FILE* table) const { ::endmntent(table); }
    };

    std::vector<Volume> volumes;
    const std::unique_ptr<std::FILE, Closer> table(::setmntent("/proc/self/mounts", "r"));
    if (!table)
        return {{"/", ""}};
    while (const mntent* entry = ::getmntent(table.get()))
        volumes.push_back({entry->mnt_dir, entry->mnt_type});
    return volumes;
}

std::vector<std::string> drivesOf(const std::vector<Volume>& volumes, const std::string& home) {
    std::vector<std::string> drives;
    const auto add = [&drives](const std::string& root) {
        if (!root.empty() && std::find(drives.begin(), drives.end(), root) == drives.end())
            drives.push_back(root);
    };
    for (const Volume& volume : volumes)
        if (volume.root == "/")
            add(volume.root);
    add(home);
    for (const Volume& volume : volumes)
        if (holdsData(volume))
            add(volume.root);
    return drives;
}

} // namespace blockhouse
