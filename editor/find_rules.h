// What the find panel looks for, and what its "Replace All" replaces.
#pragma once

#include "platform/text/units.h"

#include <string>
#include <string_view>
#include <vector>

namespace blockhouse {

// The text to find; a whole word is one that a blank follows, so the blank is added. Empty, and so found nowhere, for
// an empty `text`.
[[nodiscard]] std::string searchString(std::string_view text, bool wholeWord);

// Every place that stepping through `document` from its start finds, in order, without the added blank. Each search
// goes on right after the place before, so that the places do not overlap. Ignores case.
[[nodiscard]] std::vector<TextRange> replaceableRanges(std::string_view document, std::string_view text,
                                                       bool wholeWord);

} // namespace blockhouse
