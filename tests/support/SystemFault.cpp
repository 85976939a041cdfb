#include "tests/support/SystemFault.h"

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <dirent.h>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace blockhouse {
namespace {

struct Fault {
    std::string_view call;
    int error = 0;
    int spared = 0;
    int times = 0;
    int failures = 0;
};

std::vector<Fault> faults; // the last one made is the last one here

int callsLeftToLive = -1; // negative: for ever

bool fails(std::string_view call) {
    if (callsLeftToLive == 0)
        kill(getpid(), SIGKILL);
    if (callsLeftToLive > 0)
        --callsLeftToLive;
    for (Fault& fault : faults) {
        if (call != fault.call || fault.spared-- > 0 || fault.failures >= fault.times)
            continue;
        ++fault.failures;
        errno = fault.error;
        return true;
    }
    return false;
}

} // namespace

SystemFault::SystemFault(const char* call, int error, int spared, int times) {
    faults.push_back({call, error, spared, times, 0});
}

SystemFault::~SystemFault() {
    faults.pop_back();
}

int SystemFault::failures() {
    return faults.back().failures;
}

void dieAtCall(int n) {
    callsLeftToLive = n;
}

} // namespace blockhouse

// The linker sends a call of `name` to __wrap_name and one of __real_name to the system (see CMakeLists.txt).
using blockhouse::fails;

extern "C" {

int __real_open(const char* path, int flags, ...);
ssize_t __real_read(int file, void* room, size_t size);
ssize_t __real_write(int file, const void* bytes, size_t size);
int __real_fsync(int file);
int __real_close(int file);
int __real_rename(const char* from, const char* to);
int __real_renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags);
int __real_linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags);
int __real_link(const char* from, const char* to);
int __real_unlink(const char* path);
int __real_fchown(int file, uid_t owner, gid_t group);
int __real_fsetxattr(int file, const char* name, const void* value, size_t size, int flags);
int __real_fstat(int file, struct stat* status);
int __real_stat(const char* path, struct stat* status);
int __real_fchmod(int file, mode_t mode);
int __real_ftruncate(int file, off_t size);
int __real_posix_fallocate(int file, off_t offset, off_t size);
DIR* __real_opendir(const char* path);
dirent* __real_readdir(DIR* entries);

int __wrap_open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    // O_TMPFILE has more than one bit.
    const bool makes = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    const auto mode = makes ? va_arg(arguments, mode_t) : mode_t{};
    va_end(arguments);
    // Making a file and opening one fail for reasons of their own.
    return fails(makes ? "create" : "open") ? -1 : __real_open(path, flags, mode);
}

ssize_t __wrap_read(int file, void* room, size_t size) {
    return fails("read") ? -1 : __real_read(file, room, size);
}

// Half at a time, as a system may: so there are moments in the middle of a file, too.
ssize_t __wrap_write(int file, const void* bytes, size_t size) {
    return fails("write") ? -1 : __real_write(file, bytes, size - size / 2);
}

int __wrap_fsync(int file) {
    return fails("fsync") ? -1 : __real_fsync(file);
}

// A close that fails has closed all the same.
int __wrap_close(int file) {
    const bool failed = fails("close");
    const int error = errno;
    const int result = __real_close(file);
    if (failed)
        errno = error;
    return failed ? -1 : result;
}

int __wrap_rename(const char* from, const char* to) {
    return fails("rename") ? -1 : __real_rename(from, to);
}

int __wrap_renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
    // Exchanging names is the other way of taking a name over.
    return fails("rename") ? -1 : __real_renameat2(fromFolder, from, toFolder, to, flags);
}

int __wrap_linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) {
    return fails("linkat") ? -1 : __real_linkat(fromFolder, from, toFolder, to, flags);
}

int __wrap_link(const char* from, const char* to) {
    return fails("link") ? -1 : __real_link(from, to);
}

int __wrap_unlink(const char* path) {
    return fails("unlink") ? -1 : __real_unlink(path);
}

int __wrap_fchown(int file, uid_t owner, gid_t group) {
    return fails("fchown") ? -1 : __real_fchown(file, owner, group);
}

int __wrap_fsetxattr(int file, const char* name, const void* value, size_t size, int flags) {
    return fails("fsetxattr") ? -1 : __real_fsetxattr(file, name, value, size, flags);
}

int __wrap_fstat(int file, struct stat* status) {
    return fails("fstat") ? -1 : __real_fstat(file, status);
}

int __wrap_stat(const char* path, struct stat* status) {
    return fails("stat") ? -1 : __real_stat(path, status);
}

int __wrap_fchmod(int file, mode_t mode) {
    return fails("fchmod") ? -1 : __real_fchmod(file, mode);
}

int __wrap_ftruncate(int file, off_t size) {
    return fails("ftruncate") ? -1 : __real_ftruncate(file, size);
}

// Returns its error.
int __wrap_posix_fallocate(int file, off_t offset, off_t size) {
    return fails("posix_fallocate") ? errno : __real_posix_fallocate(file, offset, size);
}

DIR* __wrap_opendir(const char* path) {
    return fails("opendir") ? nullptr : __real_opendir(path);
}

dirent* __wrap_readdir(DIR* entries) {
    return fails("readdir") ? nullptr : __real_readdir(entries);
}
}
