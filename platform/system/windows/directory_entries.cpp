#include "platform/system/directory_entries.h"

#include "platform/system/names_beside.h"
#include "platform/system/windows/Listing.h"
#include "platform/text/paths.h"

namespace blockhouse {
namespace {

// Files that are hidden or the system's, and those that a save is about to rename; of folders only those that are both
// hidden and the system's: a folder is often one of them for no more than its look.
bool isLeftOut(const Listing& listing, bool folders) {
    constexpr DWORD marks = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    const DWORD marked = listing.entry().dwFileAttributes & marks;
    const std::wstring_view name = listing.entry().cFileName;
    if (folders)
        return marked == marks || name == L"." || name == L"..";
    return marked != 0 || processOfTemporary(listing.name());
}

// A link to a folder is marked as a folder itself; a link to a file may lead nowhere.
bool isOfKind(const std::string& directory, const Listing& listing, bool folders) {
    const WIN32_FIND_DATAW& entry = listing.entry();
    const bool isFolder = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (isFolder != folders)
        return false;
    const bool isLink =
        (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && entry.dwReserved0 == IO_REPARSE_TAG_SYMLINK;
    return !isLink || attributesOf(joinPath(directory, listing.name())) != INVALID_FILE_ATTRIBUTES;
}

Result<std::vector<std::string>> namesIn(const std::string& directory, bool folders) {
    if (directory.empty() || hasNul(directory))
        return errorOf(directory, ERROR_PATH_NOT_FOUND);
    std::vector<std::string> names;
    Listing listing(joinPath(directory, "*"));
    if (!listing.isOpen()) {
        const DWORD error = ::GetLastError();
        if (error == ERROR_FILE_NOT_FOUND && attributesOf(directory) != INVALID_FILE_ATTRIBUTES)
            return names; // an empty drive
        return errorOf(directory, error);
    }
    do {
        if (!isLeftOut(listing, folders) && isOfKind(directory, listing, folders))
            names.push_back(listing.name());
    } while (listing.next());
    if (const DWORD error = ::GetLastError(); error != ERROR_NO_MORE_FILES)
        return errorOf(directory, error);
    return names;
}

} // namespace

Result<std::vector<std::string>> fileEntriesOf(const std::string& directory) {
    return namesIn(directory, false);
}

Result<std::vector<std::string>> folderEntriesOf(const std::string& directory) {
    return namesIn(directory, true);
}

} // namespace blockhouse
