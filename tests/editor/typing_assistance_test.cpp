#include "editor/typing_assistance.h"
#include "tests/editor/random_text.h"
#include "tests/editor/typing_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <tuple>

namespace blockhouse {
namespace {

class BoxView : public TextView {
public:
    explicit BoxView(const ModelBox& box) : box_(box) {}

    [[nodiscard]] std::ptrdiff_t length() const override { return box_.length(); }

    [[nodiscard]] std::string textAt(std::ptrdiff_t start, std::ptrdiff_t length) const override {
        EXPECT_GE(start, 0);
        EXPECT_LE(start + length, box_.length());
        charactersRead += length;
        return box_.text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(length));
    }

    mutable std::ptrdiff_t charactersRead = 0;

private:
    const ModelBox& box_;
};

struct CarryOut {
    ModelBox& box;

    void operator()(const SetSelColor& action) const { box.setSelColor(action.colour); }

    void operator()(const SetTextColor& action) const {
        ASSERT_GE(action.range.length, 0);
        std::fill_n(box.colours.begin() + action.range.start, action.range.length, action.colour);
    }

    void operator()(const SetSelStart& action) const { box.setSelStart(action.caret.value); }

    void operator()(const SetText& action) const {
        box.select(action.range.start, action.range.length);
        box.setSelColor(action.colour);
        box.setSelText(action.text);
    }
};

// A press on the keyboard: the assistance first, then the box.
struct Press {
    Key key;
    std::string text; // that the box inserts
    int move = 0;     // of the caret, to the right
};

Press pressOf(char symbol, const std::string& lineEnd) {
    switch (symbol) {
    case '\t':
        return {Key::Tab, "\t"};
    case ';':
        return {Key::Semicolon, ";"};
    case '\n':
        return {Key::Enter, lineEnd};
    case '<':
        return {Key::Arrow, "", -1};
    case '>':
        return {Key::Arrow, "", 1};
    case '!':
        return {Key::Arrow, ""}; // up on the first line
    case '\b':
        return {Key::Backspace, ""};
    case ' ':
        return {Key::Space, " "};
    case '^':
        return {Key::Other, ""}; // a key that the box has no use for
    default:
        return {Key::Other, std::string(1, symbol)};
    }
}

void letBoxAct(const Press& press, ModelBox& box) {
    if (press.move < 0) {
        box.left();
    } else if (press.move > 0) {
        box.right();
    } else if (press.key == Key::Backspace) {
        box.backspace();
    } else if (!press.text.empty()) {
        box.setSelText(press.text);
    }
}

void pressKey(const Press& press, TypingAssistance& assistance, ModelBox& box) {
    const KeyAnswer answer = assistance.keyPressed(press.key, {box.selStart, box.selLength}, BoxView(box));
    for (const TextBoxAction& action : answer.actions) {
        std::visit(CarryOut{box}, action);
    }
    if (!answer.cancelKey) {
        letBoxAct(press, box);
    }
}

constexpr Colour oldColour = rgb(255, 0, 0);

ModelBox boxOf(const std::string& text) {
    ModelBox box(text);
    box.colours.assign(text.size(), oldColour);
    return box;
}

// "|" is the caret; two of them are a selection.
ModelBox boxWithCaret(std::string text) {
    const std::size_t start = text.find('|');
    text.erase(start, 1);
    const std::size_t end = text.find('|');
    if (end != std::string::npos) {
        text.erase(end, 1);
    }
    ModelBox box = boxOf(text);
    box.select(static_cast<std::ptrdiff_t>(start),
               end == std::string::npos ? 0 : static_cast<std::ptrdiff_t>(end - start));
    return box;
}

// The text with the name of each colour where it begins; the text begins in the old colour.
std::string shown(const ModelBox& box) {
    const std::map<Colour, std::string> names = {
        {0, "[0]"}, {0xFF0000, "[blue]"}, {0x8000, "[green]"}, {oldColour, "[old]"}};
    std::string result;
    Colour last = oldColour;
    for (std::size_t i = 0; i < box.text.size(); ++i) {
        if (box.colours[i] != last) {
            last = box.colours[i];
            result += names.at(last);
        }
        result += box.text[i];
    }
    return result;
}

TEST(TypingAssistance, ActsOnKeys) {
    const struct {
        std::string before;
        std::string keys; // '\n' Enter, '\b' Backspace, '<' and '>' arrows, '^' a key that the box has no use for
        std::string after;
        std::string lineEnd = "\r\n";
    } cases[] = {
        {"|", "object x", "[blue]Object [0]x"},
        {"|", "oBjEcT\nx", "[blue]Object\r\n[0]x"},
        {"|", "armorset ArmorSet ", "[blue]ArmorSet ArmorSet "},
        {"|", "targetingreticledecal ", "[blue]TargetIngreticleDecal "},
        {"|", "Weapon specialpower fxlist skirmishbuildlist ", "[0]Weapon specialpower fxlist skirmishbuildlist "},
        {"|", "end= my-end tend ends ", "[0]end= my-end tend ends "},
        {"end|", "\t", "end[0]\t"},
        {"a\tend|b", " ", "a\t[blue]End [old]b"},
        {"|end", " \n", "[0] \r\n[old]end"},
        {"x\r\nend|\r\nend", "\n", "x\r\n[blue]End\r\n[old]\r\nend"},
        {"x\r|\nend", " ", "x\r[0] [old]\nend"},
        // comments
        {"|", "; the end is\nx", "[green]; the end is\r\n[0]x"},
        {"|", "a;b end<<c", "[0]a[green];b e[0]c[green]nd"},
        {"|\r\nnext", "a;b>c", "[0]a[green];b\r[old]\n[0]c[old]next"},
        {"|", ";a>b", "[green];a[0]b"},
        {"|", ";a>end ", "[green];aend "},
        {";old\r\n|", ";\b\nx", "[green];old\r\n\r\n[0]x"},
        {"|", ";a\b\b\nend x", "[0]\r\n[blue]End [0]x"},
        {"ab;c|", " x", "ab;c[0] x"},
        {"ab ;c|", " x", "ab [green];c [0]x"},
        {"|", ";a\n;b", "[green];a\r\n[0];b"},
        {"a;|bc", "\b", "a[0]bc"},
        {"a;|bc\r\nd", "\b", "a[0]bc\r[old]\nd"},
        {"a|\r\nb", ";b\b\b^x end ", "a[0]x end \r[old]\nb"},
        // selections
        {"a|bc|d", "\t", "a[0]\t[old]d"},
        {"a|bc|d", "x", "a[0]x[old]d"},
        {"a|bc|d", "^", "a[0]bc[old]d"},
        {"end|bc|d", " ", "[blue]End [0]bc[old]d"},
        {"a;|bc|d", "\b", "a[0]bcd"},
        // other line ends
        {"x\nend|\ny", "\n", "x\n[blue]End\n[old]\ny", "\n"},
        {"x\rend|\ry", "\n", "x\r[blue]End\r[old]\ry", "\r"},
        {"x|\ny", ";<", "x[green];[old]\ny", "\n"},
        {"x\n|\ny", ";\b<", "x\n\ny", "\n"},
        {"x\r|\ry", ";\b<", "x\r[green]\r[old]y", "\r"},
        {"x|\ry", ";<", "x[green];\r[old]y", "\r"},
    };

    for (const auto& [before, keys, after, lineEnd] : cases) {
        ModelBox box = boxWithCaret(before);
        TypingAssistance assistance;
        for (const char key : keys) {
            pressKey(pressOf(key, lineEnd), assistance, box);
        }
        EXPECT_EQ(shown(box), after) << testing::PrintToString(before) << " and " << testing::PrintToString(keys);
    }
}

TEST(TypingAssistance, FindsTheEndsOfWordsAndLinesAtAnyDistance) {
    for (std::size_t distance = 0; distance < 1000; ++distance) {
        const std::string letters(distance, 'y');
        ModelBox box = boxWithCaret("a\t;" + letters + "|");
        TypingAssistance assistance;
        pressKey(pressOf(' ', ""), assistance, box);
        EXPECT_EQ(shown(box), "a\t[green];" + letters + " ");

        box = boxWithCaret("a;|" + letters + "\nb");
        pressKey(pressOf('\b', ""), assistance, box);
        EXPECT_EQ(shown(box), "a" + (distance > 0 ? "[0]" + letters + "[old]" : "") + "\nb");
    }
}

// A word spelled right already is only coloured, so that there is nothing to undo.
TEST(TypingAssistance, ReplacesOnlyWhatChanges) {
    for (const std::string word : {"End", ";End"}) {
        const ModelBox box(word);
        TypingAssistance assistance;
        const KeyAnswer answer = assistance.keyPressed(Key::Enter, {box.length(), 0}, BoxView(box));
        EXPECT_TRUE(std::none_of(answer.actions.begin(), answer.actions.end(), [](const TextBoxAction& action) {
            return std::holds_alternative<SetText>(action);
        })) << word;
    }
}

TEST(TypingAssistance, ReadsOnlyNearTheCaret) {
    std::string text;
    while (text.size() < 1'000'000) {
        text += "    Armor = TankArmor ; plated\r\n";
    }
    ModelBox box(text);
    box.setSelStart(box.length() / 2);
    TypingAssistance assistance;
    for (const char symbol : std::string(";\n;<\b\t x\b")) {
        const BoxView view(box);
        std::ignore = assistance.keyPressed(pressOf(symbol, "\r\n").key, {box.selStart, 0}, view);
        EXPECT_LT(view.charactersRead, 600) << symbol;
    }
}

// --- Random typing --------------------------------------------------------------------------------------------------

// Texts long enough for words and lines to outgrow the first pieces looked at.
std::string randomDocument(std::mt19937& random) {
    const std::vector<std::string> fragments = {"Object",
                                                "end",
                                                "ArmorSet",
                                                "x",
                                                " ",
                                                "\t",
                                                ";",
                                                "=",
                                                "\xC9",
                                                "\r\n",
                                                "\r\n",
                                                "\r\n",
                                                std::string(700, 'y'),
                                                "; " + std::string(300, '-'),
                                                std::string(1, '\0')};
    return randomText(random, fragments, 30);
}

// Never between CR and LF: the text box moves such a caret.
std::ptrdiff_t randomCaret(std::mt19937& random, const std::string& text) {
    const std::size_t caret = randomBelow(random, text.size() + 1);
    const bool inside = caret > 0 && text.compare(caret - 1, 2, "\r\n") == 0;
    return static_cast<std::ptrdiff_t>(inside ? caret - 1 : caret);
}

struct RandomTyping {
    std::mt19937 random;
    TypingAssistance assistance;
    ModelBox box;
    TypingModel model;
    ModelBox expected;
    std::string typed;

