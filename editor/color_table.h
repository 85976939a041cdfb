// The colours that Rich Text Format source numbers.
#pragma once

#include "platform/text/Colour.h"

#include <string_view>
#include <vector>

namespace blockhouse {

// Element k is the colour that the source calls by index k. Element 0 is always there and always 0, whatever the
// table's own first entry holds. An empty entry (";;") after the first is left out, so that later ones move down.
// Words that are missing or hold no number count as 0. Reads no further than the end of the table.
[[nodiscard]] std::vector<Colour> readColorTable(std::string_view rtfSource);

} // namespace blockhouse
