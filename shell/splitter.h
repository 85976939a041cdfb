// How wide the panel at the main window's right edge becomes while its left edge is dragged.
#pragma once

#include "platform/text/units.h"

namespace blockhouse {

// Where the main window is, its frame included.
struct OuterSpan {
    Twips left;
    Twips width;
};

// The distance from the cursor to the window's right edge, but at least 150 twips and at most half the window's width
// rounded to the nearest whole twip (halves to the even one).
[[nodiscard]] Twips panelWidthAt(Pixels cursorX, OuterSpan window, double twipsPerScreenPixel);

} // namespace blockhouse
