#include "platform/system/files.h"

#include "platform/system/directory_entries.h"
#include "platform/system/posix/attributes.h"
#include "platform/system/posix/backup.h"
#include "platform/system/posix/in_place.h"
#include "platform/system/posix/posix_file.h"
#include "platform/system/posix/Replacement.h"
#include "platform/system/posix/stale_files.h"
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

constexpr std::string_view tooLarge = "File too large";

// Reads to the end of the file, wherever that is by then, or until there is more than `limit`; 0 or the error.
int readToEnd(int file, std::string& bytes, std::size_t limit) {
    constexpr std::size_t step = 1 << 18;
    const auto room = std::make_unique<std::array<char, step>>();
    for (;;) {
        const ssize_t got = retried([&] { return ::read(file, room->data(), step); });
        if (got < 0)
            return errno;
        if (got == 0)
            return 0;
        if (static_cast<std::size_t>(got) > limit - bytes.size())
            return EFBIG;
        bytes.append(room->data(), static_cast<std::size_t>(got));
    }
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

// A save on its way: what is to be written where, over which file.
struct Writing {
    std::string target;
    std::optional<struct stat> original; // nothing when there is no such file yet
    std::string_view bytes;
    std::optional<FileStamp> known;
    Replaced outcome{};
};

int writeOver(Writing& writing) {
    if (writing.known && stampFrom(*writing.original) != *writing.known)
        if (const int error = copyToBackup(writing.target, writing.outcome.backup); error != 0)
            return error;
    if (const int error = writeInPlace(writing.target, writing.bytes); error != 0)
        return error;
    writing.outcome.stamp = stampOf(writing.target).value_or(FileStamp{});
    return 0;
}

// A new file gets what the user's mask leaves; one that will get the original's permissions is private till then.
int replaceTarget(Writing& writing, Replacement::Name name) {
    const bool exists = writing.original.has_value();
    const auto takes = writing.known && exists ? Replacement::Takes::KnownState : Replacement::Takes::Anything;
    Replacement replacement(writing.target, exists ? 0600 : 0666, name, takes);
    if (!replacement.isOpen()) {
        const int error = errno;
        return exists && forbidsNewFile(error) ? writeOver(writing) : error;
    }
    if (exists &&
        (writing.original->st_nlink > 1 || !takeAttributes(replacement.number(), writing.target, *writing.original)))
        return writeOver(writing);
    if (const int error = replacement.fill(writing.bytes); error != 0)
        return error;
    const int error = writing.known && exists ? replacement.takePlaceOf(*writing.known, writing.outcome.backup)
                                              : replacement.takePlace();
    if (error != 0 && replacement.isWithoutName())
        return replaceTarget(writing, Replacement::Name::FromTheStart);
    if (error != 0 && exists && forbidsTakingPlace(error))
        return writeOver(writing);
    writing.outcome.stamp = replacement.stamp().value_or(FileStamp{});
    return error;
}

Result<StampedBytes> readNormalFile(const NormalFile& file, const std::string& path, std::size_t limit) {
    if (file.stamp.size > limit)
        return FileError{path, std::string(tooLarge)};
    try {
        StampedBytes read{{}, file.stamp};
        read.bytes.reserve(static_cast<std::size_t>(file.stamp.size));
        if (const int error = readToEnd(file.descriptor.number(), read.bytes, limit); error != 0)
            return errorOf(path, error);
        return read;
    } catch (const std::bad_alloc&) {
        return errorOf(path, ENOMEM);
    } catch (const std::length_error&) {
        return FileError{path, std::string(tooLarge)};
    }
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

std::optional<FileStamp> stampOf(const std::string& path) {
    struct stat status {};

    if (hasNul(path) || ::stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return stampFrom(status);
}

Result<StampedBytes> readStampedFile(const std::string& path, std::size_t limit) {
    const Result<NormalFile> file = openNormalFile(path);
    if (!file)
        return file.error();
    return readNormalFile(file.value(), path, limit);
}

Result<Replaced> replaceKnownFile(const std::string& path, std::string_view bytes,
                                  const std::optional<FileStamp>& known) {
    if (hasNul(path))
        return errorOf(path, ENOENT);
    const Result<std::string> target = targetOf(path);
    if (!target)
        return target.error();
    Writing writing{target.value(), std::nullopt, bytes, known};

    struct stat status {};

    if (::stat(writing.target.c_str(), &status) == 0)
        writing.original = status;
    else if (errno != ENOENT)
        return errorOf(path, errno);
    if (writing.original) {
        if (auto refusal = refusalOf(path, status))
            return *std::move(refusal);
        // The folder would let a write-protected file be replaced, which is not what its owner meant.
        if (::faccessat(AT_FDCWD, writing.target.c_str(), W_OK, AT_EACCESS) != 0)
            return errorOf(path, errno);
    }
    removeStaleFiles(directoryOf(writing.target));
    if (const int error = replaceTarget(writing, Replacement::Name::AtTheEnd); error != 0)
        return errorOf(path, error);
    return writing.outcome;
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

} // namespace blockhouse
