// The find panel and the keys that search, driven in an editor window.
#include "editor/FindPanel.h"
#include "editor/fr_edit.h"
#include "platform/widgets/NoticeArea.h"
#include "tests/editor/FakeHost.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QTest>

#include <string>
#include <utility>

namespace blockhouse {
namespace {

class Finding : public testing::Test {
protected:
    void SetUp() override {
        editor.show();
        editor.Openfile(folder.file("data.ini", "Foo bar foo\r\nfoo End FOO\r\nWeaponEnd x\r\nEnd"));
        editor.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
        trigger("mnu_Find");
    }

    void trigger(const char* command) { editor.findChild<QAction*>(QLatin1String(command))->trigger(); }

    [[nodiscard]] RichTextBox& box() { return *editor.txt_edit; }

    void select(std::ptrdiff_t start, std::ptrdiff_t length) {
        box().setSelStart(start);
        box().setSelLength(length);
    }

    // By the keyboard, wherever the focus is.
    static void press(Qt::Key key, Qt::KeyboardModifiers held = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, held);
    }

    // What the panel says of the last search, "-" where it has no line for it.
    [[nodiscard]] std::string said() const {
        const auto* line = panel.findChild<QLabel*>(QStringLiteral("labelOutcome"));
        return line ? line->text().toStdString() : "-";
    }

    [[nodiscard]] bool isTinted() const {
        return panel.Txt_find->palette().color(QPalette::Base) == QColor(255, 205, 205);
    }

    // Of the place, in the editor window.
    [[nodiscard]] QRect onScreen(std::ptrdiff_t start, std::ptrdiff_t length) {
        const QRect place = box().characterRect(start).united(box().characterRect(start + length - 1));
        return place.translated(box().viewport()->mapTo(&editor, QPoint()));
    }

    void expectTopLine(int line) { EXPECT_EQ(box().firstVisibleLine(), line); }

    void expectSelected(std::ptrdiff_t start, std::ptrdiff_t length) {
        EXPECT_EQ(box().selStart(), start);
        EXPECT_EQ(box().selLength(), length);
    }

    static void click(QPushButton* button) { QTest::mouseClick(button, Qt::LeftButton); }

