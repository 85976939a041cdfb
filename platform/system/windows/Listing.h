// The entries of a folder, one after the other.
#pragma once

#include "platform/system/windows/windows_file.h"

#include <string>

namespace blockhouse {

class Listing {
public:
    // The path's last part may hold "*". Not open (with the last error set) where nothing fits it.
    explicit Listing(const std::string& path)
        : handle_(::FindFirstFileExW(widePath(path).c_str(), FindExInfoBasic, &entry_, FindExSearchNameMatch, nullptr,
                                     FIND_FIRST_EX_LARGE_FETCH)) {}

    ~Listing() {
        if (isOpen())
            ::FindClose(handle_);
    }

    Listing(const Listing&) = delete;
    Listing& operator=(const Listing&) = delete;

    [[nodiscard]] bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }

    [[nodiscard]] const WIN32_FIND_DATAW& entry() const { return entry_; }

    [[nodiscard]] std::string name() const { return narrowText(entry_.cFileName); }

    // False (with the last error set) when there is no further one.
    [[nodiscard]] bool next() { return ::FindNextFileW(handle_, &entry_); }

private:
    WIN32_FIND_DATAW entry_{};
    HANDLE handle_;
};

} // namespace blockhouse
