#include "editor/keyword_scan.h"
#include "editor/keyword_table.h"
#include "tests/editor/random_text.h"

#include <gtest/gtest.h>

#include <ostream>
#include <set>

namespace blockhouse {

void PrintTo(const TextRange& range, std::ostream* out) {
    *out << range.start << '+' << range.length;
}

namespace {

std::vector<TextRange> scanWhole(const std::vector<std::string>& words, std::string_view text) {
    std::vector<TextRange> found;
    KeywordScan(words).scan(text, 0, text.size(), found);
    return found;
}

// The text's characters, with "." for those that no occurrence covers.
std::string covered(const std::vector<TextRange>& ranges, const std::string& text) {
    std::string result(text.size(), '.');
    for (const TextRange& range : ranges) {
        const auto start = static_cast<std::size_t>(range.start);
        const auto length = static_cast<std::size_t>(range.length);
        result.replace(start, length, text, start, length);
    }
    return result;
}

bool isWordCharacter(char c) {
    return std::string("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_").find(c) != std::string::npos;
}

std::vector<TextRange> searchedWordByWord(const std::vector<std::string>& words, const std::string& text) {
    std::set<std::pair<std::size_t, std::size_t>> found;
    for (const std::string& word : words) {
        if (word.find_first_not_of(' ') == std::string::npos) {
            continue;
        }
        for (std::size_t i = 0; i + word.size() <= text.size();) {
            const std::size_t after = i + word.size();
            const bool alone =
                (i == 0 || !isWordCharacter(text[i - 1])) && (after == text.size() || !isWordCharacter(text[after]));
            if (alone && text.substr(i, word.size()) == word) {
                found.insert({i, word.size()});
                i = after;
            } else {
                ++i;
            }
        }
    }
    std::vector<TextRange> ranges;
    for (const auto& [start, length] : found) {
        ranges.push_back({static_cast<std::ptrdiff_t>(start), static_cast<std::ptrdiff_t>(length)});
    }
    return ranges;
}

TEST(KeywordScan, ColoursKeywordsOfTheTable) {
    const struct {
        const char* text;
        const char* expected;
    } cases[] = {
        {"", ""},
        {"End\r\nEND\r\nend", "End..END....."},
        {"Object Foo object Foo", "Object..............."},
        {"WeaponSet WeaponSets Weapon2 Weapon_ aWeapon", "WeaponSet..................................."},
        {"Weapon = X (Weapon) Weapon-1", "Weapon......Weapon..Weapon.."},
        {"SpecialPower FXList Specialpower Fxlist", "....................Specialpower.Fxlist"},
        {"Behavior = ModuleTag ; Body here \"Turret\"", "Behavior...............Body.......Turret."},
        {"\xC4"
         "End\xE9",
         ".End."},
        {"AliasConditionState,DefaultConditionState", "AliasConditionState.DefaultConditionState"},
    };

    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(covered(scanWhole(KeywordList(), text), text), expected) << text;
    }
    EXPECT_EQ(covered(scanWhole(KeywordList(), std::string_view("End\0END", 7)), std::string("End\0END", 7)),
              "End.END");
}

TEST(KeywordScan, TableHoldsEighteenWordsEachFoundByItself) {
    EXPECT_EQ(KeywordList().size(), 18U);
    for (const std::string& keyword : KeywordList()) {
        EXPECT_EQ(covered(scanWhole(KeywordList(), keyword), keyword), keyword);
    }
}

TEST(KeywordScan, WordsOfOtherCharacters) {
    const struct {
        std::vector<std::string> words;
        const char* text;
        const char* expected;
    } cases[] = {
        {{"--"}, "---- --- a-- --", "----.--......--"},
        {{"- -"}, "- - - -", "- -.- -"},
        {{" a "}, "x a - a -", "..... a ."},
        {{"", "  "}, "-  -", "...."},
        {{" a"}, "- a b", ". a.."},
        {{"a b", "a"}, "a b a", "a b.a"},
        {{"End", "End"}, "End", "End"},
    };

    for (const auto& [words, text, expected] : cases) {
        EXPECT_EQ(covered(scanWhole(words, text), text), expected) << text;
    }
}

TEST(KeywordScan, AnySlicingGivesWhatSearchingWordByWordGives) {
    const std::vector<std::string> pool = {"End", "END", "Weapon", "WeaponSet", "a",    "a b", "--", "- -",
                                           "-a-", "a_a", " End",   "   ",       "\n\n", "1",   "",   "a-a"};
    const std::vector<std::string> fragments = {"End", "END",  "Weapon", "WeaponSet", "Set", "a", "b",
                                                "-",   "--",   " ",      "\n",        "\r",  ";", "_",
                                                "1",   "\xE9", "= ",     "a-a",       "- "};
    std::mt19937 random(7);
    for (int round = 0; round < 4000; ++round) {
        std::vector<std::string> words;
        for (std::size_t left = 1 + randomBelow(random, 5); left > 0; --left) {
            words.push_back(pool[randomBelow(random, pool.size())]);
        }
        const std::string text = randomText(random, fragments, 30);

        const KeywordScan scan(words);
        std::vector<TextRange> found;
        for (std::size_t begin = 0; begin < text.size();) {
            const std::size_t end = std::min(text.size(), begin + 1 + randomBelow(random, 12));
            scan.scan(text, begin, end, found);
            begin = end;
        }
        const std::vector<TextRange> expected = searchedWordByWord(words, text);
        ASSERT_EQ(found, expected) << testing::PrintToString(text) << testing::PrintToString(words);
        ASSERT_EQ(scanWhole(words, text), expected) << testing::PrintToString(text);
    }
}

} // namespace
} // namespace blockhouse
