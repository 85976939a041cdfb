#include "platform/richtext/RichTextBox.h"
#include "platform/text/codepage.h"

#include <gtest/gtest.h>
#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QTest>

#include <random>

namespace blockhouse {
namespace {

using Position = RichTextBox::Position;

constexpr Colour navy = rgb(0, 0, 128);
constexpr Colour green = rgb(0, 128, 0);
constexpr Colour yellow = rgb(255, 255, 192);

std::string everyByte() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    return bytes;
}

void select(RichTextBox& box, Position start, std::ptrdiff_t length) {
    box.setSelStart(start);
    box.setSelLength(length);
}

void colour(RichTextBox& box, Position start, std::ptrdiff_t length, Colour with) {
    select(box, start, length);
    box.setSelColor(with);
}

// One letter a character: n(avy), g(reen), "." default, "?" any other.
std::string colours(const RichTextBox& box) {
    std::string letters;
    for (Position at = 0; at < box.textLength(); ++at) {
        const Colour text = box.textColorAt(at);
        letters += text == navy ? 'n' : text == green ? 'g' : text == defaultTextColour ? '.' : '?';
    }
    return letters;
}

TEST(RichTextBox, KeepsEveryByteAndLineEnd) {
    RichTextBox box;
    const std::string texts[] = {"", "a\r\nb\rc\nd", "\r\r\n\n\r", "\n", everyByte(), std::string("\0\0", 2), "End"};
    for (const std::string& text : texts) {
        box.setText(text);
        EXPECT_EQ(box.text(), text);
        EXPECT_EQ(box.textLength(), static_cast<std::ptrdiff_t>(text.size()));
        EXPECT_EQ(box.textAt(1, 3), text.size() > 1 ? text.substr(1, 3) : "");
    }
}

TEST(RichTextBox, CountsCharactersNotBytesOfItsInnerEncoding) {
    RichTextBox box;
    box.setText("\x80uro \xE9t\xE9\r\n\x9D End");
    select(box, 5, 3);
    EXPECT_EQ(box.selText(), "\xE9t\xE9");
    box.setSelText("\xFC");
    EXPECT_EQ(box.text(), "\x80uro \xFC\r\n\x9D End");
    EXPECT_EQ(box.selStart(), 6);
    EXPECT_EQ(box.find("END", 0), 10);
    EXPECT_EQ(box.currentLine(), 1);
    colour(box, 8, 1, navy);
    EXPECT_EQ(colours(box), "........n....");
}

TEST(RichTextBox, SelectionIsClippedToTheText) {
    RichTextBox box;
    box.setText("abc");
    select(box, 2, 99);
    EXPECT_EQ(box.selText(), "c");
    select(box, 99, 1);
    EXPECT_EQ(box.selStart(), 3);
    EXPECT_EQ(box.selLength(), 0);
    select(box, -5, -1);
    EXPECT_EQ(box.selStart(), 0);
    EXPECT_EQ(box.selLength(), 0);
}

TEST(RichTextBox, ACaretInsideALineBreakDoesNotSplitIt) {
    RichTextBox box;
    box.setText("a\r\nb");
    box.setSelStart(2);
    QTest::keyClick(&box, Qt::Key_X);
    EXPECT_EQ(box.text(), "ax\r\nb");
    select(box, 3, 1);
    EXPECT_EQ(box.selText(), "\n") << "a selection may still begin inside the pair";
}

TEST(RichTextBox, FindsWithoutRegardToCase) {
    RichTextBox box;
    box.setText("Foo \xC9T\xC9 foo END");
    EXPECT_EQ(box.find("FOO"), 0);
    EXPECT_EQ(box.find("foo", 1), 8);
    EXPECT_EQ(box.selText(), "foo");
    EXPECT_EQ(box.find("end"), -1) << "a selection is searched alone";
    EXPECT_EQ(box.selText(), "foo") << "a failed search changes nothing";
    EXPECT_EQ(box.find("\xE9t\xE9", 0), 4);
    EXPECT_EQ(box.find("", 0), -1);
    EXPECT_EQ(box.find("end", 99), -1);
    std::string large(200'000, '\xE9');
    box.setText(large + "\xDC"
                        "ber");
    EXPECT_EQ(box.find("\xFC"
                       "BER",
                       0),
              200'000);
}

TEST(RichTextBox, ManyRangesAreColouredAtOnce) {
    std::mt19937 random(7);
    for (const bool ascii : {true, false}) {
        RichTextBox box;
        const std::ptrdiff_t length = 150'000;
        std::string text(static_cast<std::size_t>(length), ascii ? 'a' : '\xE9');
        for (std::size_t lineEnd = 50; lineEnd < text.size(); lineEnd += 50)
            text[lineEnd] = '\n';
        box.setText(text);
        std::vector<TextRange> ranges;
        std::string expected(text.size(), '.');
        for (std::ptrdiff_t start = 100; start < length; start += static_cast<std::ptrdiff_t>(random() % 4000)) {
            const auto size = static_cast<std::ptrdiff_t>(random() % 3000);
            ranges.push_back({start, size});
            for (std::ptrdiff_t at = start; at < std::min(start + size, length); ++at)
                expected[static_cast<std::size_t>(at)] = 'n';
        }
        ranges.insert(ranges.begin(), {0, 90'000});
        std::fill_n(expected.begin(), 90'000, 'n');
        box.setTextColor(ranges, navy);
        EXPECT_TRUE(colours(box) == expected);
    }
}

// Line ends are taken apart and put together on the way, and characters are of two lengths in the text engine.
TEST(RichTextBox, ManyRangesAreReplacedAtOnce) {
    std::mt19937 random(5);
    const std::string pieces[] = {"", "x", "\r", "\n", "\xE9\r", "\n\xE9"};
    for (int round = 0; round < 300; ++round) {
        std::string text;
        while (text.size() < 30)
            text += "a\xE9\r\n\r\n"[random() % 6];
        RichTextBox box;
        box.setText(text);
        std::vector<TextRange> ranges;
        for (std::ptrdiff_t start = 0; start < 28; start += static_cast<std::ptrdiff_t>(3 + random() % 5))
            ranges.push_back({start, static_cast<std::ptrdiff_t>(random() % 3)});
        const std::string& piece = pieces[random() % std::size(pieces)];
        box.replaceRanges(ranges, piece);
        for (auto range = ranges.rbegin(); range != ranges.rend(); ++range)
            text.replace(static_cast<std::size_t>(range->start), static_cast<std::size_t>(range->length), piece);
        ASSERT_EQ(box.text(), text) << round;
        ASSERT_EQ(box.textLength(), static_cast<std::ptrdiff_t>(text.size())) << round;
        for (std::size_t at = 0; at < text.size(); ++at)
            ASSERT_EQ(box.textAt(at, 2), text.substr(at, 2)) << round << " at " << at;
    }
}

TEST(RichTextBox, TypedTextTakesTheTypingColour) {
    RichTextBox box;
    box.setText("ab");
    colour(box, 0, 2, navy);
    box.setSelStart(1);
    box.setSelColor(green);
    QTest::keyClicks(&box, "xy");
    EXPECT_EQ(colours(box), "nggn") << "the colour set for typing, then that of the character before";
    box.setSelStart(4);
    QTest::keyClicks(&box, "z");
    EXPECT_EQ(colours(box), "nggnn");
    select(box, 1, 2);
    box.setSelText("123");
    EXPECT_EQ(colours(box), "ngggnn") << "a replacement takes the selection's colour";
    select(box, 0, 1);
    QTest::keyClicks(&box, "q");
    EXPECT_EQ(colours(box), "ngggnn");
}

TEST(RichTextBox, ABackgroundEndsWithItsLine) {
    RichTextBox box;
    const rtf::ColourRun highlighted{2, defaultTextColour, yellow};
    box.setRtf(rtf::write(";a", {highlighted}));
    box.setSelStart(2);
    QTest::keyClicks(&box, "b");
    EXPECT_EQ(box.backgroundAt(2), yellow);
    box.setSelText("c\r\nd");
    EXPECT_EQ(box.backgroundAt(3), yellow);
    for (const int at : {4, 5, 6})
        EXPECT_EQ(box.backgroundAt(at), defaultBackground) << at;
    QTest::keyClicks(&box, "e");
    EXPECT_EQ(box.backgroundAt(7), defaultBackground);
}

TEST(RichTextBox, RtfSourceGoesBothWays) {
    std::mt19937 random(11);
    const Colour palette[] = {defaultTextColour, navy, green};
    for (int round = 0; round < 300; ++round) {
        std::string text;
        for (std::size_t size = random() % 60; text.size() < size;)
            text += round % 2 ? "a;\"\r\n\t\\{}\xE9"[random() % 10] : static_cast<char>(random() % 256);
        RichTextBox box;
        box.setText(text);
        for (int run = 0; run < 5 && !text.empty(); ++run)
            colour(box, random() % text.size(), 4, palette[random() % 3]);
        const std::string before = colours(box);
        RichTextBox other;
        other.setRtf(box.rtf());
        ASSERT_EQ(other.text(), text);
        ASSERT_EQ(colours(other), before);
        box.setRtf(box.rtf());
        ASSERT_EQ(colours(box), before) << "also where the text stays the same";
    }
}

TEST(RichTextBox, ColourTableListsAColourOnceSomeTextHadIt) {
    RichTextBox box;
    box.setText("abc");
    EXPECT_EQ(box.rtfHeader().find("\\blue128;"), std::string::npos);
    colour(box, 1, 1, navy);
    EXPECT_NE(box.rtfHeader().find("\\red0\\green0\\blue128;"), std::string::npos);
    EXPECT_TRUE(box.rtf().starts_with(box.rtfHeader()));
}

// Random edits, each with the state it led to: undo and redo must walk those states exactly.
TEST(RichTextBox, UndoAndRedoBringColoursBack) {
    std::mt19937 random(3);
    RichTextBox box;
    box.setText("Object Alpha\r\n  Body = x ;note\r\nEnd\r\n");
    colour(box, 0, 6, navy);

    struct State {
        std::string text;
        std::string colours;
    };

    std::vector<State> states{{box.text(), colours(box)}};
    const std::string pieces[] = {"x", "\r\n", "\xE9", "End", "", "a;b"};
    for (int edit = 0; edit < 600; ++edit) {
        const Position at = random() % static_cast<unsigned>(box.textLength() + 1);
        select(box, at, static_cast<std::ptrdiff_t>(random() % 4));
        if (box.selLength() == 0)
            box.setSelColor(random() % 2 ? green : navy);
        const std::string& piece = pieces[random() % std::size(pieces)];
        const bool isStep = box.selLength() > 0 || !piece.empty();
        box.setSelText(piece);
        if (isStep)
            states.push_back({box.text(), colours(box)});
    }
    const auto expectState = [&](std::size_t index) {
        ASSERT_EQ(box.text(), states[index].text) << index;
        ASSERT_EQ(colours(box), states[index].colours) << index;
    };
    for (int pass = 0; pass < 2; ++pass) {
        for (std::size_t at = states.size() - 1; at > 0;) {
            box.undo();
            expectState(--at);
        }
        for (std::size_t at = 0; at + 1 < states.size();) {
            box.redo();
            expectState(++at);
        }
    }
}

TEST(RichTextBox, CanShowTextsOfLinesThatAreNotTooLong) {
    const std::string longest(4'000'000, 'x');

    const struct {
        const char* what;
        std::string text;
        bool expected;
    } cases[] = {
        {"one line", longest, true},
        {"two of them", longest + "\r" + longest, true},
        {"the last one longer", longest + "\n" + longest + "x", false},
        {"the first one longer", "x" + longest + "\r\n", false},
        {"the middle one longer", "a\r\n" + longest + "x\r\nb", false},
        {"no text", "", true},
    };

    for (const auto& [what, text, expected] : cases)
        EXPECT_EQ(RichTextBox::canShow(text), expected) << what;
}

TEST(RichTextBox, SettingTheWholeTextCannotBeUndone) {
    RichTextBox box;
    box.setText("one");
    QTest::keyClicks(&box, "x");
    box.setText("two");
    box.undo();
    EXPECT_EQ(box.text(), "two");
    box.setRtf(rtf::write("three", {}));
    box.undo();
    EXPECT_EQ(box.text(), "three");
}

TEST(RichTextBox, ReadOnlyItChangesAsAWholeAlone) {
    RichTextBox box;
    box.show();
    box.setText("one two");
    box.setSelText("before "); // there is something to undo
    QGuiApplication::clipboard()->setText(QStringLiteral("pasted"));
    box.setReadOnly(true);
    select(box, 0, 3);
    QTest::keyClick(&box, 'x');
    QTest::keyClick(&box, Qt::Key_Delete);
    QTest::keyClick(&box, Qt::Key_Z, Qt::ControlModifier);
    box.paste();
    box.cut();
    box.undo();
    box.setSelText("set");
    const TextRange first{0, 3};
    box.replaceRanges({&first, 1}, "replaced");
    QInputMethodEvent committed;
    committed.setCommitString(QStringLiteral("typed"));
    QCoreApplication::sendEvent(&box, &committed);
    EXPECT_EQ(box.text(), "before one two");
    EXPECT_EQ(colours(box), "..............");
    box.setText("whole");
    box.setTextColor({&first, 1}, navy);
    EXPECT_EQ(colours(box), "nnn..");
    EXPECT_TRUE(box.isReadOnly());
    box.setReadOnly(false);
    QTest::keyClick(&box, 'x');
    EXPECT_EQ(box.text(), "xwhole");
}

TEST(RichTextBox, PasteKeepsToTheCodePageAndTheLineEnds) {
    RichTextBox box;
    int replaced = 0, changes = 0;
    QObject::connect(&box, &RichTextBox::charactersReplaced, [&] { ++replaced; });
    QObject::connect(&box, &RichTextBox::changed, [&] { ++changes; });
    for (const std::string end : {"\r\n", "\n", "\r"}) {
        box.setText("a" + end);
        QGuiApplication::clipboard()->setText(QStringLiteral("1\r\n2\n3\r\u20AC\u0416"));
        changes = replaced = 0;
        box.paste();
        EXPECT_EQ(box.text(), "1" + end + "2" + end + "3" + end + "\x80?a" + end);
        EXPECT_EQ(replaced, 1);
        EXPECT_EQ(changes, 1);
    }
    select(box, 0, 1);
    box.cut();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("1"));
    EXPECT_EQ(box.selLength(), 0);
}

TEST(RichTextBox, EnterInsertsTheDocumentsLineEnd) {
    RichTextBox box;
    for (const std::string end : {"\r\n", "\n", "\r"}) {
        box.setText("a" + end + "b");
        QTest::keyClick(&box, Qt::Key_Return);
        EXPECT_EQ(box.text(), end + "a" + end + "b");
    }
}

TEST(RichTextBox, KeysOfTheTextEngineThatNobodyAskedForDoNothing) {
    RichTextBox box;
    box.setText("one\r\ntwo");
    for (const int key : {Qt::Key_D, Qt::Key_L, Qt::Key_T, Qt::Key_U, Qt::Key_BracketLeft, Qt::Key_Backslash})
        for (const Qt::KeyboardModifiers modifiers :
             {Qt::KeyboardModifiers(Qt::ControlModifier), Qt::ControlModifier | Qt::ShiftModifier})
            QTest::keyClick(&box, static_cast<Qt::Key>(key), modifiers);
    EXPECT_EQ(box.text(), "one\r\ntwo");
}

TEST(RichTextBox, UndoAndRedoKeys) {
    RichTextBox box;
    box.setText("a");
    QTest::keyClicks(&box, "xy");
    QTest::keyClick(&box, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box.text(), "a");
    QTest::keyClick(&box, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(box.text(), "xya");
    QTest::keyClick(&box, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&box, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(box.text(), "xya");
    QTest::keyClicks(&box, "b");
    QTest::keyClick(&box, Qt::Key_Return);
    QTest::keyClicks(&box, "c");
    QTest::keyClick(&box, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box.text(), "xyba") << "a line at a time";
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(box.selLength(), 4);
}

TEST(RichTextBox, TheHookSeesEveryPressOnceAndBeforeShortcuts) {
    QWidget window;
    RichTextBox box(&window);
    QAction shortcut(&window);
    shortcut.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_C));
    window.addAction(&shortcut);
    int triggered = 0;
    QObject::connect(&shortcut, &QAction::triggered, [&] { ++triggered; });
    window.show();
    box.setFocus();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));

    std::vector<int> seen;
    bool cancel = false;
    box.setKeyDown([&](const QKeyEvent& event) {
        seen.push_back(event.key());
        return cancel;
    });
    QTest::keyClick(&box, Qt::Key_C, Qt::ControlModifier); // presses Ctrl first
    QTest::keyClick(&box, Qt::Key_X);
    QTest::keyClick(&box, Qt::Key_X);
    EXPECT_EQ(seen, (std::vector<int>{Qt::Key_Control, Qt::Key_C, Qt::Key_X, Qt::Key_X}));
    EXPECT_EQ(triggered, 1);
    EXPECT_EQ(box.text(), "xx");
    cancel = true;
    QTest::keyClick(&box, Qt::Key_Y);
    EXPECT_EQ(box.text(), "xx");
}

TEST(RichTextBox, ScrollsByLinesAndPages) {
    RichTextBox box;
    box.resize(300, 200);
    box.show();
    std::string text;
    for (int line = 0; line < 500; ++line)
        text += "line\r\n";
    box.setText(text);
    EXPECT_EQ(box.lineCount(), 501);
    box.scrollLines(0, 37);
    EXPECT_EQ(box.firstVisibleLine(), 37);
    box.scroll(RichTextBox::ScrollStep::LineUp);
    EXPECT_EQ(box.firstVisibleLine(), 36);
    box.scroll(RichTextBox::ScrollStep::PageDown);
    EXPECT_GT(box.firstVisibleLine(), 40);
    box.scrollLines(0, 9999);
    EXPECT_LT(box.firstVisibleLine(), 500) << "the last page stays filled";
    box.setSelStart(6 * 100 + 1);
    EXPECT_EQ(box.currentLine(), 100);
}

TEST(RichTextBox, OffersItsTextToAssistiveTechnology) {
    RichTextBox box;
    box.setText("caf\xE9 End");
    select(box, 5, 3);
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&box);
    ASSERT_TRUE(accessible && accessible->textInterface());
    QAccessibleTextInterface& text = *accessible->textInterface();
    EXPECT_EQ(text.characterCount(), 8);
    EXPECT_EQ(text.text(0, 4), QStringLiteral("caf\u00E9"));
    EXPECT_EQ(text.cursorPosition(), 8);
    int start = 0, end = 0;
    text.selection(0, &start, &end);
    EXPECT_EQ(start, 5);
    EXPECT_EQ(end, 8);
    text.setCursorPosition(2);
    EXPECT_EQ(box.selStart(), 2);
    EXPECT_EQ(text.selectionCount(), 0);
}

TEST(RichTextBox, MoreColoursThanStylesStillShowEveryText) {
    RichTextBox box;
    box.setText(std::string(600, 'x'));
    for (int at = 0; at < 600; ++at)
        colour(box, at, 1, rgb(at % 256, at / 256, 7));
    EXPECT_EQ(box.textColorAt(3), rgb(3, 0, 7));
    EXPECT_EQ(blueOf(box.textColorAt(599)), 7) << "the nearest colour at hand";
    EXPECT_EQ(box.text(), std::string(600, 'x'));
}

} // namespace
} // namespace blockhouse
