#include "editor/fr_edit.h"
#include "tests/editor/FakeHost.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <QTest>

namespace blockhouse {
namespace {

class PlaceLabel : public testing::Test {
protected:
    void open(const std::string& text) {
        editor_.resize(900, 500);
        editor_.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&editor_));
        ASSERT_TRUE(editor_.Openfile(temp_.file("a.ini", text)));
        editor_.txt_edit->setFocus();
    }

    // What the label says once the window has been painted.
    [[nodiscard]] std::string said() {
        editor_.txt_edit->viewport()->repaint();
        return editor_.PlaceLabel->text().toStdString();
    }

    void press(Qt::Key key) { QTest::keyClick(editor_.txt_edit, key); }

    TempFolder temp_;
    FakeHost host_;
    fr_edit editor_{host_};
};

TEST_F(PlaceLabel, FollowsTheCaretAndTheText) {
    open("Object Abc\r\n  Body = \xE9t\xE9\r\n    h = 1\r\n  End\r\nEnd\r\nWeapon Def\r\nEnd\r\n");
    EXPECT_EQ(said(), "Ln 1, Col 1  Object Abc");
    for (const auto& [key, expected] : {std::pair(Qt::Key_Down, "Ln 2, Col 1  Object Abc > Body = \xC3\xA9t\xC3\xA9"),
                                        {Qt::Key_End, "Ln 2, Col 13  Object Abc > Body = \xC3\xA9t\xC3\xA9"},
                                        {Qt::Key_X, "Ln 2, Col 14  Object Abc > Body = \xC3\xA9t\xC3\xA9x"},
                                        {Qt::Key_Backspace, "Ln 2, Col 13  Object Abc > Body = \xC3\xA9t\xC3\xA9"}}) {
        press(key);
        EXPECT_EQ(said(), expected);
    }
    for (int line = 0; line < 4; ++line)
        press(Qt::Key_Down);
    EXPECT_EQ(said(), "Ln 6, Col 11  Weapon Def");
    QTest::keyClick(editor_.txt_edit, Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(said(), "Ln 8, Col 1");
    editor_.txt_edit->undo(); // what was erased
    editor_.txt_edit->undo(); // what was typed
    EXPECT_FALSE(editor_.txt_edit->isModified()) << "looking changes nothing";
}

TEST_F(PlaceLabel, BothEndsOfABlockAreMarkedAndOneLeadsToTheOther) {
    open("Object \xE9t\xE9\r\n  Body = X\r\n    h = 1\r\n  End\r\nEnd\r\n");
    RichTextBox& box = *editor_.txt_edit;
    // The marked text, with a stroke where it is interrupted.
    const auto marked = [&] {
        static_cast<void>(said());
        std::string text;
        for (std::ptrdiff_t at = 0; at < box.textLength(); ++at)
            if (box.isMarked(RichTextBox::Mark::Pair, at))
                text += box.textAt(at, 1);
            else if (!text.empty() && text.back() != '|')
                text += '|';
        return text;
    };
    const auto otherEnd = [&] { QTest::keyClick(&box, Qt::Key_M, Qt::ControlModifier); };
    EXPECT_EQ(marked(), "Object|End|");
    otherEnd();
    EXPECT_EQ(said(), "Ln 5, Col 1  Object \xC3\xA9t\xC3\xA9");
    EXPECT_EQ(marked(), "Object|End|");
    otherEnd();
    EXPECT_EQ(box.caret(), 0);
    press(Qt::Key_Down);
    EXPECT_EQ(marked(), "") << "beside the word";
    otherEnd();
    EXPECT_EQ(marked(), "Body|End|") << "from inside to the opener";
    QTest::keyClick(&box, Qt::Key_X);
    EXPECT_EQ(marked(), "xBody|End|") << "a word with deeper lines";
    box.undo();
    EXPECT_EQ(marked(), "Body|End|");

    int looks = 0;
    QObject::connect(&box, &RichTextBox::looksDifferent, [&looks] { ++looks; });
    EXPECT_EQ(marked(), "Body|End|");
    EXPECT_EQ(looks, 0) << "marks that stay are no reason to look again";

    const std::string rtf = box.rtf();
    press(Qt::Key_Down);
    EXPECT_EQ(marked(), "");
    EXPECT_EQ(box.rtf(), rtf) << "marks are no colours";
    EXPECT_FALSE(box.isModified());
}

TEST_F(PlaceLabel, IsCutOffWhereThereIsNoRoom) {
    open("Object AVeryLongNameThatNoToolbarHasRoomForBesideItsButtons\r\nEnd\r\n");
    editor_.resize(480, 400);
    const std::string whole = "Ln 1, Col 1  Object AVeryLongNameThatNoToolbarHasRoomForBesideItsButtons";
    EXPECT_NE(said(), whole);
    EXPECT_EQ(editor_.PlaceLabel->toolTip().toStdString(), whole);
    const QRect label = editor_.PlaceLabel->geometry();
    EXPECT_GE(label.left(), editor_.Toolbar1->sizeHint().width());
    EXPECT_LT(label.right(), 480);
    EXPECT_LE(editor_.PlaceLabel->fontMetrics().horizontalAdvance(editor_.PlaceLabel->text()), label.width());
}

} // namespace
} // namespace blockhouse
