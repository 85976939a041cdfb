#include "platform/system/posix/Replacement.h"

#include "platform/system/names_beside.h"
#include "platform/system/posix/backup.h"

#include <cstdio>

namespace blockhouse {
namespace {

std::string nextPath(const std::string& target, Replacement::Takes takes) {
    static unsigned counter = 0;
    const auto process = static_cast<std::uint64_t>(::getpid());
    ++counter;
    return directoryOf(target) + "/" +
           (takes == Replacement::Takes::Anything ? temporaryName(process, counter) : keptName(process, counter));
}

constexpr int mostTries = 1000; // names left behind by a killed process of the same number

} // namespace

std::string directoryOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

bool forbidsNewFile(int error) {
    return error == EACCES || error == EPERM || error == EROFS;
}

bool forbidsTakingPlace(int error) {
    return forbidsNewFile(error) || error == EBUSY || error == EXDEV;
}

int writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = retried([&] { return ::write(file, bytes.data(), bytes.size()); });
        if (written < 0)
            return errno;
        if (written == 0)
            return EIO;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

int syncFile(int file) {
    return retried([file] { return ::fsync(file); }) == 0 ? 0 : errno;
}

Replacement::Replacement(std::string target, mode_t mode, Name name, Takes takes)
    : target_(std::move(target)), takes_(takes), file_(name == Name::AtTheEnd ? openUnnamed(mode) : openNamed(mode)) {}

Replacement::~Replacement() {
    if (!path_.empty())
        ::unlink(path_.c_str());
}

int Replacement::openUnnamed(mode_t mode) {
#ifdef O_TMPFILE
    const std::string directory = directoryOf(target_);
    const int file = retried([&] { return ::open(directory.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, mode); });
    // Not every file system knows files without a name, and only through this folder they can be given one.
    if (file != -1 && ::access("/proc/self/fd", X_OK) == 0) {
        isUnnamed_ = true;
        return file;
    }
    if (file != -1)
        ::close(file);
#endif
    return openNamed(mode);
}

int Replacement::openNamed(mode_t mode) {
    for (int tries = 0; tries < mostTries; ++tries) {
        std::string path = nextPath(target_, takes_);
        const int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
        const int file = retried([&] { return ::open(path.c_str(), flags, mode); });
        if (file != -1)
            path_ = std::move(path);
        if (file != -1 || errno != EEXIST)
            return file;
    }
    return -1;
}

int Replacement::fill(std::string_view bytes) {
    const int error = writeAll(file_.number(), bytes);
    return error == 0 ? syncFile(file_.number()) : error;
}

// A name that is there cannot be linked over, so the file is given one of its own and then moved.
int Replacement::giveName() {
    if (!isUnnamed_)
        return 0;
    const std::string file = "/proc/self/fd/" + std::to_string(file_.number());
    for (int tries = 0; tries < mostTries; ++tries) {
        std::string path = nextPath(target_, takes_);
        if (::linkat(AT_FDCWD, file.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0) {
            path_ = std::move(path);
            isUnnamed_ = false;
            return 0;
        }
        if (errno != EEXIST)
            return errno;
    }
    return EEXIST;
}

int Replacement::takePlace() {
    if (const int error = giveName(); error != 0)
        return error;
    if (::rename(path_.c_str(), target_.c_str()) != 0)
        return errno;
    path_.clear();
    return finish();
}

// The names are exchanged, and what came out is looked at: nobody can write in between.
int Replacement::takePlaceOf(const FileStamp& known, std::string& backup) {
    if (const int error = giveName(); error != 0)
        return error;

    struct stat status {};

    const bool isOthers = ::stat(target_.c_str(), &status) == 0 && stampFrom(status) != known;
#ifdef RENAME_EXCHANGE
    const int error = ::renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, target_.c_str(), RENAME_EXCHANGE) == 0 ? 0 : errno;
    if (error == 0)
        return exchange(known, isOthers, backup);
    if (error == ENOENT) // nothing has the name any more
        return takePlace();
    if (error != EINVAL && error != ENOSYS && error != ENOTSUP)
        return error;
#endif
    // A file system that cannot exchange names.
    if (isOthers)
        if (const int copied = copyToBackup(target_, backup); copied != 0)
            return copied;
    return takePlace();
}

int Replacement::exchange(const FileStamp& known, bool isOthers, std::string& backup) {
    const std::string old = std::exchange(path_, {}); // it may be somebody else's text now

    struct stat status {};

    // The exchange itself has touched it.
    const auto isAsKnown = [&] { return stampFrom(status).withoutTouch() == known.withoutTouch(); };
    if (!isOthers && ::stat(old.c_str(), &status) == 0 && isAsKnown())
        ::unlink(old.c_str());
    else if (const int error = renameToBackup(old, target_, backup); error != 0)
        backup = old; // whole, if under an odd name
    return finish();
}

std::optional<FileStamp> Replacement::stamp() const {
    struct stat status {};

    if (::fstat(file_.number(), &status) != 0)
        return std::nullopt;
    return stampFrom(status);
}

// Without this a power cut could bring the old name back. Folders that may be written but not read, and file systems
// that cannot do it, are no reason to call the write failed.
int Replacement::finish() {
    const Descriptor directory = openFile(directoryOf(target_), O_RDONLY | O_DIRECTORY);
    if (!directory.isOpen())
        return 0;
    const int error = syncFile(directory.number());
    return error == EIO || error == ENOSPC || error == EDQUOT ? error : 0;
}

} // namespace blockhouse
