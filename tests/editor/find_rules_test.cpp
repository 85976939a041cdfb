#include "editor/find_rules.h"
#include "platform/text/codepage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace blockhouse {
namespace {

TEST(FindRules, ReplaceAllTakesWhatSteppingFinds) {
    const struct {
        std::string document;
        std::string text;
        bool wholeWord;
        std::vector<std::ptrdiff_t> expected; // where they start
    } cases[] = {
        {"End end WeaponEND.", "end", false, {0, 4, 14}},
        {"End end WeaponEND .End", "end", true, {0, 4, 14}},
        {"aaaaa", "aa", false, {0, 2}},
        {" a a a", " a", true, {0, 2}}, // the blank that the first one needs begins the second
        {"\xC9t\xE9", "\xE9", false, {0, 2}},
        {"a b ", "", false, {}},
        {"a b ", "", true, {}},
        {"", "a", false, {}},
    };

    for (const auto& [document, text, wholeWord, expected] : cases) {
        std::vector<std::ptrdiff_t> starts;
        for (const TextRange& range : replaceableRanges(document, text, wholeWord)) {
            starts.push_back(range.start);
            EXPECT_EQ(range.length, static_cast<std::ptrdiff_t>(text.size()));
        }
        EXPECT_EQ(starts, expected) << document << " for " << text;
    }
}

std::string told(const std::optional<Occurrences::Step>& step) {
    if (!step)
        return "none";
    return std::to_string(step->start.value) + " #" + std::to_string(step->number) + (step->wentRound ? " round" : "");
}

TEST(FindRules, StepsGoRoundTheEndsAndKnowTheirNumber) {
    const struct {
        std::string document;
        std::string text;
        std::ptrdiff_t from;
        std::string next;
        std::string previous;
    } cases[] = {
        {"ab Ab aB", "ab", 0, "0 #1", "6 #3 round"}, {"ab Ab aB", "ab", 1, "3 #2", "0 #1"},
        {"ab Ab aB", "ab", 3, "3 #2", "0 #1"},       {"ab Ab aB", "ab", 4, "6 #3", "3 #2"},
        {"ab Ab aB", "ab", 8, "0 #1 round", "6 #3"}, {"ab Ab aB", "ab", 99, "0 #1 round", "6 #3"},
        {"aaaaa", "aa", 1, "2 #2", "0 #1"},          {"-a", "a", 0, "1 #1", "1 #1 round"},
        {"ab Ab aB", "x", 3, "none", "none"},        {"ab Ab aB", "", 3, "none", "none"},
        {"\xC9t\xE9", "\xE9", 1, "2 #2", "0 #1"},    {"", "a", 0, "none", "none"},
    };

    for (const auto& [document, text, from, next, previous] : cases) {
        const Occurrences places(document, text, false);
        EXPECT_EQ(told(places.next(from)), next) << document << " for " << text << " from " << from;
        EXPECT_EQ(told(places.previous(from)), previous) << document << " for " << text << " before " << from;
    }
    const Occurrences words("End end WeaponEND .End", "end", true);
    EXPECT_EQ(words.count(), 3U);
    EXPECT_EQ(told(words.next(15)), "0 #1 round");
    EXPECT_EQ(words.numberAt(4), 2U);
    EXPECT_EQ(words.numberAt(5), 2U) << "a place of which a search from elsewhere took the second letter";
}

// Tries every place.
std::optional<CaretPosition> slowNearestOccurrence(std::string_view document, std::string_view text,
                                                   std::ptrdiff_t from) {
    std::optional<CaretPosition> nearest;
    for (std::size_t at = 0; !text.empty() && at + text.size() <= document.size(); ++at) {
        const CaretPosition place = at;
        if (codepage::equalIgnoringCase(document.substr(at, text.size()), text) &&
            (!nearest || std::abs(place - CaretPosition(from)) < std::abs(*nearest - CaretPosition(from))))
            nearest = place;
    }
    return nearest;
}

TEST(FindRules, TheNearestPlaceOfATextThatHasMoved) {
    const struct {
        std::string document;
        std::string text;
        std::ptrdiff_t from;
        std::ptrdiff_t expected; // -1 for nowhere
    } cases[] = {
        {"ab..AB", "aB", 0, 0}, {"ab..AB", "ab", 2, 0}, {"ab...AB", "ab", 3, 5}, {"..ab", "ab", 99, 2},
        {"aaaa", "aaa", 1, 1},  {"aaaa", "aaa", 3, 1},  {"ab", "abc", 0, -1},    {"ab", "", 0, -1},
        {"", "a", 5, -1},       {"\xC9", "\xE9", 1, 0}, {"x", "a", 0, -1},
    };

    for (const auto& [document, text, from, expected] : cases) {
        const auto found = nearestOccurrence(document, text, from);
        EXPECT_EQ(found.value_or(-1).value, expected) << document << " for " << text << " from " << from;
    }

    std::mt19937 random(7);
    for (int round = 0; round < 20'000; ++round) {
        std::string document(random() % 200, ' ');
        for (char& each : document)
            each = "abA"[random() % 3];
        const std::string text = std::string("abbabaaabab").substr(random() % 5, 1 + random() % 6);
        const auto from = static_cast<std::ptrdiff_t>(random() % 210);
        // Where it lies is counted from the document's end when the document has become shorter than that.
        const auto within = std::min(from, static_cast<std::ptrdiff_t>(document.size()));
        ASSERT_EQ(nearestOccurrence(document, text, from), slowNearestOccurrence(document, text, within))
            << document << " for " << text << " from " << from;
    }
}

} // namespace
} // namespace blockhouse
