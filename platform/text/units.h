// Strong types for the quantities that are easily mixed up: a number of one kind cannot be passed for another.
#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <string_view>
#include <type_traits>

namespace blockhouse {

template <typename Type>
concept PlainInteger = std::integral<Type> && !std::same_as<std::remove_cv_t<Type>, bool>;

template <typename Type>
concept PlainNumber = PlainInteger<Type> || std::floating_point<Type>;

// A place in a row of things of one kind: the number of those before it. A plain integer is taken for such a number,
// and a plain integer added to a place gives a place; the difference of two places is a plain count. Places of
// different kinds do not mix, and a place becomes an integer only where that is asked for.
template <typename Kind>
class CountedFromZero {
public:
    constexpr CountedFromZero() = default;

    template <PlainInteger Integer>
    constexpr CountedFromZero(Integer before) // NOLINT(google-explicit-constructor)
        : value(static_cast<std::ptrdiff_t>(before)) {}

    template <PlainNumber Number>
    [[nodiscard]] constexpr explicit operator Number() const {
        return static_cast<Number>(value);
    }

    constexpr CountedFromZero& operator++() { return ++value, *this; }

    constexpr CountedFromZero& operator--() { return --value, *this; }

    template <PlainInteger Integer>
    constexpr CountedFromZero& operator+=(Integer count) {
        return *this = *this + count;
    }

    template <PlainInteger Integer>
    constexpr CountedFromZero& operator-=(Integer count) {
        return *this = *this - count;
    }

    constexpr bool operator==(const CountedFromZero&) const = default;
    auto operator<=>(const CountedFromZero&) const = default;

    template <PlainInteger Integer>
    friend constexpr bool operator==(CountedFromZero place, Integer before) {
        return place == CountedFromZero(before);
    }

    template <PlainInteger Integer>
    friend constexpr auto operator<=>(CountedFromZero place, Integer before) {
        return place <=> CountedFromZero(before);
    }

    template <PlainInteger Integer>
    friend constexpr CountedFromZero operator+(CountedFromZero place, Integer count) {
        return place.value + static_cast<std::ptrdiff_t>(count);
    }

    template <PlainInteger Integer>
    friend constexpr CountedFromZero operator+(Integer count, CountedFromZero place) {
        return place + count;
    }

    template <PlainInteger Integer>
    friend constexpr CountedFromZero operator-(CountedFromZero place, Integer count) {
        return place.value - static_cast<std::ptrdiff_t>(count);
    }

    friend constexpr std::ptrdiff_t operator-(CountedFromZero left, CountedFromZero right) {
        return left.value - right.value;
    }

    template <typename Stream>
    friend Stream& operator<<(Stream& stream, CountedFromZero place) {
        stream << place.value;
        return stream;
    }

    std::ptrdiff_t value = 0;
};

// Position of a character in a file's text, one character per byte, counted from 1. 0 means "nothing found".
struct TextPosition {
    std::ptrdiff_t value = 0;

    [[nodiscard]] constexpr bool found() const { return value > 0; }

    auto operator<=>(const TextPosition&) const = default;
};

inline constexpr TextPosition notFound{0};

// Offset of a character from the start of a string that holds the text, for a position that is found.
[[nodiscard]] constexpr std::size_t offsetOf(TextPosition position) {
    return static_cast<std::size_t>(position.value - 1);
}

// notFound for the npos of a search.
[[nodiscard]] constexpr TextPosition positionOf(std::size_t offset) {
    return offset == std::string_view::npos ? notFound : TextPosition{static_cast<std::ptrdiff_t>(offset) + 1};
}

// Position of the caret or of a character in the rich-text box: the number of characters before it.
using CaretPosition = CountedFromZero<struct CharacterKind>;

// The caret that stands just after the character at `position`.
[[nodiscard]] constexpr CaretPosition caretAfter(TextPosition position) {
    return position.value;
}

// `length` characters from `start` on, counted from 0.
struct TextRange {
    std::ptrdiff_t start = 0;
    std::ptrdiff_t length = 0;

    bool operator==(const TextRange&) const = default;
};

// `length` characters, the first of which is the one at `position`.
[[nodiscard]] constexpr TextRange rangeAt(TextPosition position, std::ptrdiff_t length) {
    return {position.value - 1, length};
}

// Line of the rich-text box: the number of lines before it.
using LineIndex = CountedFromZero<struct LineKind>;

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
