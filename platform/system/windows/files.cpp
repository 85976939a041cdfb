#include "platform/system/files.h"

#include "platform/system/windows/in_place.h"
#include "platform/system/windows/Replacement.h"
#include "platform/system/windows/stale_files.h"

#include <array>
#include <memory>
#include <new>
#include <stdexcept>

namespace blockhouse {
namespace {

constexpr std::string_view tooLarge = "File too large";

bool has(DWORD attributes, DWORD any) {
    return (attributes & any) != 0;
}

// Reads to the end of the file, wherever that is by then, or until there is more than `limit`.
DWORD readToEnd(HANDLE file, std::string& bytes, std::size_t limit) {
    constexpr std::size_t step = 1 << 18;
    const auto room = std::make_unique<std::array<char, step>>();
    for (;;) {
        std::size_t got = 0;
        if (const DWORD error = readAll(file, room->data(), step, got); error != 0)
            return error;
        if (got > limit - bytes.size())
            return ERROR_FILE_TOO_LARGE;
        bytes.append(room->data(), got);
        if (got < step)
            return 0;
    }
}

Result<StampedBytes> readNormalFile(const NormalFile& file, const std::string& path, std::size_t limit) {
    if (file.stamp.size > limit)
        return FileError{path, std::string(tooLarge)};
    try {
        StampedBytes read{{}, file.stamp};
        read.bytes.reserve(static_cast<std::size_t>(file.stamp.size));
        const DWORD error = readToEnd(file.handle.get(), read.bytes, limit);
        if (error == ERROR_FILE_TOO_LARGE)
            return FileError{path, std::string(tooLarge)};
        if (error != 0)
            return errorOf(path, error);
        return read;
    } catch (const std::bad_alloc&) {
        return errorOf(path, ERROR_NOT_ENOUGH_MEMORY);
    } catch (const std::length_error&) {
        return FileError{path, std::string(tooLarge)};
    }
}

// Follows the links to a file that exists. Where the system cannot tell the name behind them, the path is it.
std::string targetOf(const std::string& path) {
    const DWORD attributes = ::GetFileAttributesW(widePath(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || !has(attributes, FILE_ATTRIBUTE_REPARSE_POINT))
        return path;
    const Handle file = openToAsk(path);
    if (!file.isOpen())
        return path;
    std::wstring name(32'768, L'\0');
    for (const DWORD how : {FILE_NAME_NORMALIZED, FILE_NAME_OPENED}) {
        const DWORD size = ::GetFinalPathNameByHandleW(file.get(), name.data(), static_cast<DWORD>(name.size()), how);
        if (size > 0 && size < name.size())
            return narrowPath(std::wstring_view(name).substr(0, size));
    }
    return path;
}

// A link whose target has no name that could be found out, or none at all.
bool isStillALink(const std::string& path) {
    WIN32_FIND_DATAW entry{};
    const HANDLE search = ::FindFirstFileW(widePath(path).c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return false;
    ::FindClose(search);
    return has(entry.dwFileAttributes, FILE_ATTRIBUTE_REPARSE_POINT) && entry.dwReserved0 == IO_REPARSE_TAG_SYMLINK;
}

// What a save finds where it is to write.
struct Original {
    bool exists = false;
    bool cannotBeReplaced = false; // it has further names (hard links), or is reached through a link only
};

// A save on its way: what is to be written where, over which file.
struct Writing {
    std::string target;
    Original original;
    std::string_view bytes;
    std::optional<FileStamp> known;
    Replaced outcome{};
};

// Why nothing may be written there, if so: the file is no normal one, is read-only, is held by another program, or its
// access list forbids it. The folder would let such a file be replaced, which is not what its owner meant. Sets what is
// known of the original.
std::optional<FileError> lookAt(Writing& writing, const std::string& path) {
    const Handle file = openToAsk(writing.target);
    if (!file.isOpen()) {
        const DWORD error = ::GetLastError();
        const bool isMissing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
        return isMissing ? std::nullopt : std::optional(errorOf(path, error));
    }
    if (::GetFileType(file.get()) != FILE_TYPE_DISK)
        return FileError{path, "Not a normal file"};
    BY_HANDLE_FILE_INFORMATION status{};
    if (!::GetFileInformationByHandle(file.get(), &status))
        return errorOf(path, ::GetLastError());
    if (has(status.dwFileAttributes, FILE_ATTRIBUTE_DIRECTORY))
        return FileError{path, "Is a directory"};
    if (has(status.dwFileAttributes, FILE_ATTRIBUTE_READONLY))
        return errorOf(path, ERROR_ACCESS_DENIED);
    const DWORD forbidden = persistently([&writing]() -> DWORD {
        return openFile(writing.target, GENERIC_WRITE, shareAll, OPEN_EXISTING).isOpen() ? 0 : ::GetLastError();
    });
    if (forbidden != 0)
        return errorOf(path, forbidden);
    writing.original = {true, status.nNumberOfLinks > 1 || isStillALink(writing.target)};
    return std::nullopt;
}

DWORD copyToBackup(const std::string& target, std::string& backup) {
    return takeFreeBackup(target, backup, [&](const std::string& name) -> DWORD {
        constexpr BOOL onlyNew = TRUE;
        if (!::CopyFileW(widePath(target).c_str(), widePath(name).c_str(), onlyNew))
            return ::GetLastError();
        const Handle copy = openFile(name, GENERIC_WRITE, shareAll, OPEN_EXISTING);
        return copy.isOpen() && ::FlushFileBuffers(copy.get()) ? 0 : ::GetLastError();
    });
}

DWORD writeOver(Writing& writing) {
    if (writing.known && writing.original.exists && stampOf(writing.target) != writing.known)
        if (const DWORD error = copyToBackup(writing.target, writing.outcome.backup); error != 0)
            return error;
    if (const DWORD error = writeInPlace(writing.target, writing.bytes); error != 0)
        return error;
    writing.outcome.stamp = stampOf(writing.target).value_or(FileStamp{});
    return 0;
}

DWORD replaceTarget(Writing& writing) {
    const bool exists = writing.original.exists;
    const bool isLinkToNothing = !exists && isStillALink(writing.target);
    if (isLinkToNothing || writing.original.cannotBeReplaced)
        return writeOver(writing);
    Replacement replacement(writing.target);
    if (!replacement.isOpen()) {
        const DWORD error = ::GetLastError();
        return exists && forbidsNewFile(error) ? writeOver(writing) : error;
    }
    if (const DWORD error = replacement.fill(writing.bytes); error != 0)
        return error;
    const DWORD error =
        exists ? replacement.takePlaceOf(writing.known, writing.outcome.backup) : replacement.takeName();
    if (error == ERROR_FILE_NOT_FOUND && exists) { // it has gone meanwhile
        if (const DWORD alone = replacement.takeName(); alone != 0)
            return alone;
    } else if (exists && forbidsTakingPlace(error)) {
        return writeOver(writing);
    } else if (error != 0) {
        return error;
    }
    writing.outcome.stamp = replacement.stamp();
    return 0;
}

} // namespace

// Hidden and system files are those with the attribute.
bool FileExists(const std::string& path) {
    const DWORD attributes = attributesOf(path);
    constexpr DWORD others =
        FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    if (attributes == INVALID_FILE_ATTRIBUTES || has(attributes, others))
        return false;
    // The names of devices have attributes of files.
    const Handle file = openToAsk(path);
    return !file.isOpen() || ::GetFileType(file.get()) == FILE_TYPE_DISK;
}

std::optional<FileStamp> stampOf(const std::string& path) {
    if (hasNul(path))
        return std::nullopt;
    const Handle file = openToAsk(path);
    return file.isOpen() ? stampFrom(file.get()) : std::nullopt;
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
        return errorOf(path, ERROR_FILE_NOT_FOUND);
    Writing writing{targetOf(path), {}, bytes, known};
    if (std::optional<FileError> refusal = lookAt(writing, path))
        return *std::move(refusal);
    removeStaleFiles(folderPart(writing.target));
    if (const DWORD error = replaceTarget(writing); error != 0)
        return errorOf(path, error);
    return writing.outcome;
}

} // namespace blockhouse
