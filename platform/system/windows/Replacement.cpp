#include "platform/system/windows/Replacement.h"

#include "platform/system/names_beside.h"

#include <algorithm>

namespace blockhouse {
namespace {

std::string nextTemporaryPath(const std::string& target) {
    static unsigned counter = 0;
    return folderPart(target) + temporaryName(::GetCurrentProcessId(), ++counter);
}

// Sets `path` if the file is open.
Handle openTemporary(const std::string& target, std::string& path) {
    constexpr int mostTries = 1000; // names left behind by a killed process of the same number
    for (int tries = 0; tries < mostTries; ++tries) {
        std::string name = nextTemporaryPath(target);
        Handle file = openFile(name, GENERIC_READ | GENERIC_WRITE, 0, CREATE_NEW);
        if (file.isOpen())
            path = std::move(name);
        if (file.isOpen() || ::GetLastError() != ERROR_FILE_EXISTS)
            return file;
    }
    return Handle(INVALID_HANDLE_VALUE);
}

DWORD move(const std::string& from, const std::string& to) {
    return persistently([&]() -> DWORD {
        const bool moved = ::MoveFileExW(widePath(from).c_str(), widePath(to).c_str(), MOVEFILE_WRITE_THROUGH);
        return moved ? 0 : ::GetLastError();
    });
}

void remove(const std::string& path) {
    ::SetFileAttributesW(widePath(path).c_str(), FILE_ATTRIBUTE_NORMAL);
    static_cast<void>(
        persistently([&path]() -> DWORD { return ::DeleteFileW(widePath(path).c_str()) ? 0 : ::GetLastError(); }));
}

bool isThere(const std::string& path) {
    return ::GetFileAttributesW(widePath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

// Not every system's exchange keeps the attributes. The bytes are new, so whoever looks for such files is to see it.
void setAttributes(const std::string& path, DWORD original) {
    constexpr DWORD kept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    if (original != INVALID_FILE_ATTRIBUTES)
        ::SetFileAttributesW(widePath(path).c_str(), (original & kept) | FILE_ATTRIBUTE_ARCHIVE);
}

// Before what was there is removed. A failure is no reason to call the write failed.
void sync(const std::string& path) {
    const Handle file = openFile(path, GENERIC_WRITE, shareAll, OPEN_EXISTING);
    if (file.isOpen())
        ::FlushFileBuffers(file.get());
}

// What a change of the name leaves alone on every file system.
bool isOfOneWrite(const FileStamp& left, const FileStamp& right) {
    return left.size == right.size && left.changedSeconds == right.changedSeconds &&
           left.changedNanoseconds == right.changedNanoseconds;
}

bool isOneOf(DWORD error, std::initializer_list<DWORD> errors) {
    return std::find(errors.begin(), errors.end(), error) != errors.end();
}

} // namespace

bool forbidsNewFile(DWORD error) {
    return error == ERROR_ACCESS_DENIED;
}

bool forbidsTakingPlace(DWORD error) {
    return isOneOf(error, {ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION, ERROR_USER_MAPPED_FILE, ERROR_NOT_SUPPORTED,
                           ERROR_INVALID_FUNCTION, ERROR_INVALID_PARAMETER, ERROR_NOT_SAME_DEVICE,
                           ERROR_UNABLE_TO_REMOVE_REPLACED, ERROR_UNABLE_TO_MOVE_REPLACEMENT,
                           ERROR_UNABLE_TO_MOVE_REPLACEMENT_2});
}

Replacement::Replacement(std::string target) : target_(std::move(target)), file_(openTemporary(target_, path_)) {}

Replacement::~Replacement() {
    file_.close();
    if (!path_.empty())
        remove(path_);
}

// Closed, since the system takes no open file for a replacement, and some file systems set the time only then.
DWORD Replacement::fill(std::string_view bytes) {
    if (const DWORD error = writeAll(file_.get(), bytes); error != 0)
        return error;
    if (!::FlushFileBuffers(file_.get()))
        return ::GetLastError();
    file_.close();
    const std::optional<FileStamp> stamp = stampOf(path_);
    if (!stamp)
        return ::GetLastError();
    written_ = *stamp;
    return 0;
}

DWORD Replacement::takeName() {
    const DWORD error = move(path_, target_);
    if (error == 0)
        path_.clear();
    return error;
}

// What had the name is always kept at first, under a name that says what it is: where the exchange breaks off half way,
// or the process ends in it, this is how it can be undone. And nobody can write between a look at the file and its end.
DWORD Replacement::takePlaceOf(const std::optional<FileStamp>& known, std::string& backup) {
    const bool isOthers = known && stampOf(target_) != known;
    std::string old;
    const auto isFree = [](const std::string& name) -> DWORD { return isThere(name) ? ERROR_FILE_EXISTS : 0; };
    if (const DWORD error = takeFreeBackup(target_, old, isFree); error != 0)
        return error;
    if (const DWORD error = exchange(old); error != 0)
        return error;
    const std::optional<FileStamp> state = stampOf(old);
    const bool isAsKnown = !isOthers && state && known && isOfOneWrite(*state, *known);
    if (!known || isAsKnown)
        remove(old);
    else
        backup = old;
    return 0;
}

DWORD Replacement::exchange(const std::string& old) {
    const DWORD attributes = ::GetFileAttributesW(widePath(target_).c_str());
    DWORD error = persistently([&]() -> DWORD {
        const bool replaced = ::ReplaceFileW(widePath(target_).c_str(), widePath(path_).c_str(), widePath(old).c_str(),
                                             0, nullptr, nullptr);
        return replaced ? 0 : ::GetLastError();
    });
    // Whatever the error says: the target may have lost its name, and the new content not got it.
    if (error != 0 && !isThere(target_) && isThere(old))
        error = finishExchange(old);
    if (error != 0)
        return error;
    path_.clear();
    setAttributes(target_, attributes);
    sync(target_);
    return 0;
}

DWORD Replacement::finishExchange(const std::string& old) {
    const DWORD error = move(path_, target_);
    if (error == 0)
        return 0;
    // If even that fails, the target is written anew, and the old content stays where it is.
    return move(old, target_) == 0 ? error : ERROR_UNABLE_TO_MOVE_REPLACEMENT_2;
}

FileStamp Replacement::stamp() const {
    const std::optional<FileStamp> now = stampOf(target_);
    return now && isOfOneWrite(*now, written_) ? *now : written_;
}

} // namespace blockhouse
