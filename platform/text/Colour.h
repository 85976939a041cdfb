// Colours as 32-bit integers, 0x00BBGGRR: red in the lowest byte, then green, then blue.
#pragma once

#include <cstdint>

namespace blockhouse {

using Colour = std::int32_t;

[[nodiscard]] constexpr Colour rgb(int red, int green, int blue) {
    return blue * 65536 + green * 256 + red;
}

[[nodiscard]] constexpr int redOf(Colour colour) {
    return colour & 0xFF;
}

[[nodiscard]] constexpr int greenOf(Colour colour) {
    return (colour >> 8) & 0xFF;
}

[[nodiscard]] constexpr int blueOf(Colour colour) {
    return (colour >> 16) & 0xFF;
}

// What text looks like before anything colours it.
inline constexpr Colour defaultTextColour = rgb(0, 0, 0);
inline constexpr Colour defaultBackground = rgb(255, 255, 255);

struct ColourPair {
    Colour text = defaultTextColour;
    Colour background = defaultBackground;

    bool operator==(const ColourPair&) const = default;
};

} // namespace blockhouse
