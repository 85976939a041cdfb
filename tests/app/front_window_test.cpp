// Where keys go: to the child window that can be seen, whatever was opened, closed, minimised or hidden.
#include "app/Program.h"
#include "editor/FindPanel.h"
#include "editor/fr_edit.h"
#include "findref/fr_findref.h"
#include "placement/Form2.h"
#include "platform/widgets/yield.h"
#include "shell/Fr_main.h"
#include "tests/support/MessageBoxReader.h"
#include "tests/support/TempFolder.h"
#include "tools/Fr_Directory.h"
#include "tools/Fr_options.h"

#include <gtest/gtest.h>
#include <QAction>
#include <QClipboard>
#include <QListView>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>

#include <filesystem>
#include <memory>

namespace blockhouse {
namespace {

class FrontWindowOfThree : public testing::Test {
protected:
    enum Row { One, Three, Two, Vanished }; // in the tree's order

    void SetUp() override {
        for (const char* file : {"data/one.ini", "data/two.ini", "data/three.ini", "data/vanished.ini"})
            temp_.file(file, "Object Alphaone\r\n  Body = one ; two\r\nEnd\r\n");
        temp_.file("Dirs.lst", temp_.path("data") + "\r\n");
        program_ = std::make_unique<Program>(temp_.path());
        main().resize(1000, 700);
        main().show();
        main().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&main()));
        main().Tree1->expandAll();
    }

    [[nodiscard]] Fr_main& main() const { return program_->fr_main(); }

    void doubleClick(Row row) {
        QTreeView& tree = *main().Tree1;
        const QModelIndex file = tree.model()->index(row, 0, tree.model()->index(0, 0));
        const QPoint at = tree.visualRect(file).center();
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, at);
    }

    fr_edit* open(Row row) {
        doubleClick(row);
        return qobject_cast<fr_edit*>(main().mdiArea()->subWindowList().last()->widget());
    }

    void clickBar(int button) {
        QTest::mouseClick(main().Toolbar1->widgetForAction(main().Toolbar1->actions().at(button)), Qt::LeftButton);
    }

    // What a key press does: it goes to whatever has the keyboard.
    static void press(Qt::Key key, Qt::KeyboardModifiers held = {}) {
        QWidget* focus = QApplication::focusWidget();
        ASSERT_TRUE(focus);
        QTest::keyClick(focus, key, held);
        QCoreApplication::processEvents();
    }

    static void typeX() {
        QWidget* focus = QApplication::focusWidget();
        ASSERT_TRUE(focus);
        QTest::keyClick(focus, 'x');
    }

    // The names of the editors that the letter x goes to, and of the menus that the menu bar shows.
    std::string whereKeysGo() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const auto editors = main().findChildren<fr_edit*>();
        std::vector<std::ptrdiff_t> before;
        for (const fr_edit* editor : editors)
            before.push_back(editor->txt_edit->textLength());
        typeX();
        std::string where;
        for (qsizetype i = 0; i < editors.size(); ++i) {
            if (editors[i]->txt_edit->textLength() == before[static_cast<std::size_t>(i)])
                continue;
            where += editors[i]->windowTitle().toStdString();
            if (editors[i]->parentWidget()->isMinimized() || !editors[i]->isVisible())
                where += " which cannot be seen";
        }
        return where + (showsEditorMenus() ? " with menus" : "");
    }

    [[nodiscard]] bool showsEditorMenus() const {
        for (const QAction* menu : main().menuBar()->actions())
            if (menu->menu() && qobject_cast<fr_edit*>(menu->menu()->parent()))
                return true;
        return false;
    }

    TempFolder temp_;
    std::unique_ptr<Program> program_;
};

