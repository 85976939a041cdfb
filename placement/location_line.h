// Coordinates as the placement editor shows them and writes them into the AI data file.
#pragma once

#include "placement/canvas_units.h"
#include "platform/text/units.h"

#include <cstddef>
#include <optional>
#include <string>

namespace blockhouse {

// "x: 412.50 y: 78.25"
//
// Here and below a coordinate, which must be finite, has at least one digit before the "." and two after it, in any
// locale. Its exact value is rounded, halves away from zero; what rounds to zero has no sign.
[[nodiscard]] std::string statusText(CanvasPoint point);

// "Location = X:412.50 Y:78.25"
[[nodiscard]] std::string locationLine(CanvasPoint point);

// A part of the text and what it was replaced by.
struct ReplacedLine {
    std::size_t start; // 0-based
    std::string before;
    std::string after;
};

// Puts locationLine(point) in the place of what runs from `position` (of a structure's "location = x:") to the end of
// that line, without the line end itself, or to the end of the text where no line end follows. Lines end as in the
// scan that gave the position. Nothing, with the text unchanged, for a position outside it.
[[nodiscard]] std::optional<ReplacedLine> replaceLocation(std::string& text, TextPosition position, CanvasPoint point);

} // namespace blockhouse
