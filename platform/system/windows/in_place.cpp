#include "platform/system/windows/in_place.h"

#include <algorithm>

namespace blockhouse {
namespace {

DWORD setSize(HANDLE file, LARGE_INTEGER size) {
    return ::SetFilePointerEx(file, size, nullptr, FILE_BEGIN) && ::SetEndOfFile(file) ? 0 : ::GetLastError();
}

DWORD writeAt(HANDLE file, std::size_t at, std::string_view bytes) {
    LARGE_INTEGER place{};
    place.QuadPart = static_cast<LONGLONG>(at);
    return ::SetFilePointerEx(file, place, nullptr, FILE_BEGIN) ? writeAll(file, bytes) : ::GetLastError();
}

// Only what lies beyond the old end is touched. Written, since a share may take the mere size for a promise.
DWORD appendTail(HANDLE file, LARGE_INTEGER oldSize, std::string_view bytes) {
    const auto from = static_cast<std::size_t>(oldSize.QuadPart);
    DWORD error = writeAt(file, from, bytes.substr(from));
    if (error == 0 && !::FlushFileBuffers(file))
        error = ::GetLastError();
    if (error != 0)
        static_cast<void>(setSize(file, oldSize));
    return error;
}

} // namespace

DWORD writeInPlace(const std::string& path, std::string_view bytes) {
    const Handle file = openFile(path, GENERIC_WRITE, shareAll, OPEN_ALWAYS);
    LARGE_INTEGER oldSize{};
    if (!file.isOpen() || !::GetFileSizeEx(file.get(), &oldSize))
        return ::GetLastError();
    LARGE_INTEGER size{};
    size.QuadPart = static_cast<LONGLONG>(bytes.size());
    // First what may be refused: more room, or the end of what another program has mapped.
    const DWORD refused =
        size.QuadPart > oldSize.QuadPart ? appendTail(file.get(), oldSize, bytes) : setSize(file.get(), size);
    if (refused != 0)
        return refused;
    const auto head = static_cast<std::size_t>(std::min(size.QuadPart, oldSize.QuadPart));
    if (const DWORD error = writeAt(file.get(), 0, bytes.substr(0, head)); error != 0)
        return error;
    return ::FlushFileBuffers(file.get()) ? 0 : ::GetLastError();
}

} // namespace blockhouse
