#include "findref/word_at_caret.h"

#include <gtest/gtest.h>

namespace blockhouse {
namespace {

TEST(WordAtCaret, IsWhatStandsBetweenTheSeparators) {
    struct Case {
        const char* textWithCaret; // "|" marks the caret
        const char* word;
    };

    const Case cases[] = {
        {"  Armor = Plated|Hull\r\n  End\r\n", "PlatedHull"},
        {"  Armor = PlatedHull|\r\n  End\r\n", "PlatedHull"},
        {"  Armor = P|latedHull ; x\r\n", "PlatedHull"},
        {"a\r\nEn|d\r\n \r\n", "End"},
        {"  Armor = |PlatedHull\r\n x\r\n", ""},
        {"  Armor =\tPlated|Hull\r\n x\r\n", "=\tPlatedHull"},
        {"|  Armor \r\n", ""},
        {"Ar|mor \r\n", ""},
        {" Ar|mor", ""},
        {" Ar|mor\r\n", ""},
        {" \nAr|mor x\n", ""},
        {"|", ""},
    };
    for (const Case& each : cases) {
        std::string text = each.textWithCaret;
        const std::size_t caret = text.find('|');
        text.erase(caret, 1);
        EXPECT_EQ(wordAtCaret(text, CaretPosition{static_cast<std::ptrdiff_t>(caret)}), each.word)
            << each.textWithCaret;
    }
}

} // namespace
} // namespace blockhouse
