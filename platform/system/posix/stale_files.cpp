#include "platform/system/posix/stale_files.h"

#include "platform/system/names_beside.h"

#include <cerrno>
#include <csignal>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace blockhouse {
namespace {

bool isStale(int directory, const char* name) {
    constexpr std::time_t day = 24L * 60 * 60;
    const std::optional<std::uint64_t> process = processOfTemporary(name);

    struct stat status {};

    return process && ::fstatat(directory, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(status.st_mode) &&
           status.st_uid == ::geteuid() && status.st_mtime < std::time(nullptr) - day &&
           ::kill(static_cast<pid_t>(*process), 0) != 0 && errno == ESRCH;
}

} // namespace

void removeStaleFiles(const std::string& directory) {
    static std::set<std::string> seen;
    if (!seen.insert(directory).second)
        return;

    struct Closer {
        void operator()(DIR* entries) const { ::closedir(entries); }
    };

    const std::unique_ptr<DIR, Closer> entries(::opendir(directory.c_str()));
    if (!entries)
        return;
    for (const dirent* entry = ::readdir(entries.get()); entry != nullptr; entry = ::readdir(entries.get()))
        if (isStale(::dirfd(entries.get()), entry->d_name))
            ::unlinkat(::dirfd(entries.get()), entry->d_name, 0);
}

} // namespace blockhouse
