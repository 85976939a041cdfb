// Input methods and dead keys: text that is composed in the document, committed, or given up.
#include "platform/richtext/RichTextBox.h"
#include "platform/text/codepage.h"

#include <gtest/gtest.h>
#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>
#include <QTest>

namespace blockhouse {
namespace {

constexpr Colour navy = rgb(0, 0, 128);
constexpr Colour green = rgb(0, 128, 0);

// The caret stands behind what is composed, as with most input methods.
void send(RichTextBox& box, const char* shown, const char* committed) {
    const QString composed = QString::fromUtf8(shown);
    QInputMethodEvent event(composed, {{QInputMethodEvent::Cursor, static_cast<int>(composed.size()), 1, {}}});
    event.setCommitString(QString::fromUtf8(committed));
    QApplication::sendEvent(&box, &event);
}

// One letter a character: n(avy), g(reen), "." default, "?" any other.
std::string colours(const RichTextBox& box) {
    std::string letters;
    for (std::ptrdiff_t at = 0; at < box.textLength(); ++at) {
        const Colour text = box.textColorAt(at);
        letters += text == navy ? 'n' : text == green ? 'g' : text == defaultTextColour ? '.' : '?';
    }
    return letters;
}

struct Event {
    const char* shown;
    const char* committed;
    const char* text; // of the box then
};

struct Case {
    std::vector<Event> events;
    std::vector<std::string> asked; // the text about to go in, and the box's text at that moment
};

const Case cases[] = {
    {{{"", "\u00E9", "[\xE9]"}}, {"\xE9 into []"}},
    {{{"", "ab", "[ab]"}, {"", "c", "[abc]"}}, {"ab into []", "c into [ab]"}},
    {{{"k", "", "[k]"}, {"kana", "", "[kana]"}, {"ka", "", "[ka]"}, {"", "KA", "[KA]"}}, {"k into []"}},
    {{{"k", "", "[k]"}, {"", "", "[]"}, {"n", "", "[n]"}, {"", "N", "[N]"}}, {"k into []", "n into []"}},
    {{{"g", "", "[g]"}, {"n", "G", "[Gn]"}, {"nn", "", "[Gnn]"}, {"", "N", "[GN]"}}, {"g into []", "n into [G]"}},
    {{{"", "a\nb", "[a\r\nb]"}}, {"a\nb into []"}},
    {{{"", "", "[]"}}, {}},
};

class InputMethod : public testing::Test {
protected:
    InputMethod() {
        begin();
        QObject::connect(&box, &RichTextBox::changed, [this] { ++changes; });
        box.setKeyDown([this](const QKeyEvent& press) {
            EXPECT_EQ(press.key(), Qt::Key_unknown);
            asked.push_back(codepage::fromUtf8(press.text().toStdString()).bytes + " into " + box.text());
            box.setSelColor(green);
            return cancels;
        });
    }

    void begin() {
        box.setText("[]");
        const TextRange all{0, 2};
        box.setTextColor({&all, 1}, navy);
        box.setSelStart(1);
        asked.clear();
    }

