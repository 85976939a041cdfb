#include "platform/system/posix/stale_files.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace blockhouse {
namespace {

constexpr std::string_view prefix = ".blockhouse-";
constexpr std::string_view suffix = ".tmp";

std::optional<pid_t> numberAtStartOf(std::string_view& text) {
    pid_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number <= 0)
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

// Nothing if the name is none of ours.
std::optional<pid_t> processOf(std::string_view name) {
    if (!name.starts_with(prefix) || !name.ends_with(suffix) || name.size() < prefix.size() + suffix.size())
        return std::nullopt;
    std::string_view numbers = name.substr(prefix.size(), name.size() - prefix.size() - suffix.size());
    const std::optional<pid_t> process = numberAtStartOf(numbers);
    if (!process || !numbers.starts_with('-'))
        return std::nullopt;
    numbers.remove_prefix(1);
    return numberAtStartOf(numbers) && numbers.empty() ? process : std::nullopt;
}

bool isStale(int directory, const char* name) {
    constexpr std::time_t day = 24L * 60 * 60;
    const std::optional<pid_t> process = processOf(name);

    struct stat status {};

    return process && ::fstatat(directory, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(status.st_mode) &&
           status.st_uid == ::geteuid() && status.st_mtime < std::time(nullptr) - day && ::kill(*process, 0) != 0 &&
           errno == ESRCH;
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
