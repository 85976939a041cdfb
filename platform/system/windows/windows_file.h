// What the files that call the operating system share. Error codes are the system's; 0 is success.
#pragma once

#include "platform/system/FileStamp.h"
#include "platform/text/Result.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace blockhouse {

// Between the program's UTF-8 and the system's UTF-16. What is no text becomes a replacement mark.
[[nodiscard]] std::wstring wideText(std::string_view text);
[[nodiscard]] std::string narrowText(std::wstring_view text);

// A path for the system's calls. One that is too long for most of them gets the prefix that lifts the limit.
[[nodiscard]] std::wstring widePath(const std::string& path);
// Without that prefix.
[[nodiscard]] std::string narrowPath(std::wstring_view path);

// The folder and the separator after it; empty for a bare name.
[[nodiscard]] std::string folderPart(const std::string& path);

// In the user's language, as the system words it.
[[nodiscard]] FileError errorOf(const std::string& path, DWORD code);

// The system would silently cut such a path at the NUL and work on another file.
[[nodiscard]] bool hasNul(const std::string& path);

// An open file, closed on every way out.
class Handle {
public:
    explicit Handle(HANDLE handle) : handle_(handle) {}

    ~Handle() { close(); }

    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}

    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    Handle& operator=(Handle&&) = delete;

    [[nodiscard]] bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }

    [[nodiscard]] HANDLE get() const { return handle_; }

    void close() {
        if (isOpen())
            ::CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE));
    }

private:
    HANDLE handle_;
};

// Other programs may go on reading, writing, renaming and removing the file.
inline constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// The last error is set if it is not open.
[[nodiscard]] Handle openFile(const std::string& path, DWORD access, DWORD sharing, DWORD disposition,
                              DWORD attributes = FILE_ATTRIBUTE_NORMAL);

// For what is known of a file, a folder too; links are followed.
[[nodiscard]] Handle openToAsk(const std::string& path);

// Of the file or folder that the path leads to, through links; INVALID_FILE_ATTRIBUTES where that is nothing.
[[nodiscard]] DWORD attributesOf(const std::string& path);

// The last error is set if there is none.
[[nodiscard]] std::optional<FileStamp> stampFrom(HANDLE file);

struct NormalFile {
    Handle handle;
    FileStamp stamp;
};

// To be read. A directory, a pipe and a device are errors.
Result<NormalFile> openNormalFile(const std::string& path);

// Repeats a call that returns its error, for about a third of a second, while another program, such as a scanner, holds
// the file or keeps it from going.
[[nodiscard]] DWORD persistently(const std::function<DWORD()>& call);

// Fewer only where the file ends.
[[nodiscard]] DWORD readAll(HANDLE file, char* room, std::size_t size, std::size_t& filled);
[[nodiscard]] DWORD writeAll(HANDLE file, std::string_view bytes);

// Calls `take` with names for what a save found in the place of `target`, until one is free: until it returns
// something else than ERROR_FILE_EXISTS. `backup` is the path of that name then.
[[nodiscard]] DWORD takeFreeBackup(const std::string& target, std::string& backup,
                                   const std::function<DWORD(const std::string&)>& take);

} // namespace blockhouse
