#include "editor/save_cut.h"

#include "platform/text/FoldedSearch.h"

namespace blockhouse {
namespace {

constexpr std::string_view blanksAndLineEnds = " \t\r\n\v\f";

// A CR LF is one end of a line, and so is either alone.
std::size_t lineEndsIn(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] == '\n' || (text[i] == '\r' && !text.substr(i + 1).starts_with('\n')))
            ++count;
    return count;
}

} // namespace

std::string_view textToWrite(std::string_view text) {
    const FoldedSearch blockEnd("end");
    const std::size_t last = blockEnd.findLast(text);
    return last == FoldedSearch::npos ? text : text.substr(0, last + blockEnd.needleSize() + 1);
}

std::optional<LeftOut> leftOutOf(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanksAndLineEnds, textToWrite(text).size());
    if (first == std::string_view::npos)
        return std::nullopt;
    const std::size_t last = text.find_last_not_of(blanksAndLineEnds);
    return LeftOut{last + 1 - first, 1 + lineEndsIn(text.substr(0, first))};
}

} // namespace blockhouse
