#include "platform/system/files.h"

#include "platform/system/directory_entries.h"
#include "platform/text/codepage.h"

#include <algorithm>

namespace blockhouse {

namespace {

constexpr std::string_view anyExtension = ".*";

bool matchesWildcards(std::string_view name, std::string_view pattern) {
    std::size_t inName = 0;
    std::size_t inPattern = 0;
    // After a mismatch the last "*" takes one character more; earlier ones never need another try.
    std::size_t star = std::string_view::npos;
    std::size_t starEnd = 0;
    while (inName < name.size()) {
        const bool more = inPattern < pattern.size();
        if (more && pattern[inPattern] == '*') {
            star = inPattern++;
            starEnd = inName;
        } else if (more && (pattern[inPattern] == '?' ||
                            codepage::lowered(pattern[inPattern]) == codepage::lowered(name[inName]))) {
            ++inPattern;
            ++inName;
        } else if (star != std::string_view::npos) {
            inPattern = star + 1;
            inName = ++starEnd;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', inPattern) == std::string_view::npos;
}

bool comesBefore(const std::string& left, const std::string& right) {
    if (codepage::lessIgnoringCase(left, right))
        return true;
    // Names that differ in case only: a directory hands its entries out in no order at all.
    return !codepage::lessIgnoringCase(right, left) && left < right;
}

} // namespace

bool matchesPattern(std::string_view name, std::string_view pattern) {
    if (pattern.empty() || matchesWildcards(name, pattern))
        return true;
    return pattern.ends_with(anyExtension) &&
           matchesWildcards(name, pattern.substr(0, pattern.size() - anyExtension.size()));
}

bool isSameFile(const std::string& path, const std::string& other) {
    const std::optional<FileStamp> one = stampOf(path);
    const std::optional<FileStamp> two = stampOf(other);
    return path == other || (one && two && one->file != 0 && one->volume == two->volume && one->file == two->file);
}

Result<std::string> readWholeFile(const std::string& path, std::size_t limit) {
    Result<StampedBytes> read = readStampedFile(path, limit);
    if (!read)
        return read.error();
    return std::move(read).value().bytes;
}

Result<Done> replaceWholeFile(const std::string& path, std::string_view bytes) {
    const Result<Replaced> replaced = replaceKnownFile(path, bytes, std::nullopt);
    if (!replaced)
        return replaced.error();
    return Done{};
}

Result<std::vector<std::string>> fileNamesIn(const std::string& directory, std::string_view pattern) {
    Result<std::vector<std::string>> listed = fileEntriesOf(directory);
    if (!listed)
        return listed;
    std::vector<std::string> names = std::move(listed).value();
    std::erase_if(names, [pattern](const std::string& name) { return !matchesPattern(name, pattern); });
    std::sort(names.begin(), names.end(), comesBefore);
    return names;
}

Result<std::vector<std::string>> folderNamesIn(const std::string& directory) {
    Result<std::vector<std::string>> listed = folderEntriesOf(directory);
    if (!listed)
        return listed;
    std::vector<std::string> names = std::move(listed).value();
    std::sort(names.begin(), names.end(), comesBefore);
    std::stable_partition(names.begin(), names.end(), [](const std::string& name) { return !name.starts_with('.'); });
    return names;
}

} // namespace blockhouse
