#include "platform/widgets/MenuSource.h"
#include "platform/widgets/NoticeArea.h"
#include "shell/DirectoryTreeModel.h"
#include "shell/Fr_main.h"
#include "shell/list_file.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <QAction>
#include <QCursor>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <memory>

namespace blockhouse {
namespace {

class FrMain : public testing::Test {
protected:
    void SetUp() override {
        const char* const files[] = {"game/ini/tank.ini", "game/ini/AiData.INI", "mod/ini/tank.ini"};
        for (const char* file : files)
            temp_.file(file);
        temp_.folder("game/empty");
        QObject::connect(main_.get(), &Fr_main::fileChosen, [this](const std::string& path) { chosen_ += path; });
    }

    void writeDirs(const std::vector<std::string>& folders) {
        std::string text;
        for (const std::string& folder : folders)
            text += temp_.path(folder) + "\r\n";
        temp_.file(directoryListFile, text);
    }

    void loadAndShow() {
        ASSERT_TRUE(main_->load());
        main_->show();
        main_->Tree1->expandAll();
    }

    [[nodiscard]] QAction* item(const char* name) const { return main_->findChild<QAction*>(QLatin1String(name)); }

    [[nodiscard]] std::string tree() const {
        const QAbstractItemModel& model = *main_->Tree1->model();
        std::string text;
        for (int row = 0; row < model.rowCount(); ++row) {
            const QModelIndex directory = model.index(row, 0);
            text += directory.data().toString().toStdString() + ":";
            for (int file = 0; file < model.rowCount(directory); ++file)
                text += " " + model.index(file, 0, directory).data().toString().toStdString();
            text += "\n";
        }
        return text;
    }

    void doubleClick(int directory, int file = -1) {
        QModelIndex index = main_->Tree1->model()->index(directory, 0);
        if (file >= 0)
            index = main_->Tree1->model()->index(file, 0, index);
        const QPoint at = main_->Tree1->visualRect(index).center();
        QTest::mouseClick(main_->Tree1->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(main_->Tree1->viewport(), Qt::LeftButton, {}, at);
    }

    // Presses a button of the next message box and keeps its text.
    void answer(QMessageBox::StandardButton button) {
        QTimer::singleShot(0, [this, button] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_TRUE(box);
            question_ = box->windowTitle() + QLatin1Char('|') + box->text();
            EXPECT_EQ(box->icon(), QMessageBox::NoIcon);
            box->button(button)->click();
        });
    }

