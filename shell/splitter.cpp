#include "shell/splitter.h"

#include <cmath>

namespace blockhouse {

Twips panelWidthAt(Pixels cursorX, OuterSpan window, double twipsPerScreenPixel) {
    constexpr double narrowest = 150;
    const double limit = std::nearbyint(window.width.value / 2);
    const double width = window.left.value + window.width.value - cursorX.value * twipsPerScreenPixel;
    // In this order, not clamped: in a window narrower than twice the minimum the minimum wins.
    if (width <= narrowest)
        return {narrowest};
    return {width >= limit ? limit : width};
}

} // namespace blockhouse
