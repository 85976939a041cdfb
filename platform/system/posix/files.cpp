#include "platform/system/files.h"

#include "platform/system/directory_entries.h"
#include "platform/system/posix/posix_file.h"
#include "platform/text/paths.h"

#include <array>
#include <cerrno>
#include <dirent.h>
#include <memory>
#include <new>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace blockhouse {

namespace {

// Reads to the end of the file, wherever that is by then; 0 or the error.
int readToEnd(int file, std::string& bytes) {
    constexpr std::size_t step = 65536;
    std::size_t filled = 0;
    std::array<char, step> beyond;
    for (;;) {
        const bool full = filled == bytes.size();
        char* const room = full ? beyond.data() : bytes.data() + filled;
        const std::size_t size = full ? beyond.size() : bytes.size() - filled;
        const ssize_t got = retried([&] { return ::read(file, room, size); });
        if (got < 0)
            return errno;
        if (got == 0) {
            bytes.resize(filled);
            return 0;
        }
        if (full)
            bytes.append(beyond.data(), static_cast<std::size_t>(got));
        filled += static_cast<std::size_t>(got);
    }
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

std::string directoryOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// Follows the links at the end of `path`, to the name a file would get that does not exist yet.
Result<std::string> targetOf(const std::string& path) {
    constexpr int mostLinks = 40;
    constexpr std::size_t longestTarget = 4096;
    std::string target = path;
    for (int links = 0; links < mostLinks; ++links) {
        std::array<char, longestTarget> link;
        const ssize_t length = ::readlink(target.c_str(), link.data(), link.size());
        if (length < 0)
            return target; // no link, or an error that opening it will report
        const std::string_view next(link.data(), static_cast<std::size_t>(length));
        target = next.starts_with('/') ? std::string(next) : directoryOf(target) + "/" + std::string(next);
    }
    return errorOf(path, ELOOP);
}

// A new file beside the target, gone again unless it takes the target's place.
class Replacement {
public:
    // Not open (with errno set) when the folder takes no new file.
    explicit Replacement(std::string target, mode_t mode) : target_(std::move(target)), path_(), file_(create(mode)) {}

    ~Replacement() {
        if (!path_.empty())
            ::unlink(path_.c_str());
    }

    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    [[nodiscard]] bool isOpen() const { return file_.isOpen(); }

    void takeOwnerAndPermissionsOf(const struct stat& original) {
        const bool ownerKept = ::fchown(file_.number(), original.st_uid, original.st_gid) == 0;
        const bool groupKept = ownerKept || ::fchown(file_.number(), static_cast<uid_t>(-1), original.st_gid) == 0;
        // Running as its owner or its group must not turn into running as somebody else.
        mode_t kept = 0777 | S_ISVTX;
        kept |= ownerKept ? S_ISUID : 0;
        kept |= groupKept ? S_ISGID : 0;
        ::fchmod(file_.number(), original.st_mode & kept);
    }

    // 0 or the error.
    [[nodiscard]] int fill(std::string_view bytes) {
        int error = writeAll(file_.number(), bytes);
        if (error == 0)
            error = syncFile(file_.number());
        const int closeError = file_.close();
        return error == 0 ? closeError : error;
    }

    [[nodiscard]] int takePlace() {
        if (::rename(path_.c_str(), target_.c_str()) != 0)
            return errno;
        path_.clear();
        return syncDirectory();
    }

private:
    int create(mode_t mode) {
        static unsigned counter = 0;
        constexpr int mostTries = 1000; // names left behind by a killed process of the same number
        const std::string stem = directoryOf(target_) + "/.blockhouse-" + std::to_string(::getpid()) + "-";
        for (int tries = 0; tries < mostTries; ++tries) {
            std::string path = stem + std::to_string(++counter) + ".tmp";
            const int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
            const int file = retried([&] { return ::open(path.c_str(), flags, mode); });
            if (file != -1)
                path_ = std::move(path);
            if (file != -1 || errno != EEXIST)
                return file;
        }
        return -1;
    }

    // Without this a power cut could bring the old name back. Folders that may be written but not read, and file
    // systems that cannot do it, are no reason to call the write failed.
    [[nodiscard]] int syncDirectory() const {
        const Descriptor directory = openFile(directoryOf(target_), O_RDONLY | O_DIRECTORY);
        if (!directory.isOpen())
            return 0;
        const int error = syncFile(directory.number());
        return error == EIO || error == ENOSPC || error == EDQUOT ? error : 0;
    }

    std::string target_;
    std::string path_; // empty while there is nothing to remove
    Descriptor file_;
};

// The last resort; room is set aside first, so that a full disk is found before the old bytes are touched.
int writeInPlace(const std::string& path, std::string_view bytes) {
    Descriptor file = openFile(path, O_WRONLY);

    struct stat status {};

    if (!file.isOpen() || ::fstat(file.number(), &status) != 0)
        return errno;
    const auto size = static_cast<off_t>(bytes.size());
    const int room = size > status.st_size ? ::posix_fallocate(file.number(), 0, size) : 0;
    if (room != 0 && room != EOPNOTSUPP && room != EINVAL) {
        // Whatever was added must go again; if even that fails, the first error is the one to report.
        [[maybe_unused]] const int undone = ::ftruncate(file.number(), status.st_size);
        return room;
    }
    int error = writeAll(file.number(), bytes);
    if (error == 0 && ::ftruncate(file.number(), size) != 0)
        error = errno;
    if (error == 0)
        error = syncFile(file.number());
    const int closeError = file.close();
    return error == 0 ? closeError : error;
}

bool forbidsNewFile(int error) {
    return error == EACCES || error == EPERM || error == EROFS;
}

// A name that others hold on to (a mount point, or a sticky folder's foreign file) cannot be taken over either.
bool forbidsTakingPlace(int error) {
    return forbidsNewFile(error) || error == EBUSY || error == EXDEV;
}

// 0 or the error. `original` is null when there is no such file yet.
int replaceTarget(const std::string& target, const struct stat* original, std::string_view bytes) {
    // A new file gets what the user's mask leaves; one that will get the original's permissions is private till then.
    Replacement replacement(target, original != nullptr ? 0600 : 0666);
    if (!replacement.isOpen()) {
        const int error = errno;
        return original != nullptr && forbidsNewFile(error) ? writeInPlace(target, bytes) : error;
    }
    if (original != nullptr)
        replacement.takeOwnerAndPermissionsOf(*original);
    if (const int error = replacement.fill(bytes); error != 0)
        return error;
    const int error = replacement.takePlace();
    return original != nullptr && forbidsTakingPlace(error) ? writeInPlace(target, bytes) : error;
}

bool isHidden(std::string_view name) {
    return name.starts_with('.');
}

} // namespace

bool FileExists(const std::string& path) {
    struct stat status {};

    return !hasNul(path) && !isHidden(LastPathPart(path)) && ::stat(path.c_str(), &status) == 0 &&
           S_ISREG(status.st_mode);
}

Result<std::string> readWholeFile(const std::string& path, std::size_t limit) {
    const Result<NormalFile> file = openNormalFile(path);
    if (!file)
        return file.error();
    if (file.value().size > limit)
        return errorOf(path, EFBIG);
    try {
        std::string bytes(static_cast<std::size_t>(file.value().size), '\0');
        if (const int error = readToEnd(file.value().descriptor.number(), bytes); error != 0)
            return errorOf(path, error);
        return bytes;
    } catch (const std::bad_alloc&) {
        return errorOf(path, ENOMEM);
    } catch (const std::length_error&) {
        return errorOf(path, EFBIG);
    }
}

Result<Done> replaceWholeFile(const std::string& path, std::string_view bytes) {
    if (hasNul(path))
        return errorOf(path, ENOENT);
    const Result<std::string> target = targetOf(path);
    if (!target)
        return target.error();

    struct stat status {};

    const bool exists = ::stat(target.value().c_str(), &status) == 0;
    if (!exists && errno != ENOENT)
        return errorOf(path, errno);
    if (exists) {
        if (auto refusal = refusalOf(path, status))
            return *std::move(refusal);
        // The folder would let a write-protected file be replaced, which is not what its owner meant.
        if (::faccessat(AT_FDCWD, target.value().c_str(), W_OK, AT_EACCESS) != 0)
            return errorOf(path, errno);
    }
    const int error = replaceTarget(target.value(), exists ? &status : nullptr, bytes);
    if (error != 0)
        return errorOf(path, error);
    return Done{};
}

namespace {

// Asking the system for every entry's kind takes most of the time of listing a large directory; mostly it was told
// with the name. `told` and `kind` name the same kind, as the directory tells it and as the system answers.
bool isOfKind(int directory, const dirent& entry, unsigned char told, mode_t kind) {
    if (entry.d_type != DT_UNKNOWN && entry.d_type != DT_LNK)
        return entry.d_type == told;

    struct stat status {};

    return ::fstatat(directory, entry.d_name, &status, 0) == 0 && (status.st_mode & S_IFMT) == kind;
}

bool isDotOrDotDot(std::string_view name) {
    return name == "." || name == "..";
}

Result<std::vector<std::string>> namesIn(const std::string& directory, unsigned char told, mode_t kind,
                                         bool (*isLeftOut)(std::string_view)) {
    if (hasNul(directory))
        return errorOf(directory, ENOENT);

    struct Closer {
        void operator()(DIR* entries) const { ::closedir(entries); }
    };

    const std::unique_ptr<DIR, Closer> entries(::opendir(directory.c_str()));
    if (!entries)
        return errorOf(directory, errno);
    std::vector<std::string> names;
    errno = 0;
    for (const dirent* entry = ::readdir(entries.get()); entry != nullptr; entry = ::readdir(entries.get())) {
        if (!isLeftOut(entry->d_name) && isOfKind(::dirfd(entries.get()), *entry, told, kind))
            names.emplace_back(entry->d_name);
        errno = 0; // an entry that vanished is none of the directory's errors
    }
    if (errno != 0)
        return errorOf(directory, errno);
    return names;
}

} // namespace

Result<std::vector<std::string>> fileEntriesOf(const std::string& directory) {
    return namesIn(directory, DT_REG, S_IFREG, isHidden);
}

Result<std::vector<std::string>> folderEntriesOf(const std::string& directory) {
    return namesIn(directory, DT_DIR, S_IFDIR, isDotOrDotDot);
}

std::optional<FileStamp> stampOf(const std::string& path) {
    struct stat st {};

    if (::stat(path.c_str(), &st) != 0)
        return std::nullopt;
    return FileStamp{st.st_dev, st.st_ino, (std::uint64_t)st.st_size, (std::uint64_t)st.st_mtim.tv_sec,
                     (std::uint64_t)st.st_mtim.tv_nsec};
}

Result<StampedBytes> readStampedFile(const std::string& path, std::size_t limit) {
    auto r = readWholeFile(path, limit);
    if (!r)
        return r.error();
    return StampedBytes{std::move(r).value(), *stampOf(path)};
}

Result<Replaced> replaceKnownFile(const std::string& path, std::string_view bytes,
                                  const std::optional<FileStamp>& known) {
    std::string bak;
    if (known && stampOf(path) && stampOf(path) != known) {
        bak = path.substr(0, path.rfind('.')) + " now.bak";
        ::rename(path.c_str(), bak.c_str());
    }
    auto r = replaceWholeFile(path, bytes);
    if (!r)
        return r.error();
    return Replaced{*stampOf(path), bak};
}
} // namespace blockhouse
