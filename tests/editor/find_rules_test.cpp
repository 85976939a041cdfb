#include "editor/find_rules.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace blockhouse
