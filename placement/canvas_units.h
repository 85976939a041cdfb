// The placement canvas measures in the game's own location units: the origin in its top-left corner, x to the right,
// y downwards, 1000 units either way.
#pragma once

#include "platform/text/units.h"

namespace blockhouse {

struct CanvasUnits {
    float value = 0;

    auto operator<=>(const CanvasUnits&) const = default;
};

struct CanvasPoint {
    CanvasUnits x;
    CanvasUnits y;

    bool operator==(const CanvasPoint&) const = default;
};

[[nodiscard]] constexpr CanvasPoint operator+(CanvasPoint point, CanvasPoint offset) {
    return {{point.x.value + offset.x.value}, {point.y.value + offset.y.value}};
}

inline constexpr double canvasSideInUnits = 1000;
// The inside of the canvas's border, either way: 4.635 twips a unit.
inline constexpr Twips canvasSide{4635};

[[nodiscard]] constexpr Twips toTwips(CanvasUnits units) {
    return {units.value * canvasSide.value / canvasSideInUnits};
}

[[nodiscard]] constexpr CanvasUnits toCanvasUnits(Twips twips) {
    return {static_cast<float>(twips.value * canvasSideInUnits / canvasSide.value)};
}

// A mark has the same size on the screen whatever the canvas's units are.
inline constexpr Twips markWidth{135};
inline constexpr Twips markHeight{255};

// From a mark's top-left corner to that of its label.
inline constexpr CanvasPoint labelOffset{{-20}, {-40}};

} // namespace blockhouse