TEST_F(FrontWindowOfThree, AFileThatFinishesLoadingTakesNoKeyboardFromALaterOne) {
    const EagerYield eager;
    // At whatever moment of loading the first the second is opened.
    for (int moment = 1; moment < 12; ++moment) {
        QTimer ticking;
        bool openedSecond = false;
        QObject::connect(&ticking, &QTimer::timeout, [&, left = moment]() mutable {
            if (--left == 0) {
                ticking.stop();
                openedSecond = true;
                doubleClick(Two);
            }
        });
        ticking.start(0);
        doubleClick(One);
        EXPECT_TRUE(openedSecond) << moment;
        EXPECT_EQ(whereKeysGo(), "/two.ini with menus") << moment;
        main().mdiArea()->closeAllSubWindows();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
}

TEST_F(FrontWindowOfThree, AFileThatFinishesLoadingTakesNoKeyboardFromTheTree) {
    const EagerYield eager;
    for (int moment = 1; moment < 12; ++moment) {
        QTimer ticking;
        QObject::connect(&ticking, &QTimer::timeout, [&, left = moment]() mutable {
            if (--left == 0) {
                ticking.stop();
                QTest::mouseClick(main().Tree1->viewport(), Qt::LeftButton, {}, QPoint(20, 5));
                EXPECT_TRUE(main().Tree1->hasFocus());
            }
        });
        ticking.start(0);
        doubleClick(One);
        QCoreApplication::processEvents();
        EXPECT_FALSE(ticking.isActive());
        EXPECT_TRUE(main().Tree1->hasFocus()) << moment;
        EXPECT_TRUE(showsEditorMenus());
        main().mdiArea()->closeAllSubWindows();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
}

TEST_F(FrontWindowOfThree, WhileAFileLoadsNothingIsTypedButTheKeysOfTheWindowsWork) {
    const EagerYield eager;
    open(Two);
    bool pressed = false;
    QTimer::singleShot(0, [&] {
        pressed = true;
        typeX();
        press(Qt::Key_V, Qt::ControlModifier);
        press(Qt::Key_F6); // from the text to the bar
        EXPECT_TRUE(qobject_cast<QToolButton*>(QApplication::focusWidget()));
    });
    QGuiApplication::clipboard()->setText(QStringLiteral("pasted"));
    const fr_edit* one = open(One);
    EXPECT_TRUE(pressed);
    EXPECT_EQ(one->txt_edit->text(), one->Filetext);
}

TEST_F(FrontWindowOfThree, AFileThatCannotBeOpenedLeavesTheOneThatIsSeenInFront) {
    for (const bool maximised : {false, true}) {
        open(One);
        fr_edit* two = open(Two);
        if (maximised)
            two->parentWidget()->showMaximized();
        std::filesystem::remove(temp_.path("data/vanished.ini"));
        MessageBoxReader boxes;
        doubleClick(Vanished);
        EXPECT_EQ(boxes.messages().size(), 1);
        main().activateWindow(); // the box is gone: what a window manager does
        ASSERT_TRUE(QTest::qWaitForWindowActive(&main()));
        EXPECT_EQ(whereKeysGo(), "/two.ini with menus");
    }
}

TEST_F(FrontWindowOfThree, HidingTheTreeLeavesTheKeyboardToTheWindowThatIsSeen) {
    open(One);
    fr_edit* two = open(Two);
    QTest::mouseClick(main().Tree1->viewport(), Qt::LeftButton, {}, QPoint(20, 5));
    ASSERT_TRUE(main().Tree1->hasFocus());
    QTest::mouseClick(main().picPlane->findChild<QPushButton*>(QStringLiteral("Command1")), Qt::LeftButton);
    ASSERT_FALSE(main().explorerVisible());
    EXPECT_EQ(whereKeysGo(), "/two.ini with menus");

    main().setExplorerVisible(true);
    QTest::mouseClick(main().Tree1->viewport(), Qt::LeftButton, {}, QPoint(20, 5));
    ASSERT_TRUE(main().Tree1->hasFocus());
    two->mnu_fileex->trigger();
    ASSERT_FALSE(main().explorerVisible());
    EXPECT_EQ(whereKeysGo(), "/two.ini with menus");
}

TEST_F(FrontWindowOfThree, ClosingAndMinimisingLeadToTheTopmostThatIsSeen) {
    fr_edit* one = open(One);
    fr_edit* two = open(Two);
    fr_edit* three = open(Three);
    one->parentWidget()->showNormal();
    two->parentWidget()->showNormal();
    QTest::mouseClick(two->txt_edit->viewport(), Qt::LeftButton);
    EXPECT_EQ(whereKeysGo(), "/two.ini with menus");
    two->parentWidget()->showMinimized();
    EXPECT_EQ(whereKeysGo(), "/one.ini with menus") << "which lies above the third by now";
    one->parentWidget()->close();
    EXPECT_EQ(whereKeysGo(), "/three.ini with menus");
    clickBar(1); // the third's, which hides it: only the second is left, minimised
    ASSERT_TRUE(three->parentWidget()->isMinimized());
    QCoreApplication::processEvents();
    EXPECT_TRUE(main().Tree1->hasFocus()) << "nothing else can be seen";
    EXPECT_FALSE(showsEditorMenus());
    clickBar(0);
    EXPECT_EQ(whereKeysGo(), "/two.ini with menus");
}

TEST_F(FrontWindowOfThree, AWindowThatIsRestoredByItsTitleGetsTheKeyboard) {
    fr_edit* one = open(One);
    fr_edit* two = open(Two);
    QWidget* icon = one->parentWidget();
    for (const bool fromTree : {false, true}) {
        if (fromTree)
            QTest::mouseClick(main().Tree1->viewport(), Qt::LeftButton, {}, QPoint(20, 5));
        ASSERT_TRUE(icon->isMinimized());
        const QPoint title(icon->width() / 3, icon->height() / 2);
        QTest::mouseClick(icon, Qt::LeftButton, {}, title);
        QTest::mouseDClick(icon, Qt::LeftButton, {}, title);
        ASSERT_FALSE(icon->isMinimized());
        EXPECT_EQ(whereKeysGo(), "/one.ini with menus");
        QTest::mouseClick(icon, Qt::LeftButton, {}, QPoint(icon->width() / 2, 8));
        EXPECT_EQ(whereKeysGo(), "/one.ini with menus") << "the title bar is pressed";
        icon->showMinimized();
        EXPECT_EQ(whereKeysGo(), "/two.ini with menus");
    }
    two->parentWidget()->showMaximized();
    EXPECT_EQ(whereKeysGo(), "/two.ini with menus");
    two->parentWidget()->showNormal();
    EXPECT_EQ(whereKeysGo(), "/two.ini with menus") << "not a list of it";
}

TEST_F(FrontWindowOfThree, AClosedWindowMakesRoomWhileItsKeysAreHeld) {
    open(One);
    open(Two);
    press(Qt::Key_F4, Qt::ControlModifier);
    EXPECT_EQ(main().mdiArea()->subWindowList().size(), 1);
    press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(whereKeysGo(), "/one.ini with menus");
    press(Qt::Key_F6);
    press(Qt::Key_Return); // on its button
    EXPECT_TRUE(main().Tree1->hasFocus());
    EXPECT_EQ(main().front().frame(), nullptr);
}

TEST_F(FrontWindowOfThree, TheKeysOfTheMenusThatAreShownWorkFromTheTree) {
    open(One);
    fr_edit* two = open(Two);
    two->txt_edit->setText("changed End ");
    QTest::mouseClick(main().Tree1->viewport(), Qt::LeftButton, {}, QPoint(20, 5));
    ASSERT_TRUE(main().Tree1->hasFocus());
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(two->Filetext, "changed End ");
    ASSERT_TRUE(main().Tree1->hasFocus());
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(two->FindFrame->isVisible());
    EXPECT_TRUE(two->FindFrame->Txt_find->hasFocus());
    press(Qt::Key_S, Qt::ControlModifier); // from the panel too
    clickBar(1);
    two->txt_edit->setText("once more End ");
    QTest::mouseClick(main().Tree1->viewport(), Qt::LeftButton, {}, QPoint(20, 5));
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(two->Filetext, "changed End ") << "its menus are not shown";
}

TEST_F(FrontWindowOfThree, F3SearchesTheEditorInFrontAlone) {
    fr_edit* one = open(One);
    fr_edit* two = open(Two);
    for (fr_edit* editor : {one, two}) {
        editor->txt_edit->setText("a word, a word");
        editor->FindFrame->Txt_find->setText(QStringLiteral("word"));
    }
    press(Qt::Key_F3);
    press(Qt::Key_F3);
    EXPECT_EQ(two->txt_edit->selStart(), 10);
    EXPECT_EQ(one->txt_edit->selLength(), 0);
    clickBar(0);
    press(Qt::Key_F3);
    EXPECT_EQ(one->txt_edit->selStart(), 2);
    EXPECT_EQ(two->txt_edit->selStart(), 10);
}

TEST_F(FrontWindowOfThree, TheMainWindowsCommandsHaveKeysThatWorkFromAnEditor) {
    const Qt::KeyboardModifiers held = Qt::ControlModifier | Qt::ShiftModifier;
    fr_edit* one = open(One);
    press(Qt::Key_E, held);
    EXPECT_FALSE(main().explorerVisible());
    press(Qt::Key_E, held);
    EXPECT_TRUE(main().explorerVisible());

    const struct {
        Qt::Key key;
        QWidget& opens;
    } windows[] = {{Qt::Key_F, program_->fr_findref()},
                   {Qt::Key_O, program_->fr_options()},
                   {Qt::Key_D, program_->fr_directory()},
                   {Qt::Key_A, program_->form2()}};

    for (const auto& [key, opens] : windows) {
        main().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&main()));
        QTest::mouseClick(one->txt_edit->viewport(), Qt::LeftButton);
        EXPECT_FALSE(opens.isVisible());
        press(key, held);
        EXPECT_TRUE(opens.isVisible()) << opens.objectName().toStdString();
    }
}