    explicit RandomTyping(std::mt19937::result_type seed)
        : random(seed), box(boxOf(randomDocument(random))), expected(box) {}

    void press(char symbol) {
        typed += symbol;
        const Press key = pressOf(symbol, "\r\n");
        pressKey(key, assistance, box);
        if (!model.keyDown(key.key, expected)) {
            letBoxAct(key, expected);
        }
    }

    void typeWord() {
        static const std::vector<std::string> words = {"end",
                                                       "ConditionState",
                                                       "armorset",
                                                       "weaponset",
                                                       "body",
                                                       "behavior",
                                                       "AttackAreaDecal",
                                                       "targetingreticledecal",
                                                       "object",
                                                       "DefaultConditionState",
                                                       "UnitSpecificSounds",
                                                       "turret",
                                                       "weapon",
                                                       "ab"};
        for (const char letter : words[randomBelow(random, words.size())]) {
            const bool upper = randomBelow(random, 4) == 0 && letter >= 'a';
            press(upper ? static_cast<char>(letter - 'a' + 'A') : letter);
        }
        press(" \n;="[randomBelow(random, 4)]);
    }

    // Moves by mouse, selects or pastes.
    void leaveKeyboard() {
        std::ptrdiff_t start = randomCaret(random, box.text);
        std::ptrdiff_t end = start;
        if (randomBelow(random, 3) == 0) {
            end = randomCaret(random, box.text);
        }
        if (start > end) {
            std::swap(start, end);
        }
        for (ModelBox* each : {&box, &expected}) {
            each->select(start, end - start);
        }
        if (randomBelow(random, 4) == 0) {
            box.setSelText("pa;ste\r\n");
            expected.setSelText("pa;ste\r\n");
        }
    }

