#include "platform/system/folders.h"

#include "platform/system/names_beside.h"
#include "platform/system/windows/windows_file.h"
#include "platform/text/paths.h"

namespace blockhouse {

std::string absoluteFolder(const std::string& path) {
    if (path.empty() || hasNul(path))
        return {};
    const std::wstring wide = wideText(path);
    std::wstring full(::GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(::GetFullPathNameW(wide.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return withoutTrailingSeparators(narrowText(full));
}

void makeFolder(const std::string& path) {
    if (path.empty() || attributesOf(path) != INVALID_FILE_ATTRIBUTES)
        return;
    const std::string above = folderAbove(path);
    if (above.size() < path.size())
        makeFolder(above);
    ::CreateDirectoryW(widePath(path).c_str(), nullptr);
}

// Access lists are too many-sided to be asked, so it is tried.
bool takesNewFiles(const std::string& folder) {
    const std::string name = joinPath(folder, temporaryName(::GetCurrentProcessId(), 0)); // no save's
    return openFile(name, GENERIC_WRITE, 0, CREATE_NEW, FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE).isOpen();
}

} // namespace blockhouse
