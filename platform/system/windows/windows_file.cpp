#include "platform/system/windows/windows_file.h"

#include "platform/system/names_beside.h"
#include "platform/text/paths.h"

#include <algorithm>

namespace blockhouse {
namespace {

// Names that the system itself puts beside a path, such as those of its streams, need some room.
constexpr std::size_t longestPlainPath = MAX_PATH - 16;
constexpr std::wstring_view unlimited = L"\\\\?\\";
constexpr std::wstring_view unlimitedShare = L"\\\\?\\UNC\\";

std::wstring fullPath(const std::wstring& path) {
    std::wstring full(::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(::GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

// A network drive refuses more.
constexpr DWORD mostAtOnce = 1U << 24;

DWORD part(std::size_t size) {
    return static_cast<DWORD>(std::min<std::size_t>(size, mostAtOnce));
}

std::int64_t secondsOf(LARGE_INTEGER time) {
    return time.QuadPart / 10'000'000;
}

std::int64_t nanosecondsOf(LARGE_INTEGER time) {
    return time.QuadPart % 10'000'000 * 100;
}

std::uint64_t joined(DWORD high, DWORD low) {
    return static_cast<std::uint64_t>(high) << 32 | low;
}

} // namespace

std::wstring wideText(std::string_view text) {
    const auto convert = [text](wchar_t* room, int size) {
        return ::MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), room, size);
    };
    std::wstring wide(static_cast<std::size_t>(convert(nullptr, 0)), L'\0');
    convert(wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::string narrowText(std::wstring_view text) {
    const auto convert = [text](char* room, int size) {
        return ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), room, size, nullptr,
                                     nullptr);
    };
    std::string narrow(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
    convert(narrow.data(), static_cast<int>(narrow.size()));
    return narrow;
}

std::wstring widePath(const std::string& path) {
    std::wstring wide = wideText(path);
    if (wide.size() <= longestPlainPath || wide.starts_with(unlimited))
        return wide;
    const std::wstring full = fullPath(wide);
    if (full.starts_with(L"\\\\"))
        return std::wstring(unlimitedShare) + full.substr(2);
    return std::wstring(unlimited) + full;
}

std::string narrowPath(std::wstring_view path) {
    if (path.starts_with(unlimitedShare))
        return "\\\\" + narrowText(path.substr(unlimitedShare.size()));
    return narrowText(path.starts_with(unlimited) ? path.substr(unlimited.size()) : path);
}

std::string folderPart(const std::string& path) {
    return path.substr(0, path.size() - LastPathPart(path).size());
}

FileError errorOf(const std::string& path, DWORD code) {
    constexpr DWORD flags = FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    wchar_t* text = nullptr;
    const DWORD size =
        ::FormatMessageW(flags, nullptr, code, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr); // NOLINT
    std::string cause = narrowText({text, size});
    ::LocalFree(text);
    while (!cause.empty() && (cause.back() == '\r' || cause.back() == '\n' || cause.back() == ' '))
        cause.pop_back();
    return {path, cause.empty() ? "System error " + std::to_string(code) : cause};
}

bool hasNul(const std::string& path) {
    return path.find('\0') != std::string::npos;
}

Handle openFile(const std::string& path, DWORD access, DWORD sharing, DWORD disposition, DWORD attributes) {
    return Handle(::CreateFileW(widePath(path).c_str(), access, sharing, nullptr, disposition, attributes, nullptr));
}

Handle openToAsk(const std::string& path) {
    return openFile(path, FILE_READ_ATTRIBUTES, shareAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
}

DWORD attributesOf(const std::string& path) {
    const DWORD attributes = hasNul(path) ? INVALID_FILE_ATTRIBUTES : ::GetFileAttributesW(widePath(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return attributes;
    const Handle file = openToAsk(path);
    FILE_BASIC_INFO basics{};
    if (!file.isOpen() || !::GetFileInformationByHandleEx(file.get(), FileBasicInfo, &basics, sizeof basics))
        return INVALID_FILE_ATTRIBUTES;
    return basics.FileAttributes;
}

std::optional<FileStamp> stampFrom(HANDLE file) {
    BY_HANDLE_FILE_INFORMATION which{};
    FILE_BASIC_INFO basics{};
    if (!::GetFileInformationByHandle(file, &which) ||
        !::GetFileInformationByHandleEx(file, FileBasicInfo, &basics, sizeof basics))
        return std::nullopt;
    return FileStamp{which.dwVolumeSerialNumber, joined(which.nFileIndexHigh, which.nFileIndexLow),
                     joined(which.nFileSizeHigh, which.nFileSizeLow), secondsOf(basics.LastWriteTime),
                     nanosecondsOf(basics.LastWriteTime)};
}

Result<NormalFile> openNormalFile(const std::string& path) {
    if (hasNul(path))
        return errorOf(path, ERROR_FILE_NOT_FOUND);
    const DWORD attributes = attributesOf(path);
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return FileError{path, "Is a directory"};
    Handle file = openFile(path, GENERIC_READ, shareAll, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN);
    if (!file.isOpen())
        return errorOf(path, ::GetLastError());
    if (::GetFileType(file.get()) != FILE_TYPE_DISK)
        return FileError{path, "Not a normal file"};
    const std::optional<FileStamp> stamp = stampFrom(file.get());
    if (!stamp)
        return errorOf(path, ::GetLastError());
    return NormalFile{std::move(file), *stamp};
}

DWORD persistently(const std::function<DWORD()>& call) {
    constexpr DWORD longestWait = 160; // milliseconds
    for (DWORD wait = 10;; wait *= 2) {
        const DWORD error = call();
        const bool mayPass = error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
                             error == ERROR_ACCESS_DENIED || error == ERROR_UNABLE_TO_REMOVE_REPLACED ||
                             error == ERROR_UNABLE_TO_MOVE_REPLACEMENT;
        if (!mayPass || wait > longestWait)
            return error;
        ::Sleep(wait);
    }
}

DWORD readAll(HANDLE file, char* room, std::size_t size, std::size_t& filled) {
    filled = 0;
    while (filled < size) {
        DWORD got = 0;
        if (!::ReadFile(file, room + filled, part(size - filled), &got, nullptr))
            return ::GetLastError();
        if (got == 0)
            break;
        filled += got;
    }
    return 0;
}

DWORD writeAll(HANDLE file, std::string_view bytes) {
    while (!bytes.empty()) {
        DWORD written = 0;
        if (!::WriteFile(file, bytes.data(), part(bytes.size()), &written, nullptr))
            return ::GetLastError();
        if (written == 0)
            return ERROR_WRITE_FAULT;
        bytes.remove_prefix(written);
    }
    return 0;
}

DWORD takeFreeBackup(const std::string& target, std::string& backup,
                     const std::function<DWORD(const std::string&)>& take) {
    constexpr int most = 1000;
    for (int number = 1; number <= most; ++number) {
        std::string path = folderPart(target) + backupName(LastPathPart(target), number);
        const DWORD error = take(path);
        if (error == 0)
            backup = std::move(path);
        if (error != ERROR_FILE_EXISTS && error != ERROR_ALREADY_EXISTS)
            return error;
    }
    return ERROR_FILE_EXISTS;
}

} // namespace blockhouse
