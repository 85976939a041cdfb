// The editor window's commands, driven through its menus, lists and buttons.
#include "editor/FindPanel.h"
#include "editor/fr_edit.h"
#include "platform/system/files.h"
#include "platform/widgets/NoticeArea.h"
#include "tests/editor/FakeHost.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <QAbstractItemView>
#include <QClipboard>
#include <QFileDialog>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QPointer>
#include <QTest>
#include <QTimer>

namespace blockhouse {
namespace {

// Acts on the modal window that the next call opens.
template <typename Dialog>
void whenModal(std::function<void(Dialog&)> act) {
    QTimer::singleShot(0, [act] {
        if (auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget()))
            act(*dialog);
        else
            whenModal<Dialog>(act);
    });
}

constexpr const char* threeBlocks = "; head\r\n"
                                    "Object AlphaTower\r\n  Armor = A\r\n  Body = B\r\nEnd\r\n"
                                    "Object BravoTower\r\n  Hull = C\r\n  body = D\r\nEnd\r\n"
                                    "Object CharlieTower\r\n  Armor = E\r\nEnd\r\n";

class Commands : public testing::Test {
protected:
    void open(const std::string& text) {
        path = folder.file("data.ini", text);
        editor.show();
        editor.Openfile(path);
    }

    void trigger(const char* command) { editor.findChild<QAction*>(QLatin1String(command))->trigger(); }

    [[nodiscard]] std::string onDisk(const std::string& file) const { return readWholeFile(file).value(); }

    [[nodiscard]] RichTextBox& box() { return *editor.txt_edit; }

    void expectTopLine(int line) { EXPECT_EQ(box().firstVisibleLine(), line); }

    TempFolder folder;
    std::string path;
    FakeHost host;
    fr_edit editor{host};
};

// The toolkit goes on with the menu that was used, which is the window's.
TEST_F(Commands, ClosedDuringItsSearchTheWindowOutlivesItsMenu) {
    QMdiArea area;
    const QPointer<fr_edit> child = new fr_edit(host);
    area.addSubWindow(child)->show();
    const auto deleteWhatWasClosed = [] { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); };
    host.duringSearch = [&] {
        child->parentWidget()->close();
        deleteWhatWasClosed();
        EXPECT_TRUE(child);
    };
    child->findChild<QAction*>(QStringLiteral("mnu_findref"))->trigger();
    deleteWhatWasClosed();
    EXPECT_FALSE(child);
}

TEST_F(Commands, SavesWriteUpToTheCharacterAfterTheLastEnd) {
    open("Object Alpha\r\nEnd\r\n;gone\r\n");
    QTest::keyClicks(&box(), "x");
    trigger("mnu_save");
    EXPECT_EQ(onDisk(path), "xObject Alpha\r\nEnd\r");
    EXPECT_EQ(editor.Filetext, "xObject Alpha\r\nEnd\r");
    EXPECT_EQ(box().text(), "xObject Alpha\r\nEnd\r\n;gone\r\n") << "what is not written stays in the editor";
    QTest::keyClicks(&box(), "y");
    editor.Toolbar1->actions().at(1)->trigger();
    EXPECT_EQ(onDisk(path), "xyObject Alpha\r\nEnd\r");
}

TEST_F(Commands, WhatAnInputMethodHasNotCommittedIsNeitherSavedNorReplaced) {
    open("Object Alpha\r\nEnd\r\n");
    editor.FindFrame->Txt_find->setText("Object");
    editor.FindFrame->txt_replace->setText("Weapon");
    const auto compose = [this] {
        QInputMethodEvent shown("Object", {});
        QApplication::sendEvent(&box(), &shown);
        ASSERT_EQ(box().text(), "ObjectObject Alpha\r\nEnd\r\n");
    };
    compose();
    trigger("mnu_save");
    EXPECT_EQ(onDisk(path), "Object Alpha\r\nEnd\r");
    EXPECT_EQ(box().text(), "Object Alpha\r\nEnd\r\n");
    compose();
    editor.FindFrame->ReplaceAll();
    EXPECT_EQ(box().text(), "Weapon Alpha\r\nEnd\r\n");
}