    TempFolder temp_;
    EntryList Dirs_;
    std::unique_ptr<Fr_main> main_ = std::make_unique<Fr_main>(Dirs_, ApplicationFolder(temp_.path()));
    std::string chosen_; // paths announced, one after the other
    QString question_;
};

TEST_F(FrMain, LoadsBothListsAndTheTree) {
    temp_.file(directoryListFile, temp_.path("game/ini") + "\r\n\r\n" + temp_.path("gone") + "," +
                                      temp_.path("game/empty") + "\r\n" + temp_.path("mod/ini"));
    temp_.file(jumpListFile, "Side\r\nArmor\r\n\r\n");
    loadAndShow();
    EXPECT_EQ(Dirs_.count(), 5);
    EXPECT_EQ(tree(), "ini: AiData.INI tank.ini tank.ini\nempty:\n");
    EXPECT_EQ(writtenList(main_->jumps), "Side\r\nArmor\r\n\r\n");
    EXPECT_TRUE(main_->explorerVisible() && main_->mnu_fileex->isChecked());
    EXPECT_EQ(main_->windowTitle(), QStringLiteral("Project"));
    EXPECT_EQ(main_->size(), QSize(519, 437));
}

TEST_F(FrMain, FirstRunHidesThePanelAndAsksForTheDirectoryEditor) {
    int asked = 0;
    QObject::connect(main_.get(), &Fr_main::directoryEditorWanted, [&asked] { ++asked; });
    temp_.file(jumpListFile, "Side\r\n");
    loadAndShow();
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(main_->explorerVisible() || main_->mnu_fileex->isChecked());
    EXPECT_EQ(main_->jumps.count(), 1);
    main_->loaddirs(); // still no list: nothing happens
    EXPECT_FALSE(main_->explorerVisible());
    const auto notice = [&] { return main_->notices()->textOf(QStringLiteral("noDirectories")).toStdString(); };
    EXPECT_EQ(notice(), "No folder is listed yet. View > Directory Edit (Ctrl+Shift+D) adds the first one.");

    temp_.file(directoryListFile);
    main_->loaddirs();
    EXPECT_EQ(Dirs_.count(), 0);
    EXPECT_TRUE(main_->explorerVisible() && main_->mnu_fileex->isChecked());
    EXPECT_NE(notice(), "") << "the list is empty";
    writeDirs({"game/ini"});
    main_->loaddirs();
    EXPECT_EQ(notice(), "");
}

TEST_F(FrMain, DirectoriesThatCannotBeListedAreNamed) {
    const auto notice = [&] { return main_->notices()->textOf(QStringLiteral("notListed")).toStdString(); };
    const auto lineOf = [&](const char* name) { return temp_.path(name) + ": No such file or directory"; };
    writeDirs({"game/ini", "gone", "a", "b", "c", "d"});
    loadAndShow();
    EXPECT_EQ(tree(), "ini: AiData.INI tank.ini\n");
    EXPECT_EQ(notice(),
              "Not in the tree: " + lineOf("gone") + "; " + lineOf("a") + "; " + lineOf("b") + "; and 2 more");
    Dirs_.clear();
    writeDirs({"game/ini", "mod/ini"});
    main_->loaddirs();
    EXPECT_EQ(notice(), "");
}

TEST_F(FrMain, ReadingTheDirectoriesAgainOnlyAdds) {
    writeDirs({"game/ini", "game/empty"});
    loadAndShow();
    temp_.file("game/ini/zone.ini");
    writeDirs({"mod/ini", "mod", "game/ini"});
    main_->loaddirs();
    EXPECT_EQ(tree(), "ini: AiData.INI tank.ini tank.ini zone.ini\nempty:\nmod:\n");
    EXPECT_EQ(Dirs_.count(), 3);
}

TEST_F(FrMain, PickingANodeOpensFilesOnly) {
    writeDirs({"game/ini", "game/empty"});
    loadAndShow();
    doubleClick(1);
    EXPECT_EQ(chosen_, "") << "an empty directory is no file";
    doubleClick(0);
    EXPECT_EQ(chosen_, "");
    main_->Tree1->expandAll();
    doubleClick(0, 1);
    EXPECT_EQ(chosen_, temp_.path("game/ini/tank.ini"));

    chosen_.clear();
    QTest::mouseDClick(main_->Tree1->viewport(), Qt::LeftButton, {},
                       main_->Tree1->viewport()->rect().bottomRight() - QPoint(3, 3));
    EXPECT_EQ(chosen_, temp_.path("game/ini/tank.ini")) << "the selected node counts, wherever the click is";
    QTest::keyClick(main_->Tree1, Qt::Key_Return);
    EXPECT_EQ(chosen_, temp_.path("game/ini/tank.ini") + temp_.path("game/ini/tank.ini"));

    chosen_.clear();
    main_->Tree1->clearSelection();
    QTest::keyClick(main_->Tree1, Qt::Key_Return);
    EXPECT_EQ(chosen_, "");
}

TEST_F(FrMain, AsksWhichEditorIsMeantForPlacementData) {
    writeDirs({"game/ini"});
    loadAndShow();
    const std::string path = temp_.path("game/ini/AiData.INI");
    doubleClick(0, 0);
    EXPECT_EQ(chosen_, path) << "no placement editor, no question";

    std::string placed;
    QObject::connect(main_.get(), &Fr_main::placementWanted, [&placed](const std::string& what) { placed += what; });
    chosen_.clear();
    answer(QMessageBox::No);
    doubleClick(0, 0);
    EXPECT_EQ(question_,
              QStringLiteral("Blockhouse|Would you like to open This with the AI building placement Editor?"));
    EXPECT_EQ(chosen_, path);
    answer(QMessageBox::Yes);
    doubleClick(0, 0);
    EXPECT_EQ(chosen_, path) << "not opened a second time";
    EXPECT_EQ(placed, path);
}

TEST_F(FrMain, MenuItemsAreEnabledWhileSomebodyListens) {
    const struct {
        const char* name;
        const char* caption;
        void (Fr_main::*signal)();
    } items[] = {{"mnu_findR", "Find Refrence", &Fr_main::findReferenceWanted},
                 {"mnu_diredit", "Directory Edit", &Fr_main::directoryEditorWanted},
                 {"mnu_options", "Options", &Fr_main::optionsWanted},
                 {"mnu_AIbuild", "AI building placement", &Fr_main::placementEditorWanted}};

    for (const auto& [name, caption, signal] : items) {
        EXPECT_EQ(item(name)->text().remove(QLatin1Char('&')), QLatin1String(caption));
        EXPECT_FALSE(item(name)->isEnabled()) << name;
        int heard = 0;
        const auto connection = QObject::connect(main_.get(), signal, [&heard] { ++heard; });
        EXPECT_TRUE(item(name)->isEnabled()) << name;
        item(name)->trigger();
        EXPECT_EQ(heard, 1) << name;
        QObject::disconnect(connection);
        QCoreApplication::processEvents();
        EXPECT_FALSE(item(name)->isEnabled()) << name;
    }
    EXPECT_FALSE(item("mnu_savedir")->isEnabled());
    answer(QMessageBox::Ok);
    item("mnu_about")->trigger();
    EXPECT_TRUE(question_.startsWith(QStringLiteral("Blockhouse|Blockhouse, written by")));
}

TEST_F(FrMain, ThePanelIsShownAndHidden) {
    writeDirs({});
    loadAndShow();
    auto* close = main_->picPlane->findChild<QPushButton*>(QStringLiteral("Command1"));
    QTest::mouseClick(close, Qt::LeftButton);
    EXPECT_FALSE(main_->picPlane->isVisible() || main_->mnu_fileex->isChecked());
    main_->mnu_fileex->trigger();
    EXPECT_TRUE(main_->picPlane->isVisible() && main_->mnu_fileex->isChecked());
    main_->mnu_fileex->trigger();
    EXPECT_FALSE(main_->picPlane->isVisible() || main_->mnu_fileex->isChecked());
}

TEST_F(FrMain, DraggingTheStripChangesThePanelsWidth) {
    writeDirs({});
    loadAndShow();
    main_->setGeometry(100, 50, 600, 500);
    QWidget& panel = *main_->picPlane;
    auto* strip = panel.findChild<QWidget*>(QStringLiteral("picHandle"));
    auto* timer = panel.findChild<QTimer*>(QStringLiteral("timResize"));
    auto* close = panel.findChild<QWidget*>(QStringLiteral("Command1"));
    QSignalSpy ticks(timer, &QTimer::timeout);
    const QRect frame = main_->frameGeometry();
    const auto widthAfterMovingTo = [&](int x, int y) {
        QCursor::setPos(x, y);
        EXPECT_TRUE(ticks.wait());
        return panel.width();
    };
    EXPECT_EQ(strip->geometry(), QRect(-8, 0, 16, 554));
    EXPECT_EQ(timer->interval(), 50);
    EXPECT_FALSE(timer->isActive());
    EXPECT_EQ(panel.width(), 182);

    QTest::mousePress(strip, Qt::RightButton);
    const int edge = frame.left() + frame.width();
    EXPECT_EQ(widthAfterMovingTo(edge - 200, 200), 200);
    EXPECT_EQ(panel.mapTo(main_.get(), QPoint(200, 0)).x(), 600) << "docked at the right";
    EXPECT_EQ(main_->Tree1->geometry(), QRect(16, 24, 175, 353));
    EXPECT_EQ(close->x(), 175);
    EXPECT_EQ(widthAfterMovingTo(edge - 5, 200), 10) << "the least";
    EXPECT_EQ(widthAfterMovingTo(frame.left() - 50, 200), frame.width() / 2) << "the most";
    main_->resize(700, 500);
    EXPECT_EQ(widthAfterMovingTo(frame.left() - 50, 260), frame.width() / 2) << "only sideways movement counts";
    QTest::mouseRelease(strip, Qt::RightButton);
    EXPECT_FALSE(timer->isActive());
    main_->resize(700, 790);
    EXPECT_GE(strip->geometry().bottom(), panel.rect().bottom()) << "can be grabbed all the way down";
}

class EditorWithMenus : public QWidget, public MenuSource {
public:
    [[nodiscard]] QList<QMenu*> menus() override { return {&own_}; }

private:
    QMenu own_{QStringLiteral("Own"), this};
};

TEST_F(FrMain, TheActiveWindowsMenusStandInTheMenuBar) {
    writeDirs({});
    loadAndShow();
    const auto captions = [this] {
        QString text;
        for (const QAction* menu : main_->menuBar()->actions())
            text += menu->text().remove(QLatin1Char('&')) + QLatin1Char(' ');
        return text.toStdString();
    };
    const std::string ofMain = "File Edit View About ";
    EXPECT_EQ(captions(), ofMain);
    QMdiSubWindow* plain = main_->mdiArea()->addSubWindow(new QWidget);
    QMdiSubWindow* editor = main_->mdiArea()->addSubWindow(new EditorWithMenus);
    editor->setAttribute(Qt::WA_DeleteOnClose);
    plain->show();
    EXPECT_EQ(captions(), ofMain);
    editor->show();
    EXPECT_EQ(captions(), "Own ");
    main_->hide();
    EXPECT_EQ(captions(), "Own ") << "still the active one";
    main_->show();
    main_->mdiArea()->setActiveSubWindow(plain);
    EXPECT_EQ(captions(), ofMain);
    main_->mdiArea()->setActiveSubWindow(editor);
    EXPECT_EQ(captions(), "Own ");
    editor->showMinimized();
    EXPECT_EQ(captions(), ofMain) << "the way to the other windows";
    editor->showNormal();
    EXPECT_EQ(captions(), "Own ");
    plain->close();
    delete editor;
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(captions(), ofMain);
}

TEST_F(FrMain, AKeyLeadsFromTheEditorToTheTreeAndBack) {
    writeDirs({});
    loadAndShow();
    auto* editor = new QPlainTextEdit;
    main_->mdiArea()->addSubWindow(editor)->show();
    main_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(main_.get()));
    editor->setFocus();
    QTest::keyClick(editor, Qt::Key_F6);
    EXPECT_TRUE(main_->Tree1->hasFocus());
    QTest::keyClick(main_->Tree1, Qt::Key_F6);
    EXPECT_TRUE(editor->hasFocus());
}

TEST_F(FrMain, ClosingAnnouncesTheEndAndAsksNoChildWindow) {
    class Stubborn : public QWidget {
    public:
        bool asked = false;

    protected:
        void closeEvent(QCloseEvent*) override { asked = true; }
    };

    writeDirs({});
    loadAndShow();
    auto* child = new Stubborn;
    main_->mdiArea()->addSubWindow(child)->show();
    QSignalSpy ended(main_.get(), &Fr_main::closed);
    EXPECT_TRUE(main_->close());
    EXPECT_EQ(ended.count(), 1);
    EXPECT_FALSE(child->asked);
}

// So long a list that events are served in the middle of reading it.
class FrMainReadingALongList : public FrMain {
protected:
    static constexpr int entries = 1'000'000;

