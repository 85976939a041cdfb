// The windows that tools and the search have in the program, from the menu item that opens each to what it leads to.
#include "app/Program.h"
#include "editor/fr_edit.h"
#include "findref/Form1.h"
#include "findref/fr_findref.h"
#include "placement/Form2.h"
#include "platform/system/files.h"
#include "platform/widgets/NoticeArea.h"
#include "shell/Fr_main.h"
#include "tests/support/MessageBoxReader.h"
#include "tests/support/TempFolder.h"
#include "tools/Fr_Directory.h"
#include "tools/Fr_options.h"

#include <gtest/gtest.h>
#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QTest>
#include <QTreeView>

#include <memory>

namespace blockhouse {
namespace {

class ToolWindows : public testing::Test {
protected:
    void SetUp() override {
        temp_.file("data/one.ini", "Weapon Longbarrel ; first\r\n  Barrel = LONGBARREL ; again\r\nEnd\r\n");
        temp_.file("data/two.ini", "; the longbarrel is in one.ini\r\n");
    }

    void start() {
        program_ = std::make_unique<Program>(temp_.path());
        program_->fr_main().show();
    }

    void startWithDirectories() {
        temp_.file("Dirs.lst", temp_.path("data") + "\r\n");
        temp_.file("jumps.lst", "Barrel\r\n");
        start();
    }

    [[nodiscard]] Fr_main& mainWindow() const { return program_->fr_main(); }

    void choose(const char* item) {
        QAction* action = mainWindow().findChild<QAction*>(QLatin1String(item));
        ASSERT_TRUE(action && action->isEnabled()) << item;
        action->trigger();
    }

    fr_edit& openOne() {
        const QPointer<fr_edit> editor = program_->openEditor(temp_.path("data/one.ini"));
        return *editor;
    }

    [[nodiscard]] std::string entries(const char* file) const { return readWholeFile(temp_.path(file)).value(); }

