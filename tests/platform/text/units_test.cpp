#include "platform/text/units.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace blockhouse {
namespace {

template <typename To, typename From>
constexpr bool takes = std::is_convertible_v<From, To>;

// What counts from 1, what counts something else, and what counts nothing is not taken for a caret position.
static_assert(takes<CaretPosition, int> && takes<CaretPosition, std::size_t> && takes<CaretPosition, std::ptrdiff_t>);
static_assert(!std::is_constructible_v<CaretPosition, TextPosition>);
static_assert(!std::is_constructible_v<CaretPosition, LineIndex>);
static_assert(!std::is_constructible_v<CaretPosition, bool> && !std::is_constructible_v<CaretPosition, double>);
// Nor does it become an integer, or a truth, unasked.
static_assert(!takes<std::ptrdiff_t, CaretPosition> && !takes<int, CaretPosition> &&
              !takes<TextPosition, CaretPosition>);
static_assert(std::is_constructible_v<std::ptrdiff_t, CaretPosition> && std::is_constructible_v<double, CaretPosition>);
static_assert(!std::is_constructible_v<bool, CaretPosition>);

template <typename Left, typename Right>
concept Comparable = requires(Left left, Right right) {
    left == right;
};

template <typename Left, typename Right>
concept Addable = requires(Left left, Right right) {
    left + right;
};

static_assert(Comparable<CaretPosition, CaretPosition> && Comparable<unsigned, CaretPosition>);
static_assert(!Comparable<CaretPosition, TextPosition> && !Comparable<CaretPosition, LineIndex>);
static_assert(Addable<CaretPosition, int> && !Addable<CaretPosition, CaretPosition>);

TEST(Units, APlaceCountedFromZeroIsUsedLikeAnInteger) {
    CaretPosition place = 5;
    EXPECT_EQ(place, 5);
    EXPECT_EQ(std::size_t{5}, place);
    EXPECT_NE(place, -1);
    EXPECT_LT(place, 6U);
    EXPECT_GT(6, place);
    EXPECT_LE(place, CaretPosition(5));
    EXPECT_EQ(place + 3, 8);
    EXPECT_EQ(3U + place, 8);
    EXPECT_EQ(place - 7, -2) << "below any text, but told apart from its start";
    EXPECT_EQ(++place, 6);
    place += std::size_t{4};
    place -= 3;
    EXPECT_EQ(--place, 6);
    EXPECT_EQ(static_cast<int>(place), 6);
    static_assert(std::is_same_v<decltype(place - 2U), CaretPosition>);
    static_assert(std::is_same_v<decltype(place - place), std::ptrdiff_t>);
    EXPECT_EQ(place - CaretPosition(8), -2);
    EXPECT_EQ(testing::PrintToString(place), "6");
}

TEST(Units, AConversionSaysWhatItCountsFrom) {
    const std::string text = "ab;";
    const TextPosition semicolon = positionOf(text.find(';'));
    EXPECT_EQ(semicolon, TextPosition{3});
    EXPECT_EQ(text[offsetOf(semicolon)], ';');
    EXPECT_EQ(caretAfter(semicolon), 3);
    EXPECT_EQ(rangeAt(semicolon, 1), (TextRange{2, 1}));
    EXPECT_EQ(positionOf(text.find('x')), notFound);
}

} // namespace
} // namespace blockhouse