    void SetUp() override {
        FrMain::SetUp();
        std::string lines;
        for (int i = 0; i < entries; ++i)
            lines += "\r\n";
        temp_.file(directoryListFile, lines);
        temp_.file(jumpListFile, "Side\r\n");
    }
};

TEST_F(FrMainReadingALongList, MayBeDeletedInTheMiddle) {
    QTimer::singleShot(0, [this] { main_.reset(); });
    EXPECT_FALSE(main_->load());
    EXPECT_GT(Dirs_.count(), 0);
    EXPECT_LT(Dirs_.count(), entries);
}

TEST_F(FrMainReadingALongList, MayBeClosedInTheMiddle) {
    QTimer::singleShot(0, [this] { main_->close(); });
    EXPECT_FALSE(main_->load());
    EXPECT_LT(Dirs_.count(), entries);
    EXPECT_EQ(main_->jumps.count(), 0);
}

TEST_F(FrMainReadingALongList, ASecondReadingOvertakesTheFirst) {
    QTimer::singleShot(0, [this] {
        writeDirs({"game/ini"});
        main_->loaddirs();
    });
    EXPECT_TRUE(main_->load());
    EXPECT_EQ(Dirs_.count(), 1);
    EXPECT_EQ(tree(), "ini: AiData.INI tank.ini\n");
    EXPECT_EQ(main_->jumps.count(), 1);
}

} // namespace
} // namespace blockhouse
