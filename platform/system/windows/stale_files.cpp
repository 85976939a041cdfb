#include "platform/system/windows/stale_files.h"

#include "platform/system/names_beside.h"
#include "platform/system/windows/Listing.h"

#include <set>

namespace blockhouse {
namespace {

bool hasEnded(DWORD process) {
    const HANDLE handle = ::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process);
    if (handle == nullptr)
        return ::GetLastError() == ERROR_INVALID_PARAMETER;
    ::CloseHandle(handle);
    return false;
}

bool isOlderThanADay(const std::string& path) {
    constexpr std::int64_t day = std::int64_t{24} * 60 * 60;
    FILETIME now{};
    ::GetSystemTimeAsFileTime(&now);
    const std::int64_t seconds = (static_cast<std::int64_t>(now.dwHighDateTime) << 32 | now.dwLowDateTime) / 10'000'000;
    const std::optional<FileStamp> stamp = stampOf(path);
    return stamp && stamp->changedSeconds < seconds - day;
}

} // namespace

void removeStaleFiles(const std::string& folder) {
    static std::set<std::string> seen;
    if (!seen.insert(folder).second)
        return;
    Listing listing(folder + ".blockhouse-*.tmp");
    if (!listing.isOpen())
        return;
    do {
        const std::string path = folder + listing.name();
        const std::optional<std::uint64_t> process = processOfTemporary(listing.name());
        if (process && hasEnded(static_cast<DWORD>(*process)) && isOlderThanADay(path))
            ::DeleteFileW(widePath(path).c_str());
    } while (listing.next());
}

} // namespace blockhouse
