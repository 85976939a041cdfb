#include "editor/textboxbas.h"
#include "platform/widgets/window_lock.h"
#include "tests/editor/box_look.h"

#include <gtest/gtest.h>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <functional>

namespace blockhouse {
namespace {

class Textboxbas : public testing::Test {
protected:
    void SetUp() override {
        box_->resize(300, 200);
        form_->show();
    }

    void select(std::ptrdiff_t start, std::ptrdiff_t length) {
        box_->setSelStart(start);
        box_->setSelLength(length);
    }

    void color(const std::vector<std::string>& words) { ColorKeywords(form_, *box_, KeywordColor, words, false); }

    void highlight() { HighlightFromChar(form_, *box_, CommentHighlight, ';', false); }

    // Colours so many words in so long a text that events are served in the middle; `event` is one of them.
    template <typename Event>
    void colorServing(std::string_view start, Event event, bool noLock = false) {
        std::string text(start);
        for (int line = 0; line < 5'000; ++line)
            text += "x x x x x x x x x x x x x x x x x x x x x x x x x x x x x x\r\n";
        std::vector<std::string> words{"End"};
        for (int i = 0; i < 40; ++i)
            words.push_back("x y" + std::to_string(i));
        bool served = false;
        QTimer::singleShot(0, [&] {
            served = true;
            event();
        });
        // A pass that follows closely upon the last serving of events, on a fast machine, may end without another.
        for (int attempt = 0; attempt < 1000 && !served; ++attempt) {
            box_->setText(text + "End");
            ColorKeywords(form_, *box_, KeywordColor, words, noLock);
        }
        ASSERT_TRUE(served);
    }

    void TearDown() override { delete form_; }

    QPointer<QWidget> form_ = new QWidget;
    QPointer<RichTextBox> box_ = new RichTextBox(form_);
};

TEST_F(Textboxbas, KeywordPassKeepsSelectionStartAndFirstVisibleLine) {
    box_->setText(numberedLines(200));
    for (const std::vector<std::string>& words : {std::vector<std::string>{"Line", " "}, {"absent"}, {}}) {
        select(400, 5);
        ScrollToLine(form_, *box_, 120, false);
        color(words);
        EXPECT_EQ(box_->selStart(), 400);
        EXPECT_EQ(box_->selLength(), 0);
        EXPECT_EQ(GetFirstVisibleLine(*box_), 120);
        EXPECT_TRUE(form_->updatesEnabled());
    }
    EXPECT_EQ(look(*box_).substr(0, 16), "kkkk....kkkk....");
}

TEST_F(Textboxbas, KeywordPassLocksTheWindowUnlessTheCallerDid) {
    for (const bool noLock : {false, true}) {
        bool updates = false;
        colorServing(
            "", [&] { updates = form_->updatesEnabled(); }, noLock);
        EXPECT_EQ(updates, noLock);
        EXPECT_TRUE(form_->updatesEnabled());
    }
    box_->setText("Line ; comment");
    const WindowUpdateLock callers(form_);
    ColorKeywords(form_, *box_, KeywordColor, {"Line"}, true);
    HighlightFromChar(form_, *box_, CommentHighlight, ';', true);
    ScrollToLine(form_, *box_, 0, true);
    EXPECT_FALSE(form_->updatesEnabled());
}

TEST_F(Textboxbas, KeywordPassGoesOnWithATextThatIsEditedMeanwhile) {
    const struct {
        const char* name;
        std::function<void(RichTextBox&)> edit;
        const char* lookOfTheEnd;
    } edits[] = {
        {"emptied", [](RichTextBox& box) { box.setText(""); }, ""},
        {"shortened", [](RichTextBox& box) { box.setText("x End"); }, "....."},
        {"moved along",
         [](RichTextBox& box) {
             box.setSelStart(0);
             box.setSelText("\x80 new ");
         },
         "..kkk"},
        {"moved back",
         [](RichTextBox& box) {
             box.setSelStart(0);
             box.setSelLength(3);
             box.setSelText("");
         },
         "..kkk"},
    };

    for (const std::string_view start : {"", "\xE9 "}) {
        for (const auto& [name, edit, lookOfTheEnd] : edits) {
            colorServing(start, [&edit = edit, this] { edit(*box_); });
            const std::string letters = look(*box_);
            EXPECT_EQ(letters.substr(letters.size() - std::min<std::size_t>(letters.size(), 5)), lookOfTheEnd) << name;
            EXPECT_EQ(letters.find_first_not_of('.'), letters.find("kkk")) << name << ": nothing else is coloured";
        }
    }
}

TEST_F(Textboxbas, KeywordPassEndsWhenItsBoxOrItsWindowIsDeleted) {
    colorServing("", [&] { delete box_; });
    EXPECT_TRUE(form_->updatesEnabled());
    box_ = new RichTextBox(form_);
    colorServing("\xE9 ", [&] { delete form_; });
    EXPECT_FALSE(box_);
    QWidget another;
    EXPECT_TRUE(WindowUpdateLock(&another).isHeld()) << "the lock went with the window";
}

TEST_F(Textboxbas, HighlightRunsFromTheFirstDelimiterOutsideQuotesToTheLastCharacterOfTheLine) {
    const struct {
        std::string_view text;
        std::string_view expected;
    } cases[] = {
        {";", "h"},
        {"a;", ".h"},
        {"a ; b ; c\r\nd\r\n;\r\n", "..hhhhhhh.....h.."},
        {";x\n;y\r;z", "hh.hh.hh"},
        {"a = \"b\" ; c", "........hhh"},
        {"a = \"b;c\" ; d\r\ne ; f", ".................hhh"}, // after quotes, never on that line
        {"x = \"a;b\"", "........."},
        {"\"\"\"; a", "......"},
        {"\t{\\} ; \xE9\x80", ".....hhhh"},
        {"\xAF ; a\r\n\xAF ; b\r\nc \xAF ; d", "..hhh.............hhh"}, // a macron begins a line
    };

    for (const auto& [text, expected] : cases) {
        box_->setText(text);
        select(1, 1);
        highlight();
        EXPECT_EQ(look(*box_), expected) << text;
        EXPECT_EQ(box_->text(), text);
        EXPECT_EQ(box_->selStart() + box_->selLength(), 0) << text;
        EXPECT_TRUE(form_->updatesEnabled());
    }
}

TEST_F(Textboxbas, WithoutADelimiterNothingIsTouched) {
    box_->setText(";");
    highlight(); // lists the colour
    box_->setText(numberedLines(200));
    select(400, 5);
    ScrollToLine(form_, *box_, 120, false);
    const std::string header = box_->rtfHeader();
    highlight();
    EXPECT_EQ(box_->selStart(), 400);
    EXPECT_EQ(box_->selLength(), 5);
    EXPECT_EQ(GetFirstVisibleLine(*box_), 120);
    EXPECT_EQ(box_->rtfHeader(), header);

    box_->setText(numberedLines(150) + ";\r\n" + numberedLines(50));
    ScrollToLine(form_, *box_, 120, false);
    highlight();
    EXPECT_EQ(GetFirstVisibleLine(*box_), 120) << "nor does the view move with one";
}

TEST_F(Textboxbas, HighlightLeavesTextColoursAlone) {
    box_->setText("\"a;\" End ; b End ; c\r\nEnd ; End");
    color({"End"});
    select(9, 1); // the second delimiter
    box_->setSelColor(KeywordColor);
    highlight();
    EXPECT_EQ(look(*box_), ".....kkk.k...kkk......kkk.hhbbb");
    EXPECT_EQ(ColorTable(), (std::vector<Colour>{0, KeywordColor, CommentHighlight}));

    // The colour is listed now, so that no delimiter is needed to list it.
    box_->setText("a ; b");
    select(2, 1);
    box_->setSelColor(KeywordColor);
    highlight();
    EXPECT_EQ(look(*box_), "..bhh");
}

TEST_F(Textboxbas, ColorTableIsThatOfTheBoxReadLast) {
    RichTextBox plain;
    ReadColorTable(plain);
    EXPECT_EQ(ColorTable(), std::vector<Colour>{0});
    box_->setText("a");
    color({"a"});
    EXPECT_EQ(ColorTable(), std::vector<Colour>{0});
    ReadColorTable(*box_);
    EXPECT_EQ(ColorTable(), (std::vector<Colour>{0, KeywordColor}));
    ReadColorTable(plain);
    EXPECT_EQ(ColorTable(), std::vector<Colour>{0});
}

TEST_F(Textboxbas, ScrollToLineGetsThereOrAsNearAsItCan) {
    box_->setText(numberedLines(500));
    ScrollLines(*box_, 0, 100'000);
    const std::int32_t last = GetFirstVisibleLine(*box_);
    ASSERT_GT(last, 400);
    ASSERT_LT(last, 500);
    const std::int32_t lines[] = {0, 1, 37, 38, 250, last - 1, last, last + 1, 499, 100'000, -5};
    for (const std::int32_t from : lines) {
        for (const std::int32_t to : lines) {
            ScrollToLine(form_, *box_, from, false);
            ScrollToLine(form_, *box_, to, false);
            EXPECT_EQ(GetFirstVisibleLine(*box_), std::clamp(to, 0, last)) << from << " to " << to;
        }
    }
    EXPECT_TRUE(form_->updatesEnabled());
    box_->setSelStart(8);
    EXPECT_EQ(GetCurrentLine(*box_), 1);

    box_->setText(numberedLines(3));
    ScrollToLine(form_, *box_, 2, false);
    EXPECT_EQ(GetFirstVisibleLine(*box_), 0) << "all of it is visible";
}

} // namespace
} // namespace blockhouse
