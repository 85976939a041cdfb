// Strong types for the quantities that are easily mixed up: a number of one kind cannot be passed for another.
#pragma once

#include <compare>
#include <cstddef>
#include <string_view>

namespace blockhouse {

// Position of a character in a file's text, one character per byte, counted from 1. 0 means "nothing found".
struct TextPosition {
    std::ptrdiff_t value = 0;

    [[nodiscard]] constexpr bool found() const { return value > 0; }

    auto operator<=>(const TextPosition&) const = default;
};

inline constexpr TextPosition notFound{0};

// The position of the character at a 0-based offset, as searches give it: npos is notFound.
[[nodiscard]] constexpr TextPosition positionOf(std::size_t offset) {
    return offset == std::string_view::npos ? notFound : TextPosition{static_cast<std::ptrdiff_t>(offset) + 1};
}

// And back; only for a position that is found().
[[nodiscard]] constexpr std::size_t offsetOf(TextPosition position) {
    return static_cast<std::size_t>(position.value - 1);
}

// Position of the caret in the rich-text box: the number of characters before it, so counted from 0.
struct CaretPosition {
    std::ptrdiff_t value = 0;

    auto operator<=>(const CaretPosition&) const = default;
};

// The caret that stands just after the character at `position`.
[[nodiscard]] constexpr CaretPosition caretAfter(TextPosition position) {
    return {position.value};
}

// `length` characters from `start` on, counted from 0.
struct TextRange {
    std::ptrdiff_t start = 0;
    std::ptrdiff_t length = 0;

    bool operator==(const TextRange&) const = default;
};

// Line of the rich-text box, counted from 0.
struct LineIndex {
    std::ptrdiff_t value = 0;

    auto operator<=>(const LineIndex&) const = default;
};

// Logical pixels: what the toolkit measures in. A display at 200 % draws each as 2 x 2 dots.
struct Pixels {
    int value = 0;

    auto operator<=>(const Pixels&) const = default;
};

// 1/1440 inch, the unit of the windows' design measures.
struct Twips {
    double value = 0;

    auto operator<=>(const Twips&) const = default;
};

inline constexpr double twipsPerPixel = 15;

[[nodiscard]] constexpr Twips toTwips(Pixels pixels) {
    return {pixels.value * twipsPerPixel};
}

// Rounded to the nearest pixel, halves away from zero.
[[nodiscard]] constexpr Pixels toPixels(Twips twips) {
    const double pixels = twips.value / twipsPerPixel;
    return {static_cast<int>(pixels < 0 ? pixels - 0.5 : pixels + 0.5)};
}

} // namespace blockhouse
