// What the files that call the operating system share.
#pragma once

#include "platform/system/FileStamp.h"
#include "platform/text/Result.h"

#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace blockhouse {

inline FileError errorOf(const std::string& path, int code) {
    return {path, std::generic_category().message(code)};
}

// The system would silently cut such a path at the NUL and work on another file.
inline bool hasNul(const std::string& path) {
    return path.find('\0') != std::string::npos;
}

template <typename Call>
auto retried(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

// An open file, closed on every way out.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}

    ~Descriptor() {
        if (number_ != -1)
            ::close(number_);
    }

    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor& operator=(Descriptor&&) = delete;

    [[nodiscard]] bool isOpen() const { return number_ != -1; }

    [[nodiscard]] int number() const { return number_; }

    // 0 or the error. An interrupted close has closed all the same.
    [[nodiscard]] int close() { return ::close(std::exchange(number_, -1)) == 0 || errno == EINTR ? 0 : errno; }

private:
    int number_;
};

inline Descriptor openFile(const std::string& path, int flags, mode_t mode = 0) {
    return Descriptor(retried([&] { return ::open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, mode); }));
}

// What keeps `status` from being a normal file, or nothing.
inline std::optional<FileError> refusalOf(const std::string& path, const struct stat& status) {
    if (S_ISREG(status.st_mode))
        return std::nullopt;
    return S_ISDIR(status.st_mode) ? errorOf(path, EISDIR) : FileError{path, "Not a normal file"};
}

inline FileStamp stampFrom(const struct stat& status) {
    return {static_cast<std::uint64_t>(status.st_dev),         static_cast<std::uint64_t>(status.st_ino),
            static_cast<std::uint64_t>(status.st_size),        static_cast<std::int64_t>(status.st_mtim.tv_sec),
            static_cast<std::int64_t>(status.st_mtim.tv_nsec), static_cast<std::int64_t>(status.st_ctim.tv_sec),
            static_cast<std::int64_t>(status.st_ctim.tv_nsec)};
}

struct NormalFile {
    Descriptor descriptor;
    FileStamp stamp;
};

inline Result<NormalFile> openNormalFile(const std::string& path) {
    if (hasNul(path))
        return errorOf(path, ENOENT);
    // O_NONBLOCK: opening a pipe that nobody writes to would wait.
    Descriptor descriptor = openFile(path, O_RDONLY | O_NONBLOCK);

    struct stat status {};

    if (!descriptor.isOpen() || ::fstat(descriptor.number(), &status) != 0)
        return errorOf(path, errno);
    if (auto refusal = refusalOf(path, status))
        return *std::move(refusal);
    return NormalFile{std::move(descriptor), stampFrom(status)};
}

} // namespace blockhouse
