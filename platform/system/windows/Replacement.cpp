#include "platform/system/windows/Replacement.h"

#include "platform/system/names_beside.h"

#include <algorithm>
#include <array>

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
    const bool moved = ::MoveFileExW(widePath(from).c_str(), widePath(to).c_str(), MOVEFILE_WRITE_THROUGH);
    return moved ? 0 : ::GetLastError();
}

void remove(const std::string& path) {
    ::SetFileAttributesW(widePath(path).c_str(), FILE_ATTRIBUTE_NORMAL);
    ::DeleteFileW(widePath(path).c_str());
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
                           ERROR_INVALID_FUNCTION, ERROR_UNABLE_TO_REMOVE_REPLACED, ERROR_UNABLE_TO_MOVE_REPLACEMENT,
                           ERROR_UNABLE_TO_MOVE_REPLACEMENT_2});
}

Replacement::Replacement(std::string target) : target_(std::move(target)), file_(openTemporary(target_, path_)) {}

Replacement::~Replacement() {
    file_.close();
    if (!path_.empty())
        remove(path_);
}

// Closed, since the system takes no open file for a replacement.
DWORD Replacement::fill(std::string_view bytes) {
    if (const DWORD error = writeAll(file_.get(), bytes); error != 0)
        return error;
    if (!::FlushFileBuffers(file_.get()))
        return ::GetLastError();
    const std::optional<FileStamp> stamp = stampFrom(file_.get());
    if (!stamp)
        return ::GetLastError();
    written_ = *stamp;
    file_.close();
    return 0;
}

DWORD Replacement::takeName() {
    const DWORD error = move(path_, target_);
    if (error == 0)
        path_.clear();
    return error;
}

// What had the name is always kept at first: where the exchange breaks off half way, this is how it can be undone, and
// nobody can write between a look at the file and its end.
DWORD Replacement::takePlaceOf(const std::optional<FileStamp>& known, std::string& backup) {
    const bool isOthers = known && stampOf(target_) != known;
    const std::string old = nextTemporaryPath(target_);
    if (const DWORD error = exchange(old); error != 0)
        return error;
    const std::optional<FileStamp> state = stampOf(old);
    // The exchange itself has touched it.
    const bool isAsKnown = !isOthers && state && known && state->withoutTouch() == known->withoutTouch();
    if (!known || isAsKnown) {
        remove(old);
        return 0;
    }
    if (takeFreeBackup(target_, backup, [&](const std::string& name) { return move(old, name); }) != 0)
        backup = old; // whole, if under an odd name
    return 0;
}

DWORD Replacement::exchange(const std::string& old) {
    const DWORD attributes = ::GetFileAttributesW(widePath(target_).c_str());
    if (!::ReplaceFileW(widePath(target_).c_str(), widePath(path_).c_str(), widePath(old).c_str(), 0, nullptr,
                        nullptr)) {
        const DWORD error = ::GetLastError();
        const DWORD finished = error == ERROR_UNABLE_TO_MOVE_REPLACEMENT_2 ? finishExchange(old) : error;
        if (finished != 0)
            return finished;
    }
    path_.clear();
    // Not every system's exchange keeps them.
    if (::GetFileAttributesW(widePath(target_).c_str()) != attributes)
        ::SetFileAttributesW(widePath(target_).c_str(), attributes);
    return 0;
}

// The target has lost its name to `old`, and the new content has not got it.
DWORD Replacement::finishExchange(const std::string& old) {
    const DWORD error = move(path_, target_);
    if (error == 0)
        return 0;
    return move(old, target_) == 0 ? error : ERROR_FILE_NOT_FOUND;
}

// The exchange changes what is known of the file, but not when it was written.
FileStamp Replacement::stamp() const {
    const std::optional<FileStamp> now = stampOf(target_);
    const auto written = [](const FileStamp& stamp) {
        return std::array{static_cast<std::int64_t>(stamp.size), stamp.changedSeconds, stamp.changedNanoseconds};
    };
    return now && written(*now) == written(written_) ? *now : written_;
}

} // namespace blockhouse
