#include "editor/find_rules.h"

#include "platform/text/FoldedSearch.h"

#include <algorithm>

namespace blockhouse {

std::string searchString(std::string_view text, bool wholeWord) {
    std::string searched(text);
    if (wholeWord && !text.empty()) {
        searched += ' ';
    }
    return searched;
}

namespace {

// Calls visit(start) for every place, in order.
template <typename Visit>
void forEachPlace(std::string_view document, std::string_view text, bool wholeWord, Visit visit) {
    const FoldedSearch search(searchString(text, wholeWord));
    for (std::size_t at = search.find(document); at != FoldedSearch::npos; at = search.find(document, at + text.size()))
        visit(at);
}

} // namespace

std::vector<TextRange> replaceableRanges(std::string_view document, std::string_view text, bool wholeWord) {
    std::vector<TextRange> ranges;
    forEachPlace(document, text, wholeWord, [&](std::size_t at) {
        ranges.push_back({static_cast<std::ptrdiff_t>(at), static_cast<std::ptrdiff_t>(text.size())});
    });
    return ranges;
}

Occurrences::Occurrences(std::string_view document, std::string_view text, bool wholeWord) {
    forEachPlace(document, text, wholeWord,
                 [this](std::size_t at) { starts_.push_back(static_cast<std::uint32_t>(at)); });
}

std::optional<Occurrences::Step> Occurrences::next(CaretPosition from) const {
    if (starts_.empty())
        return std::nullopt;
    const auto found =
        std::partition_point(starts_.begin(), starts_.end(), [from](std::uint32_t start) { return from > start; });
    if (found == starts_.end())
        return Step{starts_.front(), 1, true};
    return Step{*found, static_cast<std::size_t>(found - starts_.begin()) + 1, false};
}

std::optional<Occurrences::Step> Occurrences::previous(CaretPosition from) const {
    if (starts_.empty())
        return std::nullopt;
    const std::size_t before = numberAt(from - 1);
    if (before == 0)
        return Step{starts_.back(), starts_.size(), true};
    return Step{starts_[before - 1], before, false};
}

std::size_t Occurrences::numberAt(CaretPosition start) const {
    const auto behind =
        std::partition_point(starts_.begin(), starts_.end(), [start](std::uint32_t each) { return start >= each; });
    return static_cast<std::size_t>(behind - starts_.begin());
}

std::optional<CaretPosition> nearestOccurrence(std::string_view document, std::string_view text, CaretPosition from) {
    if (text.empty())
        return std::nullopt;
    const FoldedSearch search(text);
    const auto size = static_cast<std::ptrdiff_t>(document.size());
    const std::size_t place = static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(from.value, 0, size));
    const std::size_t behind = search.find(document, place);
    // As far as a text reaches that starts before the place.
    const std::size_t before = search.findLast(document.substr(0, std::min(place + text.size() - 1, document.size())));
    if (behind == FoldedSearch::npos && before == FoldedSearch::npos)
        return std::nullopt;
    if (behind == FoldedSearch::npos || (before != FoldedSearch::npos && place - before <= behind - place))
        return before;
    return behind;
}

} // namespace blockhouse
