// Gives the tail of every line a background colour by rewriting Rich Text Format source, without a selection made.
#pragma once

#include <string>
#include <string_view>

namespace blockhouse {

// On every line of `rtfSource` (lines are separated by CR LF) the text from the first `delimiter` to the end of the
// line is put between "\highlight<colourIndex> " and "\highlight0 ". A line is kept as it is if an odd number of
// double quotes stands before its first delimiter (later ones are not looked at), or if it begins "\par \'af".
// Header lines are treated like any other. Linear, with one allocation of the result's size.
[[nodiscard]] std::string highlightFromDelimiter(std::string_view rtfSource, char delimiter, int colourIndex);

} // namespace blockhouse