    TempFolder folder;
    FakeHost host;
    fr_edit editor{host};
    FindPanel& panel = *editor.FindFrame;
};

TEST_F(Finding, StepsThroughTheOccurrencesWithoutWrapping) {
    EXPECT_TRUE(panel.isVisible());
    panel.Txt_find->setText(QStringLiteral("FOO"));
    click(panel.Command2);
    expectSelected(0, 3);
    click(panel.Command2);
    expectSelected(0, 3);
    for (const std::ptrdiff_t next : {8, 13, 21}) {
        click(panel.Command3);
        expectSelected(next, 3);
    }
    expectTopLine(0); // a short text has nothing to scroll
    click(panel.Command3);
    expectSelected(21, 3);

    box().setText("xxxx");
    panel.Txt_find->setText(QStringLiteral("xx"));
    click(panel.Command2);
    click(panel.Command3);
    expectSelected(2, 2);
}

TEST_F(Finding, NothingFoundSelectsAsMuchFromTheCaretOn) {
    box().setSelStart(4);
    panel.Txt_find->setText(QStringLiteral("absent"));
    const QPalette before = panel.Txt_find->palette();
    click(panel.Command2);
    expectSelected(4, 6);
    EXPECT_NE(panel.Txt_find->palette(), before);
    panel.Txt_find->setText({});
    EXPECT_EQ(panel.Txt_find->palette(), before);
    for (QPushButton* button : {panel.Command2, panel.Command3, panel.replaceButton, panel.replaceAllButton})
        button->click();
    expectSelected(4, 6);
}

TEST_F(Finding, AWholeWordIsOneThatABlankFollows) {
    panel.Check1->setChecked(true);
    panel.Txt_find->setText(QStringLiteral("end"));
    click(panel.Command2);
    expectSelected(17, 3);
    click(panel.Command3);
    expectSelected(32, 3);
    click(panel.Command3);
    expectSelected(32, 3);
}

TEST_F(Finding, KeysOfThePanel) {
    QTest::keyClicks(panel.Txt_find, "foo");
    for (const std::ptrdiff_t next : {0, 8}) {
        QTest::keyClick(panel.Txt_find, Qt::Key_Return);
        expectSelected(next, 3);
    }
    QTest::keyClick(panel.Txt_find, Qt::Key_Escape);
    EXPECT_FALSE(panel.isVisible());
    editor.Toolbar1->actions().at(3)->trigger();
    EXPECT_TRUE(panel.isVisible());
    EXPECT_EQ(panel.Txt_find->text(), QStringLiteral("foo"));
    click(panel.Command1);
    EXPECT_FALSE(panel.isVisible());
    trigger("mnu_Find");
    QTest::keyClick(&box(), Qt::Key_Escape);
    EXPECT_FALSE(panel.isVisible());
}

TEST_F(Finding, ReplacesOneByOneAndAllInOneUndoStep) {
    EXPECT_FALSE(panel.txt_replace->isEnabled());
    EXPECT_FALSE(panel.replaceButton->isVisible());
    QTest::mouseClick(panel.Check2, Qt::LeftButton, {}, QPoint(8, panel.Check2->height() / 2));
    EXPECT_TRUE(panel.txt_replace->isEnabled());
    panel.Txt_find->setText(QStringLiteral("foo"));
    panel.txt_replace->setText(QStringLiteral("foofoo"));
    const std::string before = box().text();
    click(panel.replaceButton);
    expectSelected(0, 3);
    click(panel.replaceButton);
    EXPECT_EQ(box().text(), "foofoo" + before.substr(3));
    expectSelected(11, 3);
    box().undo();
    EXPECT_EQ(box().text(), before);
    click(panel.replaceAllButton);
    EXPECT_EQ(box().text(), "foofoo bar foofoo\r\nfoofoo End foofoo\r\nWeaponEnd x\r\nEnd");
    box().undo();
    EXPECT_EQ(box().text(), before);
}

TEST_F(Finding, ThePanelFollowsTheCursorWhileItsStripIsHeld) {
    QTest::mousePress(panel.Picture2, Qt::LeftButton);
    EXPECT_TRUE(panel.Timer2->isActive());
    QCursor::setPos(editor.frameGeometry().topLeft() + QPoint(113, 173));
    EXPECT_TRUE(QTest::qWaitFor([this] { return panel.pos() == QPoint(100, 100); }));
    QTest::mouseRelease(panel.Picture2, Qt::LeftButton);
    EXPECT_FALSE(panel.Timer2->isActive());
}

TEST_F(Finding, ReturnAndF3GoOnFromTheSelectionAndRoundTheEnds) {
    const std::string fromStart = " \u2013 from the start again";
    const std::string fromEnd = " \u2013 from the end again";
    box().setSelStart(10);
    panel.Txt_find->setFocus();
    QTest::keyClicks(panel.Txt_find, "foo");

    const struct {
        Qt::Key key;
        Qt::KeyboardModifiers held;
        std::ptrdiff_t start;
        std::string said;
    } steps[] = {
        {Qt::Key_Return, {}, 13, "3 of 4"},
        {Qt::Key_Return, Qt::ShiftModifier, 8, "2 of 4"},
        {Qt::Key_F3, {}, 13, "3 of 4"},
        {Qt::Key_F3, {}, 21, "4 of 4"},
        {Qt::Key_Return, {}, 0, "1 of 4" + fromStart},
        {Qt::Key_F3, Qt::ShiftModifier, 21, "4 of 4" + fromEnd},
        {Qt::Key_F3, {}, 0, "1 of 4" + fromStart},
        {Qt::Key_Return, {}, 8, "2 of 4"},
    };

    for (const auto& [key, held, start, words] : steps) {
        press(key, held);
        expectSelected(start, 3);
        EXPECT_EQ(said(), words);
        EXPECT_TRUE(panel.Txt_find->hasFocus());
    }
    ASSERT_NE(said(), "-");
    EXPECT_EQ(panel.findChild<QLabel*>(QStringLiteral("labelOutcome"))->accessibleName(), QStringLiteral("2 of 4"));
    box().setSelText("");
    EXPECT_EQ(said(), "") << "of a text that was there before";
    press(Qt::Key_Return);
    EXPECT_EQ(said(), "2 of 3") << "counted again";
}

TEST_F(Finding, AnotherTextIsLookedForFromWhereTheLastOneWas) {
    panel.Txt_find->setFocus();
    QTest::keyClicks(panel.Txt_find, "foo");
    press(Qt::Key_Return);
    panel.Txt_find->selectAll();
    QTest::keyClicks(panel.Txt_find, "end");
    press(Qt::Key_Return);
    expectSelected(17, 3);
    EXPECT_EQ(said(), "1 of 3");

    // What a search across files selects.
    select(23, 9);
    panel.Txt_find->selectAll();
    QTest::keyClicks(panel.Txt_find, "bar");
    press(Qt::Key_Return);
    expectSelected(4, 3);
}

TEST_F(Finding, TheButtonFindSearchesAllOfTheTextAfterAnEdit) {
    panel.Txt_find->setText(QStringLiteral("foo"));
    click(panel.Command2);
    EXPECT_EQ(said(), "1 of 4");
    panel.Txt_find->setText(QStringLiteral("end"));
    expectSelected(0, 3);
    click(panel.Command2);
    expectSelected(17, 3);
    select(0, 11);
    click(panel.Command2);
    EXPECT_EQ(said(), "Not found in what was selected");
    select(39, 0);
    click(panel.Command3);
    EXPECT_EQ(said(), "Not found from here on");
    panel.Txt_find->setText(QStringLiteral("absent"));
    click(panel.Command2);
    EXPECT_EQ(said(), "Not found");
    EXPECT_TRUE(isTinted());
}

TEST_F(Finding, InVainReturnAndF3SelectNothingAndScrollNowhere) {
    QString lines;
    for (int line = 0; line < 300; ++line)
        lines += QStringLiteral("a line\r\n");
    box().setText(lines.toStdString());
    box().scrollLines(0, 100);
    select(10, 2);
    panel.Txt_find->setFocus();
    QTest::keyClicks(panel.Txt_find, "absent");
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_F3}) {
        for (const Qt::KeyboardModifiers held : {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ShiftModifier)}) {
            press(key, held);
            expectSelected(10, 2);
            expectTopLine(100);
            EXPECT_EQ(said(), "Not found");
            EXPECT_TRUE(isTinted());
        }
    }
}