TEST_F(Commands, NothingIsSavedOrTypedWhileTheFileLoads) {
    struct ImpatientHost : FakeHost {
        void drawProgress(PictureBox&, double, double) override {
            editor->findChild<QAction*>(QStringLiteral("mnu_save"))->trigger();
            editor->Toolbar1->actions().at(1)->trigger();
            QTest::keyClicks(editor->txt_edit, "x");
        }

        fr_edit* editor = nullptr;
    };

    ImpatientHost impatient;
    fr_edit window(impatient);
    impatient.editor = &window;
    path = folder.file("data.ini", threeBlocks);
    window.Openfile(path);
    EXPECT_EQ(onDisk(path), threeBlocks);
    EXPECT_EQ(window.txt_edit->text(), threeBlocks);
}

TEST_F(Commands, SaveAsWritesElsewhereAndChangesNothingElse) {
    open("One\r\nEnd\r\n");
    const std::string other = folder.path("other.ini");
    whenModal<QFileDialog>([&](QFileDialog& dialog) {
        auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        EXPECT_EQ(name->text(), QStringLiteral("data.ini"));
        name->setText(QString::fromStdString(other));
        QTest::keyClick(dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit")), Qt::Key_Return);
    });
    trigger("mnu_saveas");
    EXPECT_EQ(onDisk(other), "One\r\nEnd\r");
    EXPECT_EQ(onDisk(path), "One\r\nEnd\r\n");
    EXPECT_EQ(editor.Filepath, path);
    EXPECT_EQ(editor.windowTitle(), QStringLiteral("/data.ini"));
    const auto copyTold = [&] { return editor.notices->textOf(QStringLiteral("copy")).toStdString(); };
    EXPECT_EQ(copyTold(), "A copy was written as \"other.ini\". This window's file is \"data.ini\", as before.");

    box().setText("Two\r\nEnd");
    whenModal<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
    trigger("mnu_saveas");
    EXPECT_EQ(onDisk(other), "One\r\nEnd\r");
    trigger("mnu_save");
    EXPECT_EQ(onDisk(path), "Two\r\nEnd");
    EXPECT_EQ(copyTold(), "");
}

TEST_F(Commands, SaveAsOntoTheFileItselfIsASave) {
    open("One\r\nEnd");
    QTest::keyClicks(&box(), "x");
    std::ofstream(path) << "theirs";
    const std::string link = folder.path("link.ini");
    std::filesystem::create_symlink(path, link);
    whenModal<QFileDialog>([&](QFileDialog& dialog) {
        auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        name->setText(QString::fromStdString(link));
        whenModal<QMessageBox>([](QMessageBox& overwrite) { overwrite.button(QMessageBox::Yes)->click(); });
        QTest::keyClick(name, Qt::Key_Return);
    });
    trigger("mnu_saveas");
    EXPECT_EQ(onDisk(path), "xOne\r\nEnd");
    EXPECT_NE(editor.notices->textOf(QStringLiteral("backup")), QString()) << "what others wrote is kept";
    EXPECT_EQ(editor.notices->textOf(QStringLiteral("copy")), QString());
}

TEST_F(Commands, AFailedSaveIsToldAndLosesNothing) {
    open("One\r\nEnd\r\n");
    QTest::keyClicks(&box(), "x");
    std::filesystem::remove_all(folder.path());
    QString told;
    whenModal<QMessageBox>([&](QMessageBox& message) {
        told = message.text();
        message.accept();
    });
    trigger("mnu_save");
    EXPECT_TRUE(told.contains(QString::fromStdString(path))) << told.toStdString();
    EXPECT_TRUE(told.contains(QStringLiteral("No such file or directory"))) << told.toStdString();
    EXPECT_EQ(box().text(), "xOne\r\nEnd\r\n");
    folder.file("data.ini");
    trigger("mnu_save");
    EXPECT_EQ(onDisk(path), "xOne\r\nEnd\r");
}

TEST_F(Commands, TheToolbarsButtonsHavePictures) {
    for (const int place : {1, 3}) {
        const QImage picture = editor.Toolbar1->actions().at(place)->icon().pixmap(16).toImage();
        bool drawn = false;
        for (int x = 0; x < picture.width(); ++x)
            for (int y = 0; y < picture.height(); ++y)
                drawn |= picture.pixelColor(x, y).alpha() > 0;
        EXPECT_TRUE(drawn) << place;
    }
}

TEST_F(Commands, ToolbarSaveAsksForANameWhereThereIsNone) {
    open("One\r\nEnd\r\n");
    editor.Filepath.clear();
    const std::string chosen = folder.path("chosen.ini");
    whenModal<QFileDialog>([&](QFileDialog& dialog) {
        dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(QString::fromStdString(chosen));
        QTest::keyClick(dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit")), Qt::Key_Return);
    });
    editor.Toolbar1->actions().at(1)->trigger();
    EXPECT_EQ(onDisk(chosen), "One\r\nEnd\r");
    EXPECT_EQ(editor.Filepath, chosen);
}

TEST_F(Commands, ChoosingABlockAndASettingJumpsToTheirLines) {
    for (const char* lineEnd : {"\r\n", "\r", "\n"}) {
        fr_edit window(host);
        std::string text = threeBlocks;
        for (int more = 0; more < 200; ++more)
            text += ";\r\n";
        for (std::size_t at = 0; (at = text.find("\r\n", at)) != text.npos; at += std::string_view(lineEnd).size())
            text.replace(at, 2, lineEnd);
        host.jumpList.clear();
        for (const char* jump : {"Armor", "Body", "Absent", "BODY"})
            host.jumpList.add(jump);
        window.show();
        window.Openfile(folder.file("jumps.ini", text));
        ASSERT_EQ(window.List1->count(), 3);
        EXPECT_EQ(window.Combo1->count(), 0);

        window.List1->setCurrentIndex(0);
        window.List1->setCurrentIndex(1);
        RichTextBox& box = *window.txt_edit;
        EXPECT_EQ(box.selStart(), static_cast<std::ptrdiff_t>(text.find("Object BravoTower")));
        EXPECT_EQ(box.firstVisibleLine(), 5);
        ASSERT_EQ(window.Combo1->count(), 2) << "the settings of this block alone";
        EXPECT_EQ(window.Combo1->itemText(0), QStringLiteral("Body"));
        EXPECT_EQ(window.Combo1->itemData(1).toInt(), 0) << "an equal name has no place of its own";
        EXPECT_EQ(window.FindinCombo("bODy"), 0);

        window.Combo1->setCurrentIndex(0);
        EXPECT_EQ(box.selStart(), static_cast<std::ptrdiff_t>(text.find("body")) + 1);
        EXPECT_EQ(box.firstVisibleLine(), 7);
        box.setText("short");
        Q_EMIT window.Combo1->activated(0);
        EXPECT_EQ(box.selStart(), 5);
    }
}

TEST_F(Commands, ASettingThatEndsItsLineIsShownAsInTheJumpListAndFoundByItsName) {
    for (const char* jump : {"Armor", "ARMOR = E\r\n", "Hull = \xC9\r\n"})
        host.jumpList.add(jump);
    open(std::string(threeBlocks) + "Object DeltaTower\r\n  hull = \xE9\r\n  Armor = E\r\nEnd\r\n");
    editor.List1->setCurrentIndex(3);
    ASSERT_EQ(editor.Combo1->count(), 3);
    EXPECT_EQ(editor.Combo1->itemText(1), QStringLiteral("ARMOR = E \u21B5"));
    EXPECT_EQ(editor.Combo1->itemText(2), QStringLiteral("Hull = \u00C9 \u21B5"));
    EXPECT_EQ(editor.FindinCombo("armor = e\r\n"), 1);
    EXPECT_EQ(editor.FindinCombo("hull = \xE9\r\n"), 2);
    EXPECT_EQ(editor.FindinCombo("armor = e"), -1);
    editor.Combo1->setCurrentIndex(2);
    EXPECT_EQ(editor.Combo1->toolTip(), QStringLiteral("Hull = \u00C9 \u21B5"));
}

TEST_F(Commands, ABlockChosenAgainIsJumpedToAgain) {
    open(threeBlocks);
    editor.List1->setCurrentIndex(2);
    const auto place = box().selStart();
    QCoreApplication::processEvents();
    box().setSelStart(0);
    Q_EMIT editor.List1->activated(2);
    EXPECT_EQ(box().selStart(), place);
}

TEST_F(Commands, TypingGoesOnInTheTextAfterAPickInTheOpenListOnly) {
    open(threeBlocks);
    editor.activateWindow();
    editor.List1->setFocus();
    QTest::keyClick(editor.List1, Qt::Key_Down);
    EXPECT_EQ(editor.focusWidget(), editor.List1);
    QCoreApplication::processEvents();
    editor.List1->showPopup();
    QTest::keyClick(editor.List1->view(), Qt::Key_Up);
    QTest::keyClick(editor.List1->view(), Qt::Key_Return);
    EXPECT_EQ(editor.focusWidget(), editor.txt_edit);
}

// Before a block is chosen there are no settings, and a click on their list opens nothing.
TEST_F(Commands, AClickOnTheEmptySettingsListLeavesItToTheKeys) {
    host.jumpList.add("Armor");
    host.jumpList.add("Body");
    open(threeBlocks);
    editor.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
    ASSERT_EQ(editor.Combo1->count(), 0);
    QTest::mousePress(editor.Combo1, Qt::LeftButton);
    QTest::mouseRelease(editor.Combo1, Qt::LeftButton);
    editor.List1->setCurrentIndex(0);
    ASSERT_EQ(editor.Combo1->count(), 2);
    editor.Combo1->setFocus();
    QTest::keyClick(editor.Combo1, Qt::Key_Down);
    QTest::keyClick(editor.Combo1, Qt::Key_Down);
    EXPECT_EQ(editor.Combo1->currentIndex(), 1);
    EXPECT_EQ(editor.focusWidget(), editor.Combo1);
}

TEST_F(Commands, TheSettingsListsToolTipForgetsTheBlockBefore) {
    host.jumpList.add("Body");
    open(threeBlocks);
    editor.List1->setCurrentIndex(0);
    editor.Combo1->setCurrentIndex(0);
    EXPECT_EQ(editor.Combo1->toolTip(), QStringLiteral("Body"));
    editor.List1->setCurrentIndex(2);
    EXPECT_EQ(editor.Combo1->toolTip(), editor.Combo1->accessibleName());
    EXPECT_EQ(editor.List1->toolTip(), QStringLiteral("CharlieTower"));
}

TEST_F(Commands, ClipboardCommands) {
    open("alpha beta\r\nEnd\r\n");
    box().setSelStart(0);
    box().setSelLength(5);
    trigger("mnu_cut");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("alpha"));
    box().setSelStart(5);
    trigger("mnu_paste");
    EXPECT_EQ(box().text(), " betaalpha\r\nEnd\r\n");
    EXPECT_EQ(box().selStart(), 10);
    trigger("mnu_copy");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString());
    box().setSelLength(2);
    trigger("mnu_paste");
    EXPECT_EQ(box().text(), " betaalphaEnd\r\n") << "an empty clipboard replaces by nothing";
}

