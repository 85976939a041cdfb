#include "editor/navigation.h"

#include "editor/name_search.h"
#include "platform/text/codepage.h"
#include "platform/text/FoldedSearch.h"

#include <unordered_set>

namespace blockhouse {

namespace {

constexpr std::string_view lineBreaks = "\r\n";

bool isLineBreak(char c) {
    return lineBreaks.find(c) != std::string_view::npos;
}

// The line-break character before the next header of the kind; it may itself stand at `start`.
TextPosition nextHeader(std::string_view text, HeaderKind kind, TextPosition start) {
    const FoldedSearch keyword(headerKeyword(kind));
    std::size_t at = keyword.find(text, offsetOf(start) + 1);
    while (at != FoldedSearch::npos && !isLineBreak(text[at - 1])) {
        at = keyword.find(text, at + 1);
    }
    return at == FoldedSearch::npos ? notFound : positionOf(at - 1);
}

} // namespace

TextPosition headerPosition(std::string_view fileText, HeaderKind kind, std::string_view name) {
    if (kind == HeaderKind::None) {
        return notFound;
    }
    const FoldedSearch header(std::string(headerKeyword(kind)).append(name));
    for (std::size_t at = header.find(fileText, 1); at != FoldedSearch::npos; at = header.find(fileText, at + 1)) {
        const std::size_t after = at + header.needleSize();
        if (after < fileText.size() && isLineBreak(fileText[after]) && isLineBreak(fileText[at - 1])) {
            return positionOf(at - 1);
        }
    }
    return notFound;
}

TextPosition blockEnd(std::string_view text, HeaderKind kind, TextPosition start) {
    const bool hasSettings = kind != HeaderKind::None && kind != HeaderKind::SkirmishBuildList;
    const TextPosition next = hasSettings ? nextHeader(text, kind, start) : start;
    const std::string_view upToNext = next.found() ? text.substr(0, static_cast<std::size_t>(next.value)) : text;
    return positionOf(FoldedSearch("end").findLast(upToNext));
}

std::vector<SettingEntry> settingsOf(std::string_view text, HeaderKind kind, TextPosition start,
                                     std::span<const std::string> jumps) {
    std::vector<SettingEntry> settings;
    const std::vector<TextPosition> found = firstOccurrences(text, jumps, start, blockEnd(text, kind, start));
    std::unordered_set<std::string> listed;
    for (std::size_t i = 0; i < jumps.size(); ++i) {
        if (found[i].found()) {
            const bool isFirst = listed.insert(codepage::lowered(jumps[i])).second;
            settings.push_back({jumps[i], isFirst ? found[i] : notFound});
        }
    }
    return settings;
}

} // namespace blockhouse