TEST_F(FrontWindowOfThree, CtrlTabLeadsThroughTheWindowsInTheOrderLastUsed) {
    open(One);
    open(Two);
    fr_edit* three = open(Three);
    const auto walk = [](int steps, Qt::KeyboardModifiers held = Qt::ControlModifier) {
        for (int step = 0; step < steps; ++step) {
            // A click would release Ctrl as well.
            QTest::keyPress(QApplication::focusWidget(), held & Qt::ShiftModifier ? Qt::Key_Backtab : Qt::Key_Tab,
                            held);
            QCoreApplication::processEvents();
        }
        QTest::keyRelease(QApplication::focusWidget(), Qt::Key_Control);
    };
    const std::string before = three->txt_edit->text();
    walk(1);
    EXPECT_EQ(three->txt_edit->text(), before) << "it types no tab";
    EXPECT_EQ(whereKeysGo(), "/two.ini with menus");
    walk(1);
    EXPECT_EQ(whereKeysGo(), "/three.ini with menus") << "to and fro";
    walk(2);
    EXPECT_EQ(whereKeysGo(), "/one.ini with menus");
    walk(3);
    EXPECT_EQ(whereKeysGo(), "/one.ini with menus") << "all around";
    walk(1, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(whereKeysGo(), "/two.ini with menus") << "the one used longest ago";
    QWidget* pressed = main().Toolbar1->widgetForAction(main().Toolbar1->actions().at(1));
    EXPECT_TRUE(qobject_cast<QToolButton*>(pressed)->isChecked());
    EXPECT_TRUE(three->parentWidget()->isMinimized());

    // From the tree as well, and where no window is up.
    QTest::mouseClick(main().Tree1->viewport(), Qt::LeftButton, {}, QPoint(20, 5));
    walk(1);
    EXPECT_EQ(whereKeysGo(), "/one.ini with menus");
    clickBar(0);
    ASSERT_TRUE(main().Tree1->hasFocus());
    walk(1);
    EXPECT_EQ(whereKeysGo(), "/one.ini with menus");
}

TEST_F(FrontWindowOfThree, AWindowThatIsClosedOnTheWayIsLeftOut) {
    open(One);
    open(Two);
    const fr_edit* three = open(Three);
    const auto step = [] {
        QTest::keyPress(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    step();
    three->parentWidget()->close();
    step();
    QTest::keyRelease(QApplication::focusWidget(), Qt::Key_Control);
    EXPECT_EQ(whereKeysGo(), "/one.ini with menus") << "the one after the second";
    step();
    main().mdiArea()->closeAllSubWindows();
    step(); // from the tree: there is nowhere to go
    QTest::keyRelease(QApplication::focusWidget(), Qt::Key_Control);
    EXPECT_TRUE(main().Tree1->hasFocus());
}

TEST_F(FrontWindowOfThree, AltWithADigitBringsUpTheBarsWindows) {
    open(One);
    open(Two);
    open(Three);
    press(Qt::Key_1, Qt::AltModifier);
    EXPECT_EQ(whereKeysGo(), "/one.ini with menus");
    press(Qt::Key_3, Qt::AltModifier);
    EXPECT_EQ(whereKeysGo(), "/three.ini with menus");
    press(Qt::Key_3, Qt::AltModifier);
    EXPECT_EQ(whereKeysGo(), "/three.ini with menus") << "it is up already";
    press(Qt::Key_4, Qt::AltModifier);
    EXPECT_EQ(whereKeysGo(), "/three.ini with menus") << "there is no such button";
}

TEST_F(FrontWindowOfThree, F6LeadsFromTheTreeToTheTextToTheBar) {
    const auto where = [this]() -> std::string {
        const QWidget* focus = QApplication::focusWidget();
        if (main().Tree1->hasFocus())
            return "tree";
        if (qobject_cast<const RichTextBox*>(focus))
            return focus->window() == &main() && focus->isVisible() ? "text" : "hidden text";
        const auto* button = qobject_cast<const QToolButton*>(focus);
        return button && button->parent() == main().Toolbar1 ? "bar" + std::to_string(button->isChecked()) : "?";
    };
    open(One);
    open(Two);
    EXPECT_EQ(where(), "text");
    std::string way;
    for (int i = 0; i < 6; ++i) {
        press(Qt::Key_F6);
        way += where() + " ";
    }
    EXPECT_EQ(way, "bar1 tree text bar1 tree text ");
    main().setExplorerVisible(false);
    press(Qt::Key_F6);
    EXPECT_EQ(where(), "bar1");
    press(Qt::Key_F6);
    EXPECT_EQ(where(), "text");
}

TEST_F(FrontWindowOfThree, TabNeverEndsInAWindowThatIsMinimised) {
    open(One);
    open(Two);
    open(Three);
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
        main().Tree1->setFocus();
        for (int step = 0; step < 40; ++step) {
            QWidget* focus = QApplication::focusWidget();
            ASSERT_TRUE(focus && focus->isVisible());
            const auto* frame = qobject_cast<QMdiSubWindow*>(focus);
            ASSERT_FALSE(frame && frame->isMinimized()) << step;
            if (qobject_cast<RichTextBox*>(focus))
                break; // there Tab is a character
            press(key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        }
    }
}

TEST_F(FrontWindowOfThree, ADoubleClickBesideTheNodesOpensTheSelectedFile) {
    const QModelIndex file = main().Tree1->model()->index(One, 0, main().Tree1->model()->index(0, 0));
    QWidget* tree = main().Tree1->viewport();
    QTest::mouseClick(tree, Qt::LeftButton, {}, main().Tree1->visualRect(file).center());
    const QPoint beside = tree->rect().bottomRight() - QPoint(3, 3);
    ASSERT_FALSE(main().Tree1->indexAt(beside).isValid());
    QTest::mouseClick(tree, Qt::LeftButton, {}, beside);
    QTest::mouseDClick(tree, Qt::LeftButton, {}, beside);
    ASSERT_EQ(main().mdiArea()->subWindowList().size(), 1);
    EXPECT_EQ(whereKeysGo(), "/one.ini with menus");
}

TEST_F(FrontWindowOfThree, AHitOpensInFrontAndTheSearchWindowCanBeReached) {
    open(One);
    program_->fr_findref().present();
    EXPECT_EQ(QApplication::focusWidget(), program_->fr_findref().Text1);
    EXPECT_FALSE(showsEditorMenus());
    program_->fr_findref().findRef("two");
    QListView& hits = *program_->fr_findref().List1;
    const QPoint second = hits.visualRect(hits.model()->index(1, 0)).center();
    QTest::mouseClick(hits.viewport(), Qt::LeftButton, {}, second);
    QTest::mouseDClick(hits.viewport(), Qt::LeftButton, {}, second);
    EXPECT_EQ(whereKeysGo(), "/three.ini with menus");
    press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_TRUE(program_->fr_findref().isAncestorOf(QApplication::focusWidget())) << "it has no button";
}

} // namespace
} // namespace blockhouse
