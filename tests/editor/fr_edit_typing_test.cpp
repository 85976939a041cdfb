// Random keys through the real text box and through the plain model of the rules: both must look alike all the way.
#include "editor/fr_edit.h"
#include "tests/editor/FakeHost.h"
#include "tests/editor/typing_model.h"

#include <gtest/gtest.h>
#include <QTest>

#include <random>

namespace blockhouse {
namespace {

struct Press {
    Qt::Key key;
    char character; // 0 for keys that type nothing
    Key rule;
};

const Press presses[] = {
    {Qt::Key_Space, ' ', Key::Space},
    {Qt::Key_Return, 0, Key::Enter},
    {Qt::Key_Semicolon, ';', Key::Semicolon},
    {Qt::Key_Tab, 0, Key::Tab},
    {Qt::Key_Left, 0, Key::Arrow},
    {Qt::Key_Right, 0, Key::Arrow},
    {Qt::Key_Backspace, 0, Key::Backspace},
    {Qt::Key_Equal, '=', Key::Other},
    {Qt::Key_QuoteDbl, '"', Key::Other},
    {Qt::Key_Colon, ':', Key::Other},
};

const std::string words[] = {"end",    "OBJECT",   "Body", "armorset",  "weapon", "targetingreticledecal",
                             "turret", "behavioR", "x",    "weaponset", "Endx",   "defaultconditionstate"};

class Pair {
public:
    Pair() : editor(host), box(*editor.txt_edit), model("Object Start\r\n  Body = x ;note\r\nEnd\r\n") {
        editor.show();
        box.setText(model.text);
    }

    void press(const Press& press) {
        QKeyEvent event(QEvent::KeyPress, press.key, Qt::NoModifier,
                        press.character ? QString(QLatin1Char(press.character)) : QString());
        QApplication::sendEvent(&box, &event);
        const bool cancelled = rules.keyDown(press.rule, model);
        if (cancelled)
            return;
        if (press.character)
            model.setSelText(std::string(1, press.character));
        else if (press.key == Qt::Key_Return)
            model.setSelText("\r\n");
        else if (press.key == Qt::Key_Left)
            model.left();
        else if (press.key == Qt::Key_Right)
            model.right();
        else if (press.key == Qt::Key_Backspace)
            model.backspace();
    }

    void type(const std::string& word) {
        for (const char letter : word)
            press({static_cast<Qt::Key>(std::toupper(letter)), letter, Key::Other});
    }

    // As a click does, and a drag: neither ends between CR and LF.
    void select(std::ptrdiff_t start, std::ptrdiff_t length) {
        const auto outsidePair = [&](std::ptrdiff_t at) {
            const auto index = static_cast<std::size_t>(at);
            return at > 0 && index < model.text.size() && model.text[index - 1] == '\r' ? at + 1 : at;
        };
        const std::ptrdiff_t first = outsidePair(start);
        model.select(first, outsidePair(std::min(first + length, model.length())) - first);
        box.setSelStart(model.selStart);
        box.setSelLength(model.selLength);
    }

    void expectAlike() {
        ASSERT_EQ(box.text(), model.text);
        ASSERT_EQ(box.selStart(), model.selStart);
        ASSERT_EQ(box.selLength(), model.selLength);
        for (std::size_t at = 0; at < model.text.size(); ++at)
            ASSERT_EQ(box.textColorAt(static_cast<std::ptrdiff_t>(at)), model.colours[at]) << at << "\n" << model.text;
    }

    [[nodiscard]] std::string colours() const {
        std::string letters;
        for (std::ptrdiff_t at = 0; at < box.textLength(); ++at) {
            const Colour colour = box.textColorAt(at);
            letters += colour == TypedKeywordColor ? 'k' : colour == TypedCommentColor ? 'c' : colour == 0 ? '.' : '?';
        }
        return letters;
    }