TEST_F(Commands, OnlyTheRightButtonOpensThePopUp) {
    open("alpha beta gamma\r\nEnd\r\n");
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton}) {
        QTest::mouseClick(box().viewport(), button, {}, QPoint(40, 8));
        EXPECT_FALSE(editor.mnu_lil->isVisible());
    }
    box().setSelStart(0);
    QTest::mouseClick(box().viewport(), Qt::RightButton, {}, box().characterRect(8).center());
    EXPECT_TRUE(editor.mnu_lil->isVisible());
    EXPECT_NEAR(static_cast<double>(box().selStart()), 8, 1) << "a click on a word is about that word";
    QStringList captions;
    for (const QAction* action : editor.mnu_lil->actions())
        captions << action->text().remove(QLatin1Char('&'));
    EXPECT_EQ(captions, QStringList({"Copy", "Cut", "Paste", "", "Find Refrense"}));
    editor.mnu_lil->close();
}

TEST_F(Commands, GetcharAndExplorerReachTheProgram) {
    open("a\r\nEnd");
    trigger("mnu_getchar");
    EXPECT_EQ(host.counted, "a\r\nEnd");
    EXPECT_FALSE(editor.mnu_fileex->isChecked());
    trigger("mnu_fileex");
    EXPECT_FALSE(host.explorer);
    EXPECT_FALSE(editor.mnu_fileex->isChecked());
    trigger("mnu_fileex");
    EXPECT_TRUE(host.explorer);
    EXPECT_TRUE(editor.mnu_fileex->isChecked());
}

} // namespace
} // namespace blockhouse
