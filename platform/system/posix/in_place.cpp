#include "platform/system/posix/in_place.h"

#include "platform/system/posix/posix_file.h"
#include "platform/system/posix/Replacement.h"

#include <algorithm>
#include <array>

namespace blockhouse {
namespace {

// By writing: for file systems that cannot set room aside.
int appendZeros(int file, off_t from, off_t to) {
    static constexpr std::array<char, 65536> zeros{};
    if (::lseek(file, from, SEEK_SET) < 0)
        return errno;
    for (off_t at = from; at < to;) {
        const auto part = static_cast<std::size_t>(std::min<off_t>(to - at, zeros.size()));
        if (const int error = writeAll(file, {zeros.data(), part}); error != 0)
            return error;
        at += static_cast<off_t>(part);
    }
    if (const int error = syncFile(file); error != 0) // some find out only then that they are full
        return error;
    return ::lseek(file, 0, SEEK_SET) < 0 ? errno : 0;
}

// Only what lies beyond the old end is touched.
int setRoomAside(int file, off_t oldSize, off_t size) {
    if (size <= oldSize)
        return 0;
    int error = ::posix_fallocate(file, 0, size);
    // EBADF: the C library would read what it sets aside, and the file may be open for writing only.
    if (error == EOPNOTSUPP || error == EINVAL || error == EBADF || error == ENOSYS)
        error = appendZeros(file, oldSize, size);
    // Whatever was added must go again; if even that fails, the first error is the one to report.
    if (error != 0) [[maybe_unused]]
        const int undone = ::ftruncate(file, oldSize);
    return error;
}

} // namespace

int writeInPlace(const std::string& path, std::string_view bytes) {
    Descriptor file = openFile(path, O_WRONLY);

    struct stat status {};

    if (!file.isOpen() || ::fstat(file.number(), &status) != 0)
        return errno;
    const auto size = static_cast<off_t>(bytes.size());
    if (const int error = setRoomAside(file.number(), status.st_size, size); error != 0)
        return error;
    int error = writeAll(file.number(), bytes);
    if (error == 0 && ::ftruncate(file.number(), size) != 0)
        error = errno;
    if (error == 0)
        error = syncFile(file.number());
    const int closeError = file.close();
    return error == 0 ? closeError : error;
}

} // namespace blockhouse
