#include "editor/find_rules.h"

#include "platform/text/FoldedSearch.h"

namespace blockhouse {

std::string searchString(std::string_view text, bool wholeWord) {
    std::string searched(text);
    if (wholeWord && !text.empty()) {
        searched += ' ';
    }
    return searched;
}

std::vector<TextRange> replaceableRanges(std::string_view document, std::string_view text, bool wholeWord) {
    const FoldedSearch search(searchString(text, wholeWord));
    std::vector<TextRange> ranges;
    for (std::size_t at = search.find(document); at != FoldedSearch::npos;
         at = search.find(document, at + text.size())) {
        ranges.push_back({static_cast<std::ptrdiff_t>(at), static_cast<std::ptrdiff_t>(text.size())});
    }
    return ranges;
}

} // namespace blockhouse
