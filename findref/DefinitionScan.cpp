#include "findref/DefinitionScan.h"

#include <algorithm>
#include <optional>

namespace blockhouse {
namespace {

constexpr std::string_view blanks = " \t";
constexpr std::string_view lineEnds = "\r\n";
constexpr std::string_view noPartOfAName = " \t=;\r\n";

// The word that begins the line of `at` and leads to it, if nothing else does.
std::optional<std::string_view> keywordBefore(std::string_view text, std::size_t at) {
    const std::size_t wordEnd = text.substr(0, at).find_last_not_of(blanks);
    if (wordEnd == text.npos || wordEnd + 1 == at)
        return std::nullopt;
    const std::size_t before = text.substr(0, wordEnd + 1).find_last_of(noPartOfAName);
    const bool beginsLine = before == text.npos || lineEnds.find(text[before]) != text.npos;
    const std::size_t start = before == text.npos ? 0 : before + 1;
    if (!beginsLine || start > wordEnd)
        return std::nullopt;
    return text.substr(start, wordEnd + 1 - start);
}

bool endsLine(std::string_view text, std::size_t at) {
    const std::size_t next = text.find_first_not_of(blanks, at);
    return next == text.npos || text[next] == ';' || lineEnds.find(text[next]) != text.npos;
}

} // namespace

DefinitionScan::DefinitionScan(std::string_view name)
    : name_(name.find_first_of(noPartOfAName) == name.npos ? name : std::string_view()), search_(name_) {}

void DefinitionScan::scan(std::string_view piece, bool isLast, const OnFound& onFound) {
    constexpr std::size_t longestLine = 1'000'000;
    std::string joined;
    std::string_view text = piece;
    if (!begun_.empty()) {
        joined = std::move(begun_) + std::string(piece);
        begun_.clear();
        text = joined;
    }
    // A CR at the very end may be half of a line end, which makes no difference to what stands before it.
    const std::size_t lastEnd = isLast ? text.size() : text.find_last_of(lineEnds);
    std::size_t whole = isLast ? text.size() : lastEnd == text.npos ? 0 : lastEnd + 1;
    std::size_t from = 0;
    if (isInLongLine_) {
        from = std::min(text.find_first_of(lineEnds), text.size());
        isInLongLine_ = from == text.size();
    }
    if (from < whole)
        scanLines(text.substr(from, whole - from), [&](const Found& found) {
            onFound({TextPosition{found.name.value + static_cast<std::ptrdiff_t>(from)}, found.line, found.keyword});
        });
    whole = std::max(whole, from);
    feeds_ += std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(whole), '\n');
    returns_ += std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(whole), '\r');
    offset_ += whole;
    begun_ = text.substr(whole);
    if (begun_.size() > longestLine) {
        offset_ += begun_.size();
        begun_.clear();
        isInLongLine_ = true;
    }
}

void DefinitionScan::scanLines(std::string_view lines, const OnFound& onFound) const {
    for (std::size_t at = search_.find(lines); at != FoldedSearch::npos; at = search_.find(lines, at + 1)) {
        const auto keyword = keywordBefore(lines, at);
        if (!keyword || !endsLine(lines, at + name_.size()))
            continue;
        const std::string_view before = lines.substr(0, at);
        const std::ptrdiff_t feeds = feeds_ + std::count(before.begin(), before.end(), '\n');
        const std::ptrdiff_t returns = returns_ + std::count(before.begin(), before.end(), '\r');
        onFound({positionOf(offset_ + at), (feeds > 0 ? feeds : returns) + 1, std::string(*keyword)});
    }
}

} // namespace blockhouse