TEST_F(Finding, APressAnywhereOnThePanelTakesTheKeyboardFromTheText) {
    for (const QPoint place : {panel.Picture2->geometry().center(), panel.txt_replace->geometry().center(),
                               QPoint(panel.width() / 2, panel.height() - 2)}) {
        box().setFocus();
        QTest::mouseClick(editor.windowHandle(), Qt::LeftButton, {}, panel.mapTo(&editor, place));
        EXPECT_TRUE(panel.Txt_find->hasFocus()) << place.y();
    }
    panel.Check1->setFocus();
    QTest::mouseClick(editor.windowHandle(), Qt::LeftButton, {},
                      panel.mapTo(&editor, panel.Picture2->geometry().center()));
    EXPECT_TRUE(panel.Check1->hasFocus());
}

TEST_F(Finding, F3WorksInTheTextWhileThePanelIsHidden) {
    press(Qt::Key_Escape);
    ASSERT_FALSE(panel.isVisible());
    ASSERT_TRUE(box().hasFocus());
    press(Qt::Key_F3);
    EXPECT_TRUE(panel.isVisible()) << "there is no text to find yet";
    EXPECT_TRUE(panel.Txt_find->hasFocus());
    QTest::keyClicks(panel.Txt_find, "foo");
    press(Qt::Key_Escape);
    for (const std::ptrdiff_t start : {0, 8}) {
        press(Qt::Key_F3);
        expectSelected(start, 3);
    }
    press(Qt::Key_F3, Qt::ShiftModifier);
    expectSelected(0, 3);
    const auto notice = [&] { return editor.notices->textOf(QStringLiteral("wentRound")); };
    EXPECT_EQ(notice(), QString());
    press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(notice(), QStringLiteral("4 of 4 \u2013 from the end again"));
    EXPECT_FALSE(panel.isVisible());
    EXPECT_TRUE(box().hasFocus());

    box().setText("nothing of it");
    press(Qt::Key_F3);
    EXPECT_TRUE(panel.isVisible()) << "to say so";
    EXPECT_EQ(said(), "Not found");
    EXPECT_TRUE(box().hasFocus());
}

TEST_F(Finding, OpenedThePanelTakesOverASelectionWithinALine) {
    press(Qt::Key_Escape);
    select(4, 3);
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(panel.Txt_find->text(), QStringLiteral("bar"));
    QTest::keyClicks(panel.Txt_find, "end");
    EXPECT_EQ(panel.Txt_find->text(), QStringLiteral("end")) << "typing replaces it";
    click(panel.Command2);
    expectSelected(17, 3);
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(panel.Txt_find->text(), QStringLiteral("end")) << "what a search selected is looked for already";

    press(Qt::Key_Escape);
    for (const auto& [start, length] : {std::pair(8, 8), std::pair(5, 0)}) {
        select(start, length);
        press(Qt::Key_F, Qt::ControlModifier);
        EXPECT_EQ(panel.Txt_find->text(), QStringLiteral("end")) << length << " letters";
    }
}

TEST_F(Finding, ACharacterThatNoFileHoldsIsNeitherFoundNorPutIn) {
    const QString polish = QStringLiteral("fo\u0142");
    const std::string told = "\"\u0142\" is not a character of these files";
    box().setText("fo? foo");
    panel.Txt_find->setFocus();
    panel.Txt_find->setText(polish);
    panel.Check2->setChecked(true);
    panel.txt_replace->setText(QStringLiteral("x"));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_F3}) {
        press(key);
        expectSelected(0, 0);
        EXPECT_EQ(said(), told);
        EXPECT_TRUE(isTinted());
    }
    for (QPushButton* button : {panel.Command2, panel.Command3, panel.replaceButton, panel.replaceAllButton}) {
        select(0, 3);
        click(button);
        EXPECT_EQ(said(), told) << button->objectName().toStdString();
        EXPECT_EQ(box().text(), "fo? foo");
    }

    panel.Txt_find->setText(QStringLiteral("foo"));
    panel.txt_replace->setText(polish);
    select(4, 3);
    for (QPushButton* button : {panel.replaceButton, panel.replaceAllButton}) {
        click(button);
        EXPECT_EQ(box().text(), "fo? foo");
        expectSelected(4, 3);
        EXPECT_EQ(said(), told);
        EXPECT_FALSE(isTinted()) << "the text to find is not to blame";
    }
}

