#include "platform/system/directory_entries.h"

#include "platform/system/windows/Listing.h"
#include "platform/text/paths.h"

namespace blockhouse {
namespace {

bool isLeftOut(const WIN32_FIND_DATAW& entry) {
    const std::wstring_view name = entry.cFileName;
    return (entry.dwFileAttributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)) != 0 || name == L"." ||
           name == L"..";
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
        if (!isLeftOut(listing.entry()) && isOfKind(directory, listing, folders))
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