    void act() {
        const std::size_t choice = randomBelow(random, 20);
        if (choice < 3) {
            typeWord();
        } else if (choice < 5) {
            leaveKeyboard();
        } else {
            press(std::string("\t;;;\n\n<<>>!\b\b\b\b  ^ax")[randomBelow(random, 20)]);
        }
    }
};

TEST(TypingAssistance, AgreesWithTheStepByStepModel) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        RandomTyping typing(seed);
        for (int action = 0; action < 150; ++action) {
            typing.act();
            ASSERT_EQ(typing.box.text, typing.expected.text) << seed << testing::PrintToString(typing.typed);
            ASSERT_TRUE(typing.box.colours == typing.expected.colours)
                << shown(typing.box) << '\n'
                << shown(typing.expected) << seed << testing::PrintToString(typing.typed);
            ASSERT_EQ(typing.box.selStart, typing.expected.selStart) << seed << testing::PrintToString(typing.typed);
            ASSERT_EQ(typing.box.selLength, typing.expected.selLength) << seed << testing::PrintToString(typing.typed);
            ASSERT_EQ(typing.box.selColor(), typing.expected.selColor())
                << seed << testing::PrintToString(typing.typed);
            ASSERT_EQ(typing.assistance.Commentmode(), typing.model.Commentmode) << seed;
            ASSERT_EQ(typing.assistance.Commentstart().value, typing.model.Commentstart) << seed;
        }
    }
}

} // namespace
} // namespace blockhouse
