#include "platform/system/posix/attributes.h"

#include <cerrno>
#include <optional>
#include <string_view>
#include <unistd.h>
#include <vector>
#ifdef __linux__
#include <sys/xattr.h>
#endif

namespace blockhouse {
namespace {

#ifdef __linux__

constexpr const char* accessList = "system.posix_acl_access";

// Labels that the system itself gives or takes; nobody keeps data there.
bool isTheSystems(std::string_view name) {
    return name.starts_with("security.") || name.starts_with("trusted.");
}

// The names, each ended by a NUL; nothing where they cannot be told. A file system without attributes has none.
std::optional<std::string> attributeNames(const std::string& path) {
    for (;;) {
        const ssize_t size = ::listxattr(path.c_str(), nullptr, 0);
        if (size < 0)
            return errno == ENOTSUP || errno == ENOSYS ? std::optional<std::string>("") : std::nullopt;
        std::string names(static_cast<std::size_t>(size), '\0');
        const ssize_t got = ::listxattr(path.c_str(), names.data(), names.size());
        if (got >= 0) {
            names.resize(static_cast<std::size_t>(got));
            return names;
        }
        if (errno != ERANGE) // it has grown meanwhile
            return std::nullopt;
    }
}

bool takeAttribute(int file, const std::string& path, const char* name) {
    const ssize_t size = ::getxattr(path.c_str(), name, nullptr, 0);
    if (size < 0)
        return false;
    std::vector<char> value(static_cast<std::size_t>(size));
    const ssize_t got = ::getxattr(path.c_str(), name, value.data(), value.size());
    return got >= 0 && ::fsetxattr(file, name, value.data(), static_cast<std::size_t>(got), 0) == 0;
}

bool takeExtendedAttributes(int file, const std::string& path, bool groupKept) {
    const std::optional<std::string> names = attributeNames(path);
    if (!names)
        return false;
    bool hasAccessList = false;
    for (std::size_t at = 0; at < names->size(); at = names->find('\0', at) + 1) {
        const char* name = names->c_str() + at;
        hasAccessList = hasAccessList || std::string_view(name) == accessList;
        if (!takeAttribute(file, path, name) && !isTheSystems(name))
            return false;
    }
    // A folder may give its new files a list that the original does not have.
    if (!hasAccessList)
        ::fremovexattr(file, accessList);
    return !hasAccessList || groupKept;
}

#else

bool takeExtendedAttributes(int, const std::string&, bool) {
    return true;
}

#endif

} // namespace

bool takeAttributes(int file, const std::string& path, const struct stat& original) {
    const bool bothKept = ::fchown(file, original.st_uid, original.st_gid) == 0;
    if (!bothKept && original.st_uid != ::geteuid())
        return false;
    const bool groupKept = bothKept || ::fchown(file, static_cast<uid_t>(-1), original.st_gid) == 0;
    if (!takeExtendedAttributes(file, path, groupKept))
        return false;
    // Running as its owner or its group must not turn into running as somebody else.
    mode_t kept = 0777 | S_ISVTX;
    kept |= bothKept ? S_ISUID : 0;
    kept |= groupKept ? S_ISGID : 0;
    mode_t mode = original.st_mode & kept;
    // What one group may do, another one may not.
    if (!groupKept)
        mode &= ~static_cast<mode_t>(S_IRWXG) | ((mode & S_IRWXO) << 3);
    ::fchmod(file, mode);
    return true;
}

} // namespace blockhouse
