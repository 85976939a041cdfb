#include "app/Program.h"
#include "editor/fr_edit.h"
#include "editor/keyword_table.h"
#include "platform/widgets/yield.h"
#include "shell/Fr_main.h"
#include "tests/support/MessageBoxReader.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

#include <filesystem>
#include <memory>

namespace blockhouse {
namespace {

QWidget* topLevelWindow(const char* name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() == QLatin1String(name))
            return window;
    }
    return nullptr;
}

class ProgramOnAWorkspace : public testing::Test {
protected:
    enum Row { Large, One, Three, Two, Vanished }; // in the tree's order

    void SetUp() override {
        std::string large = "Object Alphaone\r\nObject Betatwo\r\nObject Gammathree\r\n";
        for (int line = 0; line < 500'000; ++line)
            large += "End ;\r\n";
        temp_.file("data/large.ini", large);
        temp_.file("data/one.ini", "Weapon Longbarrel ; the first\r\nEnd\r\n");
        temp_.file("data/three.ini", "End");
        temp_.file("data/two.ini", "Object ; the second\r\n");
        temp_.file("data/vanished.ini");
        temp_.file("Dirs.lst", temp_.path("data") + "\r\n");
        program_ = std::make_unique<Program>(temp_.path());
        program_->start();
        // On a busy machine its two seconds may be over already.
        if (QWidget* splash = topLevelWindow("Splash"))
            QTest::mouseClick(splash, Qt::LeftButton);
        ASSERT_EQ(topLevelWindow("Fr_main"), &mainWindow());
        ASSERT_TRUE(mainWindow().isVisible());
        deleteWhatWasClosed();
        EXPECT_FALSE(topLevelWindow("Splash"));
        mainWindow().Tree1->expandAll();
    }

    [[nodiscard]] Fr_main& mainWindow() const { return program_->fr_main(); }

    void deleteWhatWasClosed() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    void doubleClick(Row row) {
        QTreeView& tree = *mainWindow().Tree1;
        const QModelIndex file = tree.model()->index(row, 0, tree.model()->index(0, 0));
        tree.scrollTo(file);
        const QPoint at = tree.visualRect(file).center();
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, at);
    }

    [[nodiscard]] fr_edit* newestEditor() const {
        const QList<QMdiSubWindow*> frames = mainWindow().mdiArea()->subWindowList();
        return frames.isEmpty() ? nullptr : qobject_cast<fr_edit*>(frames.last()->widget());
    }

    // Every editor window in the order of opening, "m" while it is minimised; every button, a star on a pressed one.
    [[nodiscard]] std::string windowsAndButtons() const {
        std::string text;
        for (const QMdiSubWindow* frame : mainWindow().mdiArea()->subWindowList())
            text += frame->windowTitle().toStdString() + (frame->isMinimized() ? "m " : " ");
        for (const QAction* button : mainWindow().Toolbar1->actions())
            text += button->text().toStdString() + (button->isChecked() ? "* " : " ");
        return text;
    }

