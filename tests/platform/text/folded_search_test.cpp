#include "platform/text/codepage.h"
#include "platform/text/FoldedSearch.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace blockhouse {
namespace {

TEST(FoldedSearch, FindsWholeOccurrencesOnly) {
    EXPECT_EQ(FoldedSearch("").find("abc"), FoldedSearch::npos);
    EXPECT_EQ(FoldedSearch("").findLast("abc"), FoldedSearch::npos);
    EXPECT_EQ(FoldedSearch("abc").find(""), FoldedSearch::npos);
    EXPECT_EQ(FoldedSearch("abc").find("xab"), FoldedSearch::npos);
    EXPECT_EQ(FoldedSearch("abc").find("ABC", 1), FoldedSearch::npos);
    EXPECT_EQ(FoldedSearch("abc").find("ABC", 99), FoldedSearch::npos);
    EXPECT_EQ(FoldedSearch("\xFF\x8A").find("..\x9F\x9A"), 2U); // Y diaeresis, S caron
    // Same bits as the letter before, but not its other case.
    EXPECT_EQ(FoldedSearch("\xFF").find("\xBF\xDF"), FoldedSearch::npos);
    EXPECT_EQ(FoldedSearch("@[").find("`{"), FoldedSearch::npos);
}

TEST(FoldedSearch, AgreesWithSearchInLoweredCopies) {
    std::mt19937 random(20240611);
    const std::string letters = "aAbB\xE9\xC9\x9F\xFF\xBF\n";
    const auto randomText = [&](std::size_t length) {
        std::string text;
        while (text.size() < length)
            text += letters[random() % letters.size()];
        return text;
    };
    for (int round = 0; round < 4000; ++round) {
        const std::string haystack = randomText(random() % 400);
        const std::string needle = randomText(1 + random() % 5);
        const std::size_t from = random() % (haystack.size() + 2);
        const FoldedSearch search(needle);
        const std::string low = codepage::lowered(haystack);
        ASSERT_EQ(search.find(haystack, from), low.find(codepage::lowered(needle), from))
            << needle << " in " << haystack;
        ASSERT_EQ(search.findLast(haystack), low.rfind(codepage::lowered(needle))) << needle << " in " << haystack;
    }
}

// Rare hits: every distance of the hit from a block's bounds, and from both ends of the text.
TEST(FoldedSearch, FindsTheOnlyOccurrenceAnywhere) {
    const FoldedSearch search("needle");
    for (std::size_t length = 6; length < 280; length += 7) {
        for (std::size_t place = 0; place + 6 <= length; ++place) {
            std::string haystack(length, 'n');
            haystack.replace(place, 6, "NeedlE");
            ASSERT_EQ(search.find(haystack), place) << length;
            ASSERT_EQ(search.findLast(haystack), place) << length;
            ASSERT_EQ(search.find(haystack, place + 1), FoldedSearch::npos) << length;
        }
    }
}

} // namespace
} // namespace blockhouse
