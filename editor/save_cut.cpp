#include "editor/save_cut.h"

#include "platform/text/FoldedSearch.h"

namespace blockhouse {

std::string_view textToWrite(std::string_view text) {
    const FoldedSearch blockEnd("end");
    const std::size_t last = blockEnd.findLast(text);
    return last == FoldedSearch::npos ? text : text.substr(0, last + blockEnd.needleSize() + 1);
}

} // namespace blockhouse