TEST_F(Finding, ThePanelMovesOffThePlaceFound) {
    panel.Txt_find->setText(QStringLiteral("needle"));
    const QPoint design = panel.pos();
    box().setText("needle\r\nx");
    click(panel.Command2);
    EXPECT_EQ(panel.pos(), design) << "it hides nothing";
    for (const int blanks : {10, 16, 22, 30}) {
        panel.move(design);
        box().setText(std::string(static_cast<std::size_t>(blanks), ' ') + "needle");
        const QRect hit = onScreen(blanks, 6);
        ASSERT_TRUE(panel.geometry().intersects(hit)) << blanks;
        click(panel.Command2);
        expectSelected(blanks, 6);
        EXPECT_FALSE(panel.geometry().intersects(onScreen(blanks, 6))) << blanks;
        EXPECT_TRUE(editor.rect().contains(panel.geometry())) << blanks;
    }
    panel.move(design);
    panel.Txt_find->setFocus();
    press(Qt::Key_Return);
    EXPECT_FALSE(panel.geometry().intersects(onScreen(30, 6))) << "found by a key";
}

TEST_F(Finding, APlaceFarToTheRightIsScrolledToAndOneAtTheLeftBack) {
    const std::string line = "needle" + std::string(994, '.') + "NEEDLE" + std::string(500, '.') + "\r\n";
    box().setText(line + line);
    panel.Txt_find->setText(QStringLiteral("needle"));
    const QRect view(box().viewport()->mapTo(&editor, QPoint()), box().viewport()->size());
    const auto wholeInView = [&](std::ptrdiff_t start) {
        const QRect place = onScreen(start, 6);
        return place.left() >= view.left() && place.right() <= view.right();
    };
    const int leftmost = onScreen(0, 1).left();
    panel.Txt_find->setFocus();
    for (const std::ptrdiff_t start : {0, 1000, 1508, 2508, 0}) {
        press(Qt::Key_Return);
        expectSelected(start, 6);
        EXPECT_TRUE(wholeInView(start)) << start;
        if (start % 1508 == 0) {
            EXPECT_EQ(onScreen(start, 1).left(), leftmost) << start;
        }
    }
    click(panel.Command3);
    EXPECT_TRUE(wholeInView(1000)) << "found by the button";
    click(panel.Command2);
    EXPECT_TRUE(wholeInView(1000));

    // Wider than the view: where it begins.
    box().setText(std::string(500, '.') + "a" + std::string(400, 'b') + "...");
    panel.Txt_find->setText(QStringLiteral("a") + QString(400, QLatin1Char('b')));
    click(panel.Command2);
    expectSelected(500, 401);
    EXPECT_GE(onScreen(500, 1).left(), view.left());
    EXPECT_LE(onScreen(500, 1).left(), view.left() + 20);
}

TEST_F(Finding, JumpsScrollSideways) {
    std::string text;
    for (const char* name : {"AlphaTower", "BravoTower", "CharlieTower"})
        text += std::string("\r\nObject ") + name + "\r\n" + std::string(600, ' ') + "Armor = A\r\nEnd\r\n";
    host.jumpList.add("Armor");
    fr_edit window(host);
    window.show();
    window.Openfile(folder.file("wide.ini", text));
    ASSERT_EQ(window.List1->count(), 3);
    RichTextBox& wide = *window.txt_edit;
    const auto inView = [&](CaretPosition at) {
        const QRect place = wide.characterRect(at);
        return place.left() >= 0 && place.right() <= wide.viewport()->width();
    };
    window.List1->setCurrentIndex(0);
    window.List1->setCurrentIndex(1);
    ASSERT_EQ(window.Combo1->count(), 1);
    window.Combo1->setCurrentIndex(0);
    const auto armor = static_cast<std::ptrdiff_t>(text.find("Armor", text.find("Bravo")));
    EXPECT_EQ(wide.selStart(), armor + 1);
    EXPECT_TRUE(inView(armor));
    EXPECT_TRUE(inView(armor + 4));
    window.List1->setCurrentIndex(0);
    EXPECT_TRUE(inView(wide.selStart())) << "back at the line's start";
}

} // namespace
} // namespace blockhouse
