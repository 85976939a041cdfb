// Closing a window after every step of its work: opening a file, reading a list file, searching.
#include "app/Program.h"
#include "editor/fr_edit.h"
#include "findref/fr_findref.h"
#include "platform/widgets/yield.h"
#include "shell/Fr_main.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QEvent>
#include <QListView>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QTimer>
#include <QTreeView>

#include <memory>

namespace blockhouse {
namespace {

class Interrupted : public testing::Test {
protected:
    void SetUp() override {
        std::string text;
        while (text.size() < 600'000) // several stretches of the keyword pass and several pieces of a search
            text += "Object Alphaone\r\n  Body = Tower ; tower\r\nEnd\r\n";
        temp_.file("data/one.ini", text);
        temp_.file("data/two.ini", text);
        temp_.file("Dirs.lst", temp_.path("data") + "\r\n" + temp_.path("none") + "\r\n");
        temp_.file("jumps.lst", "Armor\r\nBody\r\nSide\r\n");
    }

    // Closing the main window asks for an exit, which finds no event loop here and would end the next one.
    void TearDown() override {
        QTimer::singleShot(0, [] { QCoreApplication::exit(); });
        QCoreApplication::exec();
    }

    // Calls `act` when events are served for the n-th time while `work` runs. False when it ended before that.
    template <typename Work, typename Act>
    static bool interrupt(int n, Work work, Act act) {
        const EagerYield eager;
        bool acted = false;
        QTimer ticking;
        QObject::connect(&ticking, &QTimer::timeout, [&] {
            if (--n == 0) {
                acted = true;
                act();
            }
        });
        ticking.start(0);
        work();
        return acted;
    }

    static void returnToTheEventLoop() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    TempFolder temp_;
};

constexpr int fewestSteps = 8;

// Closes the window itself, or the main window around it.
class ClosedWith : public Interrupted, public testing::WithParamInterface<bool> {};

INSTANTIATE_TEST_SUITE_P(Itself, ClosedWith, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(TheMainWindow, ClosedWith, testing::Values(true));

TEST_P(ClosedWith, AnEditorClosedAfterAnyStepOfOpeningIsGone) {
    const bool closesMain = GetParam();
    int n = 0;
    bool wasInterrupted = true;
    while (wasInterrupted) {
        Program program(temp_.path());
        program.fr_main().show();
        QMdiArea& area = *program.fr_main().mdiArea();
        QPointer<fr_edit> opened;
        std::string textThen;
        wasInterrupted = interrupt(
            ++n, [&] { opened = program.openEditor(temp_.path("data/one.ini")); },
            [&] {
                auto* editor = qobject_cast<fr_edit*>(area.subWindowList().first()->widget());
                textThen = editor->txt_edit->rtf();
                closesMain ? program.fr_main().close() : area.subWindowList().first()->close();
            });
        if (!wasInterrupted)
            break;
        EXPECT_FALSE(opened) << n;
        if (closesMain) {
            auto* editor = qobject_cast<fr_edit*>(area.subWindowList().first()->widget());
            EXPECT_EQ(editor->txt_edit->rtf(), textThen) << "nothing more is done, step " << n;
            EXPECT_EQ(program.fr_main().Toolbar1->actions().size(), editor->windowTitle().isEmpty() ? 0 : 1) << n;
        }
        returnToTheEventLoop();
        EXPECT_EQ(area.subWindowList().size(), closesMain ? 1 : 0) << n;
        EXPECT_TRUE(closesMain || program.fr_main().Toolbar1->actions().isEmpty()) << n;
    }
    EXPECT_GT(n, fewestSteps);
}

TEST_P(ClosedWith, ASearchWindowClosedAfterAnyStepIsGone) {
    const bool closesMain = GetParam();
    int n = 0;
    bool wasInterrupted = true;
    while (wasInterrupted) {
        Program program(temp_.path());
        program.fr_main().show();
        QPointer<class fr_findref> window = &program.fr_findref();
        int hitsThen = 0;
        wasInterrupted = interrupt(
            ++n, [&] { window->findRef("tower"); },
            [&] {
                hitsThen = window->List1->model()->rowCount();
                closesMain ? program.fr_main().close() : window->parentWidget()->close();
            });
        ASSERT_TRUE(window) << "not before control is back in the event loop";
        if (!wasInterrupted)
            break;
        EXPECT_EQ(window->List1->model()->rowCount(), hitsThen) << "nothing more is done, step " << n;
        returnToTheEventLoop();
        EXPECT_EQ(window.isNull(), !closesMain);
        if (!closesMain) {
            EXPECT_EQ(program.fr_findref().List1->model()->rowCount(), 0) << "another one when it is wanted again";
        }
    }
    EXPECT_GT(n, fewestSteps);
}

TEST_F(Interrupted, AMainWindowClosedAfterAnyStepOfReadingItsListsIsNotShown) {
    int n = 0;
    bool wasInterrupted = true;
    while (wasInterrupted) {
        Program program(temp_.path());
        int entriesThen = 0;
        wasInterrupted = interrupt(
            ++n, [&] { program.fr_main().show(); },
            [&] {
                entriesThen = program.Dirs.count() + program.fr_main().jumps.count();
                program.fr_main().close();
            });
        EXPECT_EQ(program.fr_main().isVisible(), !wasInterrupted) << n;
        if (wasInterrupted) {
            EXPECT_EQ(program.Dirs.count() + program.fr_main().jumps.count(), entriesThen) << n;
        }
    }
    EXPECT_GT(n, 5);
}

// The directory editor's list can be read anew while another reading is under way: each entry is there once.
TEST_F(Interrupted, ReadingTheListAgainInTheMiddleTakesThePlaceOfTheFirst) {
    for (int n = 1; n < 6; ++n) {
        Program program(temp_.path());
        interrupt(
            n, [&] { program.fr_main().show(); }, [&] { program.fr_main().loaddirs(); });
        EXPECT_EQ(program.Dirs.count(), 2) << n;
        EXPECT_EQ(program.fr_main().jumps.count(), 3) << "the list that comes after it is read all the same";
        EXPECT_TRUE(program.fr_main().isVisible());
    }
}

} // namespace
} // namespace blockhouse