    // Runs the program until it ends; `during` is the first thing that happens.
    template <typename During>
    void runToTheEnd(During during) {
        constexpr int stuck = 99;
        QTimer::singleShot(0, during);
        QTimer::singleShot(60'000, &mainWindow(), [] { QCoreApplication::exit(stuck); });
        EXPECT_EQ(QCoreApplication::exec(), 0);
        EXPECT_FALSE(mainWindow().isVisible());
    }

    TempFolder temp_;
    std::unique_ptr<Program> program_;
};

TEST_F(ProgramOnAWorkspace, FilesOpenFromTheTreeOneAboveTheOther) {
    doubleClick(One);
    ASSERT_TRUE(newestEditor());
    RichTextBox& box = *newestEditor()->txt_edit;
    EXPECT_TRUE(box.isVisible());
    EXPECT_EQ(box.textColorAt(0), KeywordColor);
    EXPECT_EQ(box.textColorAt(7), defaultTextColour);
    EXPECT_EQ(box.backgroundAt(18), CommentHighlight);
    EXPECT_EQ(windowsAndButtons(), "/one.ini one.ini* ");
    doubleClick(Two);
    doubleClick(Three);
    EXPECT_EQ(windowsAndButtons(), "/one.inim /two.inim /three.ini one.ini two.ini three.ini* ");
    EXPECT_EQ(mainWindow().mdiArea()->currentSubWindow()->widget(), newestEditor());

    const QAction* first = mainWindow().Toolbar1->actions().first();
    EXPECT_EQ(first->property("key").toString(),
              QStringLiteral("a%1").arg(handleOf(mainWindow().mdiArea()->subWindowList().first()->widget())));
    mainWindow().mdiArea()->subWindowList().at(1)->close();
    deleteWhatWasClosed();
    EXPECT_EQ(windowsAndButtons(), "/one.inim /three.ini one.ini three.ini* ");
    doubleClick(One);
    EXPECT_EQ(windowsAndButtons(), "/one.inim /three.inim /one.ini one.ini three.ini one.ini* ") << "once more";
}

TEST_F(ProgramOnAWorkspace, AFileOpenedBesideAMaximisedEditorIsMaximisedToo) {
    doubleClick(One);
    EXPECT_FALSE(newestEditor()->parentWidget()->isMaximized());
    newestEditor()->parentWidget()->showMaximized();
    doubleClick(Two);
    EXPECT_TRUE(newestEditor()->parentWidget()->isMaximized());
    EXPECT_EQ(windowsAndButtons(), "/one.inim /two.ini one.ini two.ini* ");
}

TEST_F(ProgramOnAWorkspace, AFileThatCannotBeReadLeavesNothingBehind) {
    doubleClick(One);
    std::filesystem::remove(temp_.path("data/vanished.ini"));
    MessageBoxReader boxes;
    doubleClick(Vanished);
    ASSERT_EQ(boxes.messages().size(), 1);
    EXPECT_TRUE(boxes.messages().first().contains(QString::fromStdString(temp_.path("data/vanished.ini"))));
    deleteWhatWasClosed();
    EXPECT_EQ(windowsAndButtons(), "/one.ini one.ini* ");
}

TEST_F(ProgramOnAWorkspace, ALargeFileComesAndGoesWhole) {
    doubleClick(Large);
    ASSERT_TRUE(newestEditor());
    RichTextBox& box = *newestEditor()->txt_edit;
    const RichTextBox::Position lastLine = box.textLength() - 7;
    EXPECT_EQ(box.textColorAt(lastLine), KeywordColor);
    EXPECT_EQ(box.backgroundAt(lastLine + 4), CommentHighlight);
    EXPECT_EQ(newestEditor()->List1->count(), 3);
    mainWindow().mdiArea()->currentSubWindow()->close();
    deleteWhatWasClosed();
    EXPECT_EQ(windowsAndButtons(), "");
    for (const QWidget* widget : QApplication::allWidgets())
        EXPECT_FALSE(qobject_cast<const fr_edit*>(widget));
}

TEST_F(ProgramOnAWorkspace, ClosingTheMainWindowEndsTheProgramAndAsksNobody) {
    doubleClick(One);
    runToTheEnd([this] { mainWindow().close(); });
    EXPECT_EQ(windowsAndButtons(), "/one.ini one.ini* ") << "the editor window was not closed first";
}

TEST_F(ProgramOnAWorkspace, ClosingTheMainWindowEndsTheProgramInTheMiddleOfLoading) {
    const EagerYield eager;
    bool wasLoading = false;
    bool loaded = false;
    runToTheEnd([&] {
        QTimer::singleShot(0, [&] {
            wasLoading = newestEditor() && !loaded;
            mainWindow().close();
        });
        doubleClick(Large);
        loaded = true;
    });
    EXPECT_TRUE(wasLoading);
    const RichTextBox& box = *newestEditor()->txt_edit;
    for (const std::ptrdiff_t at : {box.textLength() - 3, std::ptrdiff_t{4}})
        EXPECT_NE(box.backgroundAt(at), CommentHighlight) << "given up, not carried through behind the user's back";
    EXPECT_EQ(mainWindow().mdiArea()->subWindowList().size(), 1) << "the editor window was not closed first";
}

TEST_F(ProgramOnAWorkspace, AnEditorClosedWhileItLoadsIsGone) {
    const EagerYield eager;
    QTimer::singleShot(0, [this] { newestEditor()->parentWidget()->close(); });
    doubleClick(Large);
    deleteWhatWasClosed();
    EXPECT_EQ(windowsAndButtons(), "");
}

} // namespace
} // namespace blockhouse
