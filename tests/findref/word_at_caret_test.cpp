#include "findref/word_at_caret.h"

#include <gtest/gtest.h>

namespace blockhouse {
namespace {

TEST(WordAtCaret, IsWhatStandsBetweenTheSeparators) {
    struct Case {
        const char* textWithCaret; // "|" marks the caret
        std::optional<const char*> word;
    };

    const Case cases[] = {
        {"  Armor = Plated|Hull\r\n  End\r\n", "PlatedHull"},
        {"  Armor = PlatedHull|\r\n  End\r\n", "PlatedHull"},
        {"  Armor = P|latedHull ; x\r\n", "PlatedHull"},
        {"a\r\nEn|d\r\n \r\n", "End"},
        {"  Armor = |PlatedHull\r\n x\r\n", ""},
        {"  Armor =\tPlated|Hull\r\n x\r\n", "=\tPlatedHull"},
        {"|  Armor \r\n", std::nullopt},
        {"Ar|mor \r\n", ""},
        {" Ar|mor", ""},
        {" Ar|mor\r\n", ""},
        {" \nAr|mor x\n", ""},
        {"|", std::nullopt},
    };
    for (const Case& each : cases) {
        std::string text = each.textWithCaret;
        const std::size_t caret = text.find('|');
        text.erase(caret, 1);
        const auto word = wordAtCaret(text, CaretPosition{static_cast<std::ptrdiff_t>(caret)});
        EXPECT_EQ(word.has_value(), each.word.has_value());
        EXPECT_EQ(word.value_or(""), each.word.value_or("")) << each.textWithCaret;
    }
}

} // namespace
} // namespace blockhouse
