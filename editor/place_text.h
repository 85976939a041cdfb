// What tells where in a text the caret is.
#pragma once

#include "editor/block_structure.h"
#include "platform/text/units.h"

#include <string>
#include <string_view>

namespace blockhouse {

// "Ln 12, Col 5  Object Tower > Body = Stone": line and column counted from 1, and the lines that open the blocks
// around `place`, outermost first, without their comments. `region` and `place` are as in block_structure.h; the line's
// number is that in the whole text.
[[nodiscard]] std::string placeText(LineIndex line, std::ptrdiff_t column, const BlockStructure& structure,
                                    std::string_view region, std::ptrdiff_t place);

} // namespace blockhouse
