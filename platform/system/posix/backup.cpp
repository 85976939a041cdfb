#include "platform/system/posix/backup.h"

#include "platform/system/names_beside.h"
#include "platform/system/posix/attributes.h"
#include "platform/system/posix/Replacement.h"

#include <array>
#include <cstdio>
#include <functional>

namespace blockhouse {
namespace {

// Tries names until `take` finds one free.
int takeFreeName(const std::string& target, std::string& backup, const std::function<int(const std::string&)>& take) {
    constexpr int most = 1000;
    const std::string name = target.substr(target.rfind('/') + 1); // all of it without a separator
    const std::string before = target.substr(0, target.size() - name.size());
    for (int number = 1; number <= most; ++number) {
        std::string path = before + backupName(name, number);
        const int error = take(path);
        if (error == 0)
            backup = std::move(path);
        if (error != EEXIST)
            return error;
    }
    return EEXIST;
}

int copyBytes(int from, int to) {
    std::array<char, 65536> room;
    for (;;) {
        const ssize_t got = retried([&] { return ::read(from, room.data(), room.size()); });
        if (got < 0)
            return errno;
        if (got == 0)
            return syncFile(to);
        if (const int error = writeAll(to, {room.data(), static_cast<std::size_t>(got)}); error != 0)
            return error;
    }
}

} // namespace

// A second name first, so that a name that is taken is never replaced.
int renameToBackup(const std::string& from, const std::string& target, std::string& backup) {
    const int error = takeFreeName(
        target, backup, [&](const std::string& name) { return ::link(from.c_str(), name.c_str()) == 0 ? 0 : errno; });
    if (error == 0)
        return ::unlink(from.c_str()) == 0 ? 0 : errno;
    // A file system without second names: nobody but this program makes such names.
    return takeFreeName(target, backup, [&](const std::string& name) {
        struct stat status {};

        if (::lstat(name.c_str(), &status) == 0)
            return EEXIST;
        return ::rename(from.c_str(), name.c_str()) == 0 ? 0 : errno;
    });
}

int copyToBackup(const std::string& target, std::string& backup) {
    Descriptor from = openFile(target, O_RDONLY);

    struct stat status {};

    if (!from.isOpen() || ::fstat(from.number(), &status) != 0)
        return errno;
    return takeFreeName(target, backup, [&](const std::string& name) {
        Descriptor to = openFile(name, O_WRONLY | O_CREAT | O_EXCL, 0600);
        if (!to.isOpen())
            return errno;
        const int error = copyBytes(from.number(), to.number());
        if (error != 0)
            ::unlink(name.c_str());
        else if (!takeAttributes(to.number(), target, status))
            ::fchmod(to.number(), 0600); // better for its owner alone than for too many
        return error;
    });
}

} // namespace blockhouse