    FakeHost host;
    fr_edit editor;
    RichTextBox& box;
    ModelBox model;
    TypingModel rules;
};

TEST(TypingInTheEditor, IsWhatThePlainModelSays) {
    std::mt19937 random(20);
    int keys = 0;
    while (keys < 12'000) {
        Pair pair;
        for (int step = 0; step < 120; ++step) {
            const auto dice = random() % 20;
            if (dice < 7) {
                const std::string& word = words[random() % std::size(words)];
                pair.type(word);
                keys += static_cast<int>(word.size());
            } else if (dice < 19) {
                pair.press(presses[random() % std::size(presses)]);
                ++keys;
            } else {
                const auto length = static_cast<unsigned>(pair.model.length());
                pair.select(static_cast<std::ptrdiff_t>(random() % (length + 1)),
                            static_cast<std::ptrdiff_t>(random() % 3 ? 0 : random() % 6));
            }
            pair.expectAlike();
            if (testing::Test::HasFatalFailure())
                return;
        }
    }
}

TEST(TypingInTheEditor, OneUndoTakesBackExactlyTheRewriting) {
    Pair pair;
    pair.select(0, 0);
    pair.type("armorset");
    pair.press(presses[0]);
    ASSERT_TRUE(pair.box.text().starts_with("ArmorSet Object"));
    pair.box.undo(); // the blank
    ASSERT_TRUE(pair.box.text().starts_with("ArmorSetObject"));
    pair.box.undo();
    EXPECT_TRUE(pair.box.text().starts_with("armorsetObject"));
}

TEST(TypingInTheEditor, TabInsertsATabWithOrWithoutShift) {
    Pair pair;
    pair.box.setSelStart(0);
    pair.box.setSelLength(6);
    QTest::keyClick(&pair.box, Qt::Key_Tab);
    QTest::keyClick(&pair.box, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(pair.box.text().starts_with("\t\t Start\r\n"));
}

// What the box shows is enough to tell: a rewritten keyword, a tab, a comment's colour.
TEST(TypingInTheEditor, AKeyHeldWithCtrlOrAltTypesNothing) {
    constexpr auto control = Qt::ControlModifier;
    constexpr auto alt = Qt::AltModifier;
    constexpr auto meta = Qt::MetaModifier;
    constexpr auto altGr = Qt::ControlModifier | Qt::AltModifier;

    struct Case {
        const char* before;
        Qt::Key key;
        const char* text;
        Qt::KeyboardModifiers modifiers;
        const char* after;
        const char* shown;
        const char* colours; // k(eyword), c(omment), "." black
    };

    const Case cases[] = {
        {"", Qt::Key_Semicolon, ";", control, "body ", "Body ", "kkkkk"},
        {"", Qt::Key_Semicolon, ";", alt, "body ", "Body ", "kkkkk"},
        {"", Qt::Key_Semicolon, ";", meta, "body ", "Body ", "kkkkk"},
        {"", Qt::Key_Semicolon, ";", altGr, "body ", ";body ", "......"},
        {"body", Qt::Key_Space, " ", control, "", "body", "...."},
        {"body", Qt::Key_Space, " ", alt, "", "body", "...."},
        {"body", Qt::Key_Space, " ", altGr, "", "Body ", "kkkkk"},
        {"body", Qt::Key_Return, "\r", control, "", "body", "...."},
        {"body", Qt::Key_Return, "\r", Qt::ShiftModifier, "", "Body\r\n", "kkkkkk"},
        {"x", Qt::Key_Tab, "\t", control, "", "x", "."},
        {"x", Qt::Key_Backtab, "\t", control | Qt::ShiftModifier, "", "x", "."},
        {"; x", Qt::Key_Left, "", control, "", "; x", "ccc"},
        {"; x", Qt::Key_Left, "", alt, "", "; x", "..."},
        {"; x", Qt::Key_Left, "", altGr, "", "; x", "..."},
        {"; x", Qt::Key_Left, "", meta, "", "; x", "..."},
        {"; x", Qt::Key_Return, "\r", control, "y", "; xy", "...."},
    };
    for (const Case& c : cases) {
        Pair pair;
        pair.box.setText("");
        QTest::keyClicks(&pair.box, c.before);
        QTest::sendKeyEvent(QTest::Click, &pair.box, c.key, QLatin1String(c.text), c.modifiers);
        QTest::keyClicks(&pair.box, c.after);
        EXPECT_EQ(pair.box.text(), c.shown);
        EXPECT_EQ(pair.colours(), c.colours) << c.before << '|' << c.text << static_cast<int>(c.modifiers);
    }
}

TEST(TypingInTheEditor, OnlyTheBackspaceThatDeletesASemicolonEndsItsComment) {
    struct Case {
        Qt::KeyboardModifiers modifiers;
        const char* shown;
        const char* colours;
    };

    for (const Case& c : {Case{Qt::NoModifier, "note", "...."}, Case{Qt::ControlModifier, "note", "...."},
                          Case{Qt::AltModifier, ";note", "ccccc"}, Case{Qt::MetaModifier, ";note", "ccccc"}}) {
        Pair pair;
        pair.box.setText("");
        QTest::keyClicks(&pair.box, ";note");
        QTest::keyClick(&pair.box, Qt::Key_Up);
        pair.box.setSelStart(1);
        QTest::keyClick(&pair.box, Qt::Key_Backspace, c.modifiers);
        EXPECT_EQ(pair.box.text(), c.shown);
        EXPECT_EQ(pair.colours(), c.colours) << static_cast<int>(c.modifiers);
    }
}

TEST(TypingInTheEditor, TextFromAnInputMethodIsAssistedLikeTypedText) {
    struct Event {
        const char* shown;
        const char* committed;
    };

    struct Case {
        std::vector<Event> events;
        const char* after;
        const char* text;
        const char* colours;
    };

    const Case cases[] = {
        {{{"", "\u00E9"}}, "x", "Body\xE9x", "kkkk.."},
        {{{"e", ""}, {"e'", ""}, {"", "\u00E9"}}, "x", "Body\xE9x", "kkkk.."},
        {{{"e", ""}, {"a", "e"}, {"", "a"}}, "x", "Bodyeax", "kkkk..."},
        {{{"", ";"}}, "end x\r", "Body;end x\r\n", "kkkkcccccccc"},
        {{{";", ""}, {"", ";"}}, "end x\r", "Body;end x\r\n", "kkkkcccccccc"},
        {{{"", "\r"}, {"", "end"}, {"", " "}}, "x", "Body\r\nEnd x", "kkkk..kkkk."},
    };
    for (const Case& c : cases) {
        Pair pair;
        pair.box.setText("");
        QTest::keyClicks(&pair.box, "body ");
        QTest::keyClick(&pair.box, Qt::Key_Backspace);
        ASSERT_EQ(pair.colours(), "kkkk");
        for (const Event& each : c.events) {
            const QString shown = QString::fromUtf8(each.shown);
            QInputMethodEvent event(shown, {{QInputMethodEvent::Cursor, static_cast<int>(shown.size()), 1, {}}});
            event.setCommitString(QString::fromUtf8(each.committed));
            QApplication::sendEvent(&pair.box, &event);
        }
        QTest::keyClicks(&pair.box, c.after);
        EXPECT_EQ(pair.box.text(), c.text);
        EXPECT_EQ(pair.colours(), c.colours) << c.text;
    }
}

TEST(TypingInTheEditor, ShortcutsTurnTheSelectionBlackToo) {
    Pair pair;
    pair.box.setSelStart(0);
    pair.box.setSelLength(6);
    pair.box.setSelColor(TypedKeywordColor);
    QTest::keyClick(&pair.box, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(pair.box.textColorAt(2), TypedTextColor);
    EXPECT_EQ(pair.box.text(), pair.model.text);
}

} // namespace
} // namespace blockhouse
