#include "platform/system/windows/in_place.h"

namespace blockhouse {
namespace {

DWORD setSize(HANDLE file, LARGE_INTEGER size) {
    return ::SetFilePointerEx(file, size, nullptr, FILE_BEGIN) && ::SetEndOfFile(file) ? 0 : ::GetLastError();
}

DWORD setRoomAside(HANDLE file, LARGE_INTEGER oldSize, LARGE_INTEGER size) {
    if (size.QuadPart <= oldSize.QuadPart)
        return 0;
    const DWORD error = setSize(file, size);
    if (error != 0)
        static_cast<void>(setSize(file, oldSize));
    return error;
}

DWORD writeFromTheStart(HANDLE file, std::string_view bytes) {
    if (!::SetFilePointerEx(file, LARGE_INTEGER{}, nullptr, FILE_BEGIN))
        return ::GetLastError();
    return writeAll(file, bytes);
}

} // namespace

DWORD writeInPlace(const std::string& path, std::string_view bytes) {
    const Handle file = openFile(path, GENERIC_WRITE, shareAll, OPEN_ALWAYS);
    LARGE_INTEGER oldSize{};
    if (!file.isOpen() || !::GetFileSizeEx(file.get(), &oldSize))
        return ::GetLastError();
    LARGE_INTEGER size{};
    size.QuadPart = static_cast<LONGLONG>(bytes.size());
    if (const DWORD error = setRoomAside(file.get(), oldSize, size); error != 0)
        return error;
    if (const DWORD error = writeFromTheStart(file.get(), bytes); error != 0)
        return error;
    if (const DWORD error = setSize(file.get(), size); error != 0)
        return error;
    return ::FlushFileBuffers(file.get()) ? 0 : ::GetLastError();
}

} // namespace blockhouse