    static void deleteWhatWasClosed() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    TempFolder temp_;
    std::unique_ptr<Program> program_;
};

TEST_F(ToolWindows, AFirstRunAsksForDirectories) {
    start();
    Fr_Directory& editor = program_->fr_directory();
    EXPECT_TRUE(editor.isVisible());
    EXPECT_FALSE(mainWindow().explorerVisible());
    ASSERT_TRUE(editor.Dir1->walkTo(temp_.path("data")));
    QTest::mouseClick(editor.Command1, Qt::LeftButton);
    MessageBoxReader boxes;
    editor.close();
    EXPECT_EQ(entries("Dirs.lst"), temp_.path("data") + "\r\n");
    EXPECT_TRUE(mainWindow().explorerVisible());
    const QAbstractItemModel& tree = *mainWindow().Tree1->model();
    ASSERT_EQ(tree.rowCount(), 1);
    EXPECT_EQ(tree.rowCount(tree.index(0, 0)), 2);

    // It opens again with what was saved, whether or not the first window has been deleted by now.
    choose("mnu_diredit");
    EXPECT_TRUE(program_->fr_directory().isVisible());
    EXPECT_EQ(program_->fr_directory().List2->count(), 1);
    program_->fr_directory().close();
    deleteWhatWasClosed();
    choose("mnu_diredit");
    EXPECT_TRUE(program_->fr_directory().isVisible());
}

TEST_F(ToolWindows, WhatCannotBeWrittenIsInForceAllTheSame) {
    startWithDirectories();
    std::filesystem::remove(temp_.path("Dirs.lst"));
    temp_.folder("Dirs.lst"); // no file can take its name
    Fr_Directory& editor = program_->fr_directory();
    ASSERT_TRUE(editor.Dir1->walkTo(temp_.path()));
    QTest::mouseClick(editor.Command1, Qt::LeftButton);
    MessageBoxReader boxes;
    editor.close();
    EXPECT_EQ(boxes.messages().size(), 1);
    EXPECT_EQ(program_->Dirs.count(), 2);
}

TEST_F(ToolWindows, WhatOthersWroteIntoAListIsKept) {
    startWithDirectories();
    MessageBoxReader boxes;
    const auto addToJumps = [&](const char* entry) {
        choose("mnu_options");
        Fr_options& options = program_->fr_options();
        if (*entry != 0) {
            options.txt_enter->setText(QLatin1String(entry));
            QTest::mouseClick(options.Command1, Qt::LeftButton);
        }
        options.parentWidget()->close();
        deleteWhatWasClosed();
    };
    const auto notice = [&] { return mainWindow().notices()->textOf(QStringLiteral("jumps.lst")).toStdString(); };
    temp_.file("jumps.lst", "Barrel\r\nTheirs\r\n");
    addToJumps("");
    EXPECT_EQ(entries("jumps.lst"), "Barrel\r\nTheirs\r\n") << "nothing was changed here";
    addToJumps("Mine");
    EXPECT_EQ(entries("jumps.lst"), "Barrel\r\nMine\r\n");
    const auto kept = fileNamesIn(temp_.path(), "*.bak").value();
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(entries(kept.front().c_str()), "Barrel\r\nTheirs\r\n");
    EXPECT_NE(notice().find(kept.front()), std::string::npos);
    std::filesystem::remove(temp_.path("jumps.lst"));
    addToJumps("");
    EXPECT_EQ(entries("jumps.lst"), "Barrel\r\nMine\r\n") << "a list that is gone is written again";
    EXPECT_EQ(notice(), "");

    temp_.file("jumps.lst", std::string(largestListFile + 1, 'x'));
    addToJumps("");
    EXPECT_EQ(std::filesystem::file_size(temp_.path("jumps.lst")), largestListFile + 1) << "what cannot be read stays";

    std::filesystem::remove(temp_.path("jumps.lst"));
    temp_.folder("jumps.lst"); // no file can take its name
    addToJumps("More");
    EXPECT_NE(notice().find("could not be written"), std::string::npos);
    std::filesystem::remove(temp_.path("jumps.lst"));
    temp_.file("jumps.lst", "Barrel\r\nMine\r\n");
    addToJumps("");
    EXPECT_EQ(entries("jumps.lst"), "Barrel\r\nMine\r\nMore\r\n") << "tried again";
}

TEST_F(ToolWindows, AJumpEntryTakesEffectInOpenEditors) {
    startWithDirectories();
    std::string weapons = "; made up\r\n";
    for (const char* name : {"Alphalongbarrel", "Betalongbarrel", "Gammalongbarrel"})
        weapons += std::string("Weapon ") + name + "\r\n  Range = 1\r\nEnd\r\n";
    fr_edit& editor = *program_->openEditor(temp_.file("data/weapons.ini", weapons));
    choose("mnu_options");
    Fr_options& options = program_->fr_options();
    EXPECT_TRUE(options.isVisible());
    EXPECT_EQ(mainWindow().mdiArea()->currentSubWindow()->widget(), &options);
    EXPECT_EQ(mainWindow().Toolbar1->actions().size(), 1) << "it has no button of its own";
    EXPECT_EQ(options.List1->count(), 1);
    options.txt_enter->setText(QStringLiteral("range"));
    QTest::mouseClick(options.Command1, Qt::LeftButton);
    MessageBoxReader boxes;
    options.parentWidget()->close();
    EXPECT_EQ(entries("jumps.lst"), "Barrel\r\nrange\r\n");
    ASSERT_EQ(editor.List1->count(), 3);
    editor.List1->setCurrentIndex(2);
    EXPECT_EQ(editor.FindinCombo("RANGE"), 1);
}

TEST_F(ToolWindows, TheWordAtTheCaretLeadsToItsPlaces) {
    startWithDirectories();
    fr_edit& editor = openOne();
    editor.txt_edit->setSelStart(10);
    editor.findChild<QAction*>(QStringLiteral("mnu_findref"))->trigger();
    fr_findref& search = program_->fr_findref();
    EXPECT_TRUE(search.isVisible());
    EXPECT_EQ(search.Text1->text(), QStringLiteral("Longbarrel"));
    ASSERT_EQ(search.List1->model()->rowCount(), 3);

    const QModelIndex second = search.List1->model()->index(1, 0);
    EXPECT_EQ(second.data().toString(), QStringLiteral("one.ini :39"));
    for (int time = 0; time < 2; ++time)
        Q_EMIT search.List1->doubleClicked(second);
    const QList<QMdiSubWindow*> windows = mainWindow().mdiArea()->subWindowList();
    ASSERT_EQ(windows.size(), 4) << "two more editor windows, though the file is open";
    const auto* newest = qobject_cast<fr_edit*>(windows.last()->widget());
    ASSERT_TRUE(newest);
    EXPECT_EQ(newest->txt_edit->selText(), "LONGBARREL");
    EXPECT_EQ(newest->txt_edit->selStart(), 38);
    EXPECT_EQ(mainWindow().mdiArea()->currentSubWindow()->widget(), newest);

    // Hits live as long as the window does.
    choose("mnu_findR");
    EXPECT_EQ(program_->fr_findref().List1->model()->rowCount(), 3);
    program_->fr_findref().parentWidget()->close();
    choose("mnu_findR");
    EXPECT_TRUE(program_->fr_findref().isVisible());
    EXPECT_EQ(program_->fr_findref().List1->model()->rowCount(), 0);
}

TEST_F(ToolWindows, AHitFarDownIsShownWithTheLinesAboveIt) {
    std::string text;
    for (int line = 0; line < 300; ++line)
        text += line == 200 ? "  far away\r\n" : "  line\r\n";
    temp_.file("data/far.ini", text);
    startWithDirectories();
    mainWindow().resize(1200, 700);
    program_->fr_findref().findRef("far away");
    Q_EMIT program_->fr_findref().List1->doubleClicked(program_->fr_findref().List1->model()->index(0, 0));
    const auto* editor = mainWindow().mdiArea()->currentSubWindow()->findChild<fr_edit*>();
    ASSERT_TRUE(editor);
    EXPECT_EQ(editor->txt_edit->selText(), "far away");
    EXPECT_EQ(editor->txt_edit->firstVisibleLine(), 196);
    const QRect hits = program_->fr_findref().parentWidget()->geometry();
    EXPECT_FALSE(editor->parentWidget()->geometry().intersects(hits)) << "the next hit is there to be clicked";
}

TEST_F(ToolWindows, AHitWhoseTextHasMovedIsShownWhereItStandsNow) {
    const std::string blanks(300, ' ');
    std::string lines;
    for (int line = 0; line < 300; ++line)
        lines += "  line\r\n";
    temp_.file("data/moving.ini", lines + "target\r\n" + lines);
    startWithDirectories();
    mainWindow().resize(1200, 700);
    fr_findref& search = program_->fr_findref();
    search.findRef("target");
    ASSERT_EQ(search.List1->model()->rowCount(), 1);
    const auto openedAnew = [&](const std::string& text) {
        temp_.file("data/moving.ini", text);
        Q_EMIT search.List1->doubleClicked(search.List1->model()->index(0, 0));
        return mainWindow().mdiArea()->currentSubWindow()->findChild<fr_edit*>()->txt_edit;
    };
    search.Text1->setText(QStringLiteral("not searched for yet"));

    const RichTextBox* box =
        openedAnew("Target\r\n" + lines + "inserted\r\n" + blanks + "TARGET\r\n" + lines + "target");
    EXPECT_EQ(box->selText(), "TARGET") << "the nearest of three";
    EXPECT_EQ(box->firstVisibleLine(), 298);
    const QRect last = box->characterRect(box->selStart() + 5);
    EXPECT_TRUE(last.left() > 0 && last.right() < box->viewport()->width()) << "sideways too";

    box = openedAnew(lines + "none\r\n" + lines);
    EXPECT_EQ(box->selLength(), 0);
    EXPECT_EQ(box->firstVisibleLine(), 0);
}

TEST_F(ToolWindows, ASelectedWordIsTheOneMeant) {
    startWithDirectories();
    fr_edit& editor = openOne();
    editor.txt_edit->setSelStart(0);
    editor.findChild<QAction*>(QStringLiteral("mnu_findref"))->trigger();
    EXPECT_EQ(mainWindow().mdiArea()->subWindowList().size(), 1) << "at the very start there is no word";
    EXPECT_NE(mainWindow().notices()->textOf(QStringLiteral("noWord")), QString());
    editor.txt_edit->setSelStart(7);
    editor.txt_edit->setSelLength(10);
    editor.findChild<QAction*>(QStringLiteral("mnu_findref"))->trigger();
    EXPECT_EQ(program_->fr_findref().Text1->text(), QStringLiteral("Longbarrel"));
}

TEST_F(ToolWindows, AVanishedHitIsToldAndLeavesNothingBehind) {
    startWithDirectories();
    program_->fr_findref().findRef("longbarrel");
    std::filesystem::remove(temp_.path("data/two.ini"));
    MessageBoxReader boxes;
    Q_EMIT program_->fr_findref().List1->doubleClicked(program_->fr_findref().List1->model()->index(2, 0));
    ASSERT_EQ(boxes.messages().size(), 1);
    EXPECT_TRUE(boxes.messages()[0].contains(QString::fromStdString(temp_.path("data/two.ini"))));
    deleteWhatWasClosed();
    EXPECT_EQ(mainWindow().mdiArea()->subWindowList().size(), 1);
}

TEST_F(ToolWindows, ClosingItsWindowOrTheMainWindowEndsASearch) {
    for (int file = 0; file < 2'000; ++file)
        temp_.file("data/more" + std::to_string(file) + ".ini", std::string(10'000, ' ') + "x");
    startWithDirectories();
    const auto searchAndClose = [this](QWidget* window) {
        fr_findref& search = program_->fr_findref();
        QTimer::singleShot(0, window, &QWidget::close);
        search.findRef("x");
        EXPECT_LT(search.List1->model()->rowCount(), 2'000);
        EXPECT_FALSE(window->isVisible());
    };
    searchAndClose(program_->fr_findref().parentWidget());
    // This ends the program, so it has to run.
    QTimer::singleShot(0, &mainWindow(), [&] { searchAndClose(&mainWindow()); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
}

TEST_F(ToolWindows, ThePlacementEditorOpensFromTheMenuAndFromTheTree) {
    temp_.file("data/AIData.ini", "SkirmishBuildList North\r\nEnd\r\n");
    startWithDirectories();
    choose("mnu_AIbuild");
    EXPECT_TRUE(program_->form2().isVisible());
    EXPECT_EQ(program_->form2().windowTitle(), QStringLiteral("Building tool"));

    QTreeView& tree = *mainWindow().Tree1;
    tree.expandAll();
    for (const bool yes : {true, false}) {
        MessageBoxReader boxes;
        boxes.onBox = [yes] {
            const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            box->button(yes ? QMessageBox::Yes : QMessageBox::No)->click();
        };
        const QModelIndex file = tree.model()->index(0, 0, tree.model()->index(0, 0));
        EXPECT_EQ(file.data().toString(), QStringLiteral("AIData.ini"));
        tree.setCurrentIndex(file);
        QTest::keyClick(&tree, Qt::Key_Return);
        EXPECT_EQ(boxes.messages(),
                  QStringList(
                      QStringLiteral("Blockhouse|Would you like to open This with the AI building placement Editor?")));
        EXPECT_EQ(program_->form2().windowTitle(), QStringLiteral("/AIData.ini"));
        EXPECT_EQ(mainWindow().mdiArea()->subWindowList().size(), yes ? 0 : 1);
    }
    program_->form2().close();
    EXPECT_EQ(program_->form2().Filepath, "") << "what was not saved is gone with the window";
}

TEST_F(ToolWindows, CharactersAreCountedInOneWindowMadeAnewAfterItWasClosed) {
    startWithDirectories();
    fr_edit& editor = openOne();
    QAction* count = editor.findChild<QAction*>(QStringLiteral("mnu_getchar"));
    count->trigger();
    Form1& first = program_->form1();
    count->trigger();
    EXPECT_EQ(&program_->form1(), &first);
    first.close();
    count->trigger();
    EXPECT_TRUE(program_->form1().isVisible());
    deleteWhatWasClosed();
    EXPECT_EQ(program_->form1().Label1->text(), QStringLiteral("length: %1").arg(editor.Filetext.size()));
}

} // namespace
} // namespace blockhouse
