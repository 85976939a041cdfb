// The colours by which the placement canvas tells kinds of structures apart.
#pragma once

#include "platform/text/Colour.h"

#include <string_view>

namespace blockhouse {

// The colour of a structure by the words its name holds, in any case; the last of the table's words that it holds
// decides. Black when it holds none.
[[nodiscard]] Colour Getcolord(std::string_view what);

// What the colours mean, a line each; every line ends in CR LF.
inline constexpr std::string_view colourLegend = "black = CommandCenter\r\n"
                                                 "Blue = Power Plants\r\n"
                                                 "Yellow = Production buildings\r\n"
                                                 "green = Incoming gathering\r\n"
                                                 "White = Techbuilding\r\n"
                                                 "orange = Superweapons\r\n"
                                                 "red = Base defenses\r\n";

} // namespace blockhouse
