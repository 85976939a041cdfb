// The colours of a freshly opened text against the two passes that define them, one after the other.
#include "editor/keyword_table.h"
#include "editor/OpeningColours.h"
#include "editor/textboxbas.h"
#include "platform/richtext/RichTextBox.h"
#include "tests/editor/random_text.h"

#include <gtest/gtest.h>
#include <QPixmap>

#include <memory>

namespace blockhouse {
namespace {

// So that short texts have many pieces.
class SmallPieces : public OpeningColours {
public:
    using OpeningColours::OpeningColours;

    [[nodiscard]] std::size_t leastPiece() const override { return 1; }
};

const std::shared_ptr<const ColouringRule> rule =
    std::make_shared<SmallPieces>(KeywordList(), KeywordColor, CommentDelimiter, CommentHighlight);

// One box that the passes colour, and one that the rule colours; whatever is done to one is done to the other.
class TwoBoxes {
public:
    void setText(const std::string& text) {
        passes_.setText(text);
        colourByPasses();
        rule_.setText(text, rule);
    }

    void colourByPasses() {
        ColorKeywords(nullptr, passes_, KeywordColor, KeywordList(), true);
        HighlightFromChar(nullptr, passes_, CommentHighlight, CommentDelimiter, true);
    }

    template <typename Act>
    void both(Act act) {
        act(passes_);
        act(rule_);
    }

    // What asks for colours here and there writes some styles early.
    void look(std::mt19937& random) {
        const auto at = static_cast<std::ptrdiff_t>(randomBelow(random, 40));
        switch (randomBelow(random, 3)) {
        case 0:
            EXPECT_EQ(rule_.textColorAt(at), passes_.textColorAt(at));
            break;
        case 1:
            EXPECT_EQ(rule_.backgroundAt(at), passes_.backgroundAt(at));
            break;
        default:
            if (randomBelow(random, 20) == 0)
                static_cast<void>(rule_.grab());
        }
    }

    void expectEqual(const std::string& text) {
        EXPECT_EQ(rule_.rtfHeader(), passes_.rtfHeader()) << testing::PrintToString(text);
        EXPECT_EQ(rule_.colouredText(), passes_.colouredText()) << testing::PrintToString(text);
        EXPECT_EQ(rule_.rtf(), passes_.rtf()) << testing::PrintToString(text);
        EXPECT_EQ(rule_.selStart(), passes_.selStart());
    }

private:
    RichTextBox passes_;
    RichTextBox rule_;
};

const std::vector<std::string> fragments = {"Object", "End",  "EndX",  "Weapon", "Body",     "_",     " ",     " ",
                                            ";",      ";",    "\"",    "\r\n",   "\r\n",     "\r",    "\n",    "\xAF",
                                            "\xE9",   "\x80", "\r\n;", "\\par ", "\r\n\xAF", "End\r", "\xAF;", "{\t}"};

// An edit, drawn once and done to both.
void edit(TwoBoxes& boxes, std::mt19937& random) {
    const auto at = static_cast<std::ptrdiff_t>(randomBelow(random, 40));
    const auto length = static_cast<std::ptrdiff_t>(randomBelow(random, 12));
    const std::string piece = randomText(random, fragments, 2);
    const std::size_t kind = randomBelow(random, 6);
    boxes.both([&](RichTextBox& box) {
        switch (kind) {
        case 0:
            return box.undo();
        case 1:
            return box.redo();
        case 2:
            box.setSelStart(at);
            box.setSelLength(length);
            return box.setSelColor(rgb(200, 0, 0));
        default:
            box.setSelStart(at);
            box.setSelLength(length);
            return box.setSelText(piece);
        }
    });
}

TEST(OpeningColours, AreThoseOfBothPassesWhateverIsAskedOrEditedFirst) {
    std::mt19937 random(20261124);
    std::unique_ptr<TwoBoxes> boxes;
    for (int round = 0; round < 10'000 && !testing::Test::HasFailure(); ++round) {
        if (round % 10 == 0) // a box keeps its colour table as long as it lives
            boxes = std::make_unique<TwoBoxes>();
        std::string text = randomText(random, fragments, round % 50 == 0 ? 300 : 25);
        if (round % 7 == 0)
            text += '\0';
        boxes->setText(text);
        for (std::size_t edits = randomBelow(random, 6); edits > 0; --edits) {
            boxes->look(random);
            edit(*boxes, random);
        }
        boxes->expectEqual(text);
    }
}

TEST(OpeningColours, AreThoseOfTheTextBeforeTheEdit) {
    for (const char* text : {"\xAF; the first line may begin so\r\nEnd", "End\r\n; x", "x ; y\r\nEnd"}) {
        for (const std::ptrdiff_t at : {0, 4, 5, 7}) {
            TwoBoxes boxes;
            boxes.setText(text);
            boxes.both([at](RichTextBox& box) {
                box.setSelStart(at);
                box.setSelText("a\r\n");
            });
            boxes.expectEqual(text);
        }
    }
}

TEST(OpeningColours, ComeBackToATextThatWasEdited) {
    RichTextBox box;
    box.setText("Object A ; x\r\nEnd", rule);
    box.setSelStart(0);
    box.setSelLength(6);
    box.setSelColor(rgb(200, 0, 0));
    box.setSelLength(0);
    box.setSelText("x\r\n");
    box.colourBy(rule);
    RichTextBox fresh;
    fresh.setText(box.text(), rule);
    EXPECT_EQ(box.colouredText(), fresh.colouredText());
    EXPECT_TRUE(box.isModified());
    box.undo();
    EXPECT_EQ(box.text(), "Object A ; x\r\nEnd");
}

// Larger than one piece of the usual size.
TEST(OpeningColours, OfALargeText) {
    std::string text;
    text += std::string(9000, 'x') + " End " + std::string(9000, '\xE9') + "; " + std::string(9000, '\x80') + "\r\n";
    while (text.size() < 300'000)
        text += "Object \xC4lpha\r\n  Body = \"a;b\" ; \xAF note End\r\nEnd ; of it\r\n\xAF; left out\r\n";
    const std::shared_ptr<const ColouringRule> usual =
        std::make_shared<OpeningColours>(KeywordList(), KeywordColor, CommentDelimiter, CommentHighlight);
    TwoBoxes boxes;
    boxes.setText(text);
    boxes.both([&](RichTextBox& box) {
        box.setSelStart(200'000);
        box.setSelText("Object x ; y");
    });
    boxes.expectEqual("the large one");
    RichTextBox atOnce;
    atOnce.setText(text, usual);
    RichTextBox inPieces;
    inPieces.setText(text, rule);
    EXPECT_EQ(atOnce.colouredText(), inPieces.colouredText());
}

} // namespace
} // namespace blockhouse