    RichTextBox box;
    std::vector<std::string> asked;
    bool cancels = false;
    int changes = 0;
};

constexpr int enoughSteps = 9; // more than any case takes

TEST_F(InputMethod, TheHookSeesTextBeforeItGoesInAndChoosesItsColour) {
    for (const Case& c : cases) {
        begin();
        for (const Event& event : c.events) {
            send(box, event.shown, event.committed);
            ASSERT_EQ(box.text(), event.text);
            EXPECT_EQ(colours(box), "n" + std::string(box.text().size() - 2, 'g') + "n") << event.text;
        }
        EXPECT_EQ(asked, c.asked);
        const std::string text = box.text();
        const std::string look = colours(box);
        for (int step = 0; step < enoughSteps; ++step)
            box.undo();
        EXPECT_EQ(box.text(), "[]") << text;
        EXPECT_EQ(colours(box), "nn") << text;
        for (int step = 0; step < enoughSteps; ++step)
            box.redo();
        EXPECT_EQ(box.text(), text);
        EXPECT_EQ(colours(box), look) << text;
    }
}

TEST_F(InputMethod, TextThatTheHookCancelsIsDropped) {
    cancels = true;
    for (const Case& c : cases) {
        for (const Event& event : c.events)
            send(box, event.shown, event.committed);
        EXPECT_EQ(box.text(), "[]");
        EXPECT_EQ(asked.empty(), c.asked.empty());
        EXPECT_EQ(changes, 0);
        asked.clear();
    }
}

TEST_F(InputMethod, ACompositionTakesThePlaceOfTheSelection) {
    box.setText("ab\r\ncd");
    box.setSelStart(1);
    box.setSelLength(4);
    send(box, "k", "");
    send(box, "ka", "");
    EXPECT_EQ(box.text(), "akad");
    send(box, "", "KA");
    EXPECT_EQ(box.text(), "aKAd");
    EXPECT_EQ(colours(box), ".gg.");
    box.undo();
    box.undo();
    EXPECT_EQ(box.text(), "ab\r\ncd");
    EXPECT_EQ(colours(box), ".gggg.") << "the hook coloured it";
}

TEST_F(InputMethod, AnnouncesWhatIsCommittedOnly) {
    send(box, "k", "");
    send(box, "ka", "");
    EXPECT_EQ(changes, 0);
    send(box, "n", "K");
    EXPECT_EQ(changes, 1);
    send(box, "", "N");
    EXPECT_EQ(changes, 2);
}

TEST(Composition, EndsBeforeAnythingElseIsDoneToTheText) {
    struct Row {
        const char* name;
        std::function<void(RichTextBox&)> act;
        std::string text;
        std::ptrdiff_t caret;
    };

    const TextRange first{0, 1};
    const Row rows[] = {
        {"endComposition", [](RichTextBox& box) { box.endComposition(); }, "abx cd", 3},
        {"copy", [](RichTextBox& box) { box.copy(); }, "abx cd", 3},
        {"cut", [](RichTextBox& box) { box.cut(); }, "abx cd", 3},
        {"paste", [](RichTextBox& box) { box.paste(); }, "abxP cd", 4},
        {"undo", [](RichTextBox& box) { box.undo(); }, "ab cd", 2},
        {"redo", [](RichTextBox& box) { box.redo(); }, "abx cd", 3},
        {"setSelText", [](RichTextBox& box) { box.setSelText("Y"); }, "abxY cd", 4},
        {"replaceRanges",
         [&](RichTextBox& box) {
             box.replaceRanges({&first, 1}, "ZZ");
         },
         "ZZbx cd", 2},
        {"setSelStart", [](RichTextBox& box) { box.setSelStart(5); }, "abx cd", 5},
        {"setSelLength", [](RichTextBox& box) { box.setSelLength(2); }, "abx cd", 3},
        {"find", [](RichTextBox& box) { EXPECT_EQ(box.find("c"), 4); }, "abx cd", 4},
        {"find from a place", [](RichTextBox& box) { EXPECT_EQ(box.find("c", 1), 4); }, "abx cd", 4},
        {"setText", [](RichTextBox& box) { box.setText("new"); }, "new", 0},
        {"setRtf", [](RichTextBox& box) { box.setRtf(rtf::write("new", {})); }, "new", 0},
        {"editRtfLines",
         [](RichTextBox& box) { box.editRtfLines([](std::string_view lines) { return std::string(lines); }); },
         "abx cd", 0},
        {"Ctrl+Z", [](RichTextBox& box) { QTest::keyClick(&box, Qt::Key_Z, Qt::ControlModifier); }, "ab cd", 2},
        {"a typed key", [](RichTextBox& box) { QTest::keyClick(&box, Qt::Key_Y); }, "abxy cd", 4},
        {"a drop",
         [](RichTextBox& box) {
             QMimeData dropped;
             dropped.setText(QStringLiteral("D"));
             const QPoint place = box.characterRect(0).center() - QPoint(2, 0);
             QDragEnterEvent enter(place, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
             QApplication::sendEvent(box.viewport(), &enter);
             QDropEvent drop(place, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
             QApplication::sendEvent(box.viewport(), &drop);
         },
         "Dabx cd", 0},
        {"a click",
         [](RichTextBox& box) {
             QTest::mouseClick(box.viewport(), Qt::LeftButton, {}, box.characterRect(0).center() - QPoint(2, 0));
         },
         "abx cd", 0},
    };
    for (const Row& row : rows) {
        RichTextBox box;
        box.resize(300, 100);
        box.show();
        QGuiApplication::clipboard()->setText(QStringLiteral("P"));
        box.setText("ab cd");
        box.setSelStart(2);
        QTest::keyClick(&box, Qt::Key_X);
        send(box, "shown", "");
        ASSERT_EQ(box.text(), "abxshown cd");
        int changes = 0;
        QObject::connect(&box, &RichTextBox::changed, [&] { ++changes; });
        row.act(box);
        EXPECT_EQ(box.text(), row.text) << row.name;
        EXPECT_EQ(box.selStart(), row.caret) << row.name;
        EXPECT_GT(changes, 0) << row.name;
        send(box, "", "");
        EXPECT_EQ(box.text(), row.text) << row.name << ", and the input method knows it too now";
    }
}

TEST(Composition, GoesOnWhileAModifierIsPressed) {
    RichTextBox box;
    send(box, "k", "");
    for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_CapsLock, Qt::Key_AltGr, Qt::Key_Dead_Acute})
        QTest::sendKeyEvent(QTest::Click, &box, key, QString(), Qt::NoModifier);
    EXPECT_EQ(box.text(), "k");
    send(box, "", "K");
    EXPECT_EQ(box.text(), "K");
}

} // namespace
} // namespace blockhouse
