#include "fuzz/monkey/FileGuard.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <sys/stat.h>

namespace blockhouse {
namespace {

std::string guarded; // empty: no guard yet

bool isBelow(const std::string& path, std::string_view folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

void check(const char* call, const char* name) {
    if (guarded.empty() || name == nullptr)
        return;
    std::error_code error;
    // Where links lead counts, not what they are called.
    const std::string target = std::filesystem::weakly_canonical(name, error).string();
    // Links that lead round in a circle lead to no file.
    const std::string path = error ? std::filesystem::absolute(name).lexically_normal().string() : target;
    if (isBelow(path, guarded) || isBelow(path, "/dev") || isBelow(path, "/proc"))
        return;
    std::fprintf(stderr, "FileGuard: %s of %s, which is outside %s\n", call, path.c_str(), guarded.c_str());
    std::abort();
}

bool writes(int flags) {
    return (flags & (O_WRONLY | O_RDWR | O_CREAT | O_TRUNC)) != 0;
}

bool writes(const char* mode) {
    return std::string_view(mode).find_first_of("wa+") != std::string_view::npos;
}

// The next definition of the function `name` of the given type after ours.
template <typename Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

void guardFilesOutside(const std::string& folder) {
    guarded = std::filesystem::canonical(folder).string();
}

} // namespace blockhouse

// The program exports these, so that every library it loads calls them instead of the system's.
using blockhouse::check;
using blockhouse::next;
using blockhouse::writes;

namespace {

mode_t modeOf(int flags, va_list& arguments) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : mode_t{};
}

} // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    if (writes(flags))
        check("open", path);
    return next<int(const char*, int, ...)>("open")(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    if (writes(flags))
        check("open", path);
    return next<int(const char*, int, ...)>("open64")(path, flags, mode);
}

// Relative to a folder only where that is the working one: nothing here opens others.
int openat(int folder, const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    if (writes(flags))
        check("openat", path);
    return next<int(int, const char*, int, ...)>("openat")(folder, path, flags, mode);
}

FILE* fopen(const char* path, const char* mode) {
    if (writes(mode))
        check("fopen", path);
    return next<FILE*(const char*, const char*)>("fopen")(path, mode);
}

FILE* fopen64(const char* path, const char* mode) {
    if (writes(mode))
        check("fopen", path);
    return next<FILE*(const char*, const char*)>("fopen64")(path, mode);
}

int rename(const char* from, const char* to) noexcept {
    check("rename", from);
    check("rename", to);
    return next<int(const char*, const char*)>("rename")(from, to);
}

int unlink(const char* path) noexcept {
    check("unlink", path);
    return next<int(const char*)>("unlink")(path);
}

int remove(const char* path) noexcept {
    check("remove", path);
    return next<int(const char*)>("remove")(path);
}

int mkdir(const char* path, mode_t mode) noexcept {
    check("mkdir", path);
    return next<int(const char*, mode_t)>("mkdir")(path, mode);
}

int rmdir(const char* path) noexcept {
    check("rmdir", path);
    return next<int(const char*)>("rmdir")(path);
}

int truncate(const char* path, off_t size) noexcept {
    check("truncate", path);
    return next<int(const char*, off_t)>("truncate")(path, size);
}

int chmod(const char* path, mode_t mode) noexcept {
    check("chmod", path);
    return next<int(const char*, mode_t)>("chmod")(path, mode);
}
}
