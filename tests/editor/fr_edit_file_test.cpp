// The editor window and its file: what is unsaved is marked, told and kept.
#include "editor/fr_edit.h"
#include "editor/keyword_table.h"
#include "platform/system/files.h"
#include "platform/widgets/NoticeArea.h"
#include "tests/editor/FakeHost.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>
#include <QTest>
#include <QThread>

#include <filesystem>
#include <functional>
#include <memory>

namespace blockhouse {
namespace {

constexpr const char* tank = "Object Tank\r\n  Armor = 1 ; thick\r\nEnd\r\n";

class FileOfTheEditor : public testing::Test {
protected:
    void open(const std::string& text) {
        path = folder.file("data.ini", text);
        editor->show();
        bringBackTheKeyboard();
        ASSERT_TRUE(editor->Openfile(path));
    }

    void bringBackTheKeyboard() const {
        editor->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(editor.get()));
    }

    // The text box gets the keyboard as it does when the window comes to the front.
    void comeToTheFront() {
        box().clearFocus();
        box().setFocus();
    }

    void save() { editor->findChild<QAction*>(QStringLiteral("mnu_save"))->trigger(); }

    // By another program: the name leads to another file, which no clock's grain can hide.
    void changeOnDisk(const std::string& text) const { std::filesystem::rename(folder.file("other.ini", text), path); }

    [[nodiscard]] std::string onDisk() const { return readWholeFile(path).value(); }

    [[nodiscard]] RichTextBox& box() const { return *editor->txt_edit; }

    [[nodiscard]] std::string notice(const char* topic) const {
        return editor->notices->textOf(QLatin1String(topic)).toStdString();
    }

    [[nodiscard]] bool pictureHasDot() const {
        const QIcon icon = editor->windowIcon();
        const bool dotted = !icon.isNull() && qRed(icon.pixmap(QSize(16, 16), 1.0).toImage().pixel(11, 11)) > 128;
        EXPECT_EQ(dotted, host.marked) << "the bar's picture goes with the window's";
        return dotted;
    }

    TempFolder folder;
    std::string path;
    FakeHost host;
    std::unique_ptr<fr_edit> editor = std::make_unique<fr_edit>(host);
};

TEST_F(FileOfTheEditor, ADotMarksTextThatTheFileDoesNotHold) {
    open(tank);
    EXPECT_FALSE(pictureHasDot()) << "colours are none of the text";
    QTest::keyClicks(&box(), "x");
    EXPECT_TRUE(pictureHasDot());
    QTest::keyClick(&box(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(pictureHasDot()) << "undone";
    QTest::keyClick(&box(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_TRUE(pictureHasDot());
    save();
    EXPECT_FALSE(pictureHasDot()) << "blanks and line ends after the last end count for nothing";
    QTest::keyClick(&box(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(pictureHasDot()) << "the file holds what was saved";
}

TEST_F(FileOfTheEditor, ASaveTellsWhatItLeftOut) {
    open("Object Tank\r\nEnd\r\n\r\n; kept in mind\r\n");
    save();
    EXPECT_EQ(onDisk(), "Object Tank\r\nEnd\r");
    EXPECT_EQ(notice("leftOut"), "A file ends with its last \"End\": 14 character(s) from line 4 on were not written.");
    EXPECT_TRUE(pictureHasDot());
    box().setSelStart(box().textLength() - 16);
    box().setSelLength(16);
    QTest::keyClick(&box(), Qt::Key_Delete);
    save();
    EXPECT_EQ(notice("leftOut"), "");
    EXPECT_FALSE(pictureHasDot());
}

TEST_F(FileOfTheEditor, AFileChangedByOthersIsToldOnceAndKeptBesideByASave) {
    open(tank);
    comeToTheFront();
    EXPECT_EQ(notice("fileChanged"), "");
    changeOnDisk("Object Other\r\nEnd\r\n");
    comeToTheFront();
    EXPECT_NE(notice("fileChanged").find("\"data.ini\" was changed on the disk"), std::string::npos);
    EXPECT_TRUE(pictureHasDot()) << "no file holds this text any more";
    QTest::keyClick(&box(), Qt::Key_Escape);
    comeToTheFront();
    EXPECT_EQ(notice("fileChanged"), "") << "told once";

    save();
    EXPECT_EQ(onDisk(), "Object Tank\r\n  Armor = 1 ; thick\r\nEnd\r");
    std::vector<std::string> kept;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        if (entry.path().extension() == ".bak")
            kept.push_back(entry.path().string());
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(readWholeFile(kept.front()).value(), "Object Other\r\nEnd\r\n");
    EXPECT_NE(notice("backup").find(std::filesystem::path(kept.front()).filename().string()), std::string::npos);
    EXPECT_FALSE(pictureHasDot());
    comeToTheFront();
    EXPECT_EQ(notice("fileChanged"), "") << "the own save is no change by others";
}

TEST_F(FileOfTheEditor, AChangeThatNobodyHasSeenYetIsKeptToo) {
    open(tank);
    changeOnDisk("Object Other\r\nEnd\r\n");
    save();
    EXPECT_NE(notice("backup"), "");
    save();
    EXPECT_EQ(notice("backup"), "") << "nothing to keep the second time";
}

TEST_F(FileOfTheEditor, AFileThatHasGoneIsToldAndWrittenAgain) {
    open(tank);
    std::filesystem::remove(path);
    comeToTheFront();
    EXPECT_NE(notice("fileChanged").find("no longer on the disk"), std::string::npos);
    EXPECT_TRUE(pictureHasDot());
    save();
    EXPECT_EQ(notice("fileChanged"), "");
    EXPECT_EQ(onDisk(), "Object Tank\r\n  Armor = 1 ; thick\r\nEnd\r");
}

TEST_F(FileOfTheEditor, ANoticeCoversNoTextAndEscapeClosesIt) {
    std::string lines = "Object Tank\r\n";
    for (int line = 0; line < 200; ++line)
        lines += "  Armor = 1\r\n";
    open(lines + "End\r\n;x");
    const int before = box().viewport()->height();
    QTest::keyClick(&box(), Qt::Key_End, Qt::ControlModifier);
    save();
    EXPECT_GE(box().firstVisibleLine() + box().viewport()->height() / box().characterRect(0).height(), 203)
        << "the caret's line stays in view";
    EXPECT_LE(box().viewport()->mapTo(editor.get(), QPoint(0, box().viewport()->height())).y(),
              editor->notices->geometry().top());
    QTest::keyClick(&box(), Qt::Key_Escape);
    EXPECT_FALSE(editor->notices->isVisible());
    EXPECT_EQ(box().viewport()->height(), before);
}

TEST_F(FileOfTheEditor, TextClosedUnsavedComesBackAsItWas) {
    open("Object AlphaTower\r\nEnd\r\nObject BravoTower\r\n;x\r\nEnd\r\nObject CharlieTower\r\nEnd\r\n");
    box().setSelStart(7);
    QTest::keyClicks(&box(), "z");
    const auto was = box().colouredText();
    editor->close();
    ASSERT_EQ(host.closedTexts.size(), 1U);
    const ClosedText closed = host.closedTexts.front();
    EXPECT_EQ(closed.path, path);

    changeOnDisk("Object Other\r\nEnd\r\n");
    editor = std::make_unique<fr_edit>(host);
    editor->bringBack(closed);
    EXPECT_EQ(box().colouredText(), was);
    EXPECT_EQ(box().textColorAt(0), KeywordColor);
    EXPECT_EQ(box().selStart(), 8);
    EXPECT_EQ(editor->List1->count(), 3);
    EXPECT_EQ(editor->windowTitle(), QStringLiteral("/data.ini"));
    EXPECT_TRUE(pictureHasDot());
    EXPECT_NE(notice("fileChanged"), "") << "the file has changed while the text was closed";
    save();
    EXPECT_NE(onDisk().find("Object zAlphaTower"), std::string::npos);
    EXPECT_NE(notice("backup"), "");
    EXPECT_FALSE(pictureHasDot());
}

TEST_F(FileOfTheEditor, OnlyTextThatTheFileLacksIsKept) {
    const struct {
        const char* what;
        std::function<void()> act;
        std::size_t kept;
    } cases[] = {
        {"as opened", [] {}, 0},
        {"saved", [&] { QTest::keyClicks(&box(), "x"), save(); }, 0},
        {"typed", [&] { QTest::keyClicks(&box(), "x"); }, 1},
        {"all deleted", [&] { box().setSelLength(box().textLength()), QTest::keyClick(&box(), Qt::Key_Delete); }, 0},
        {"changed on the disk", [&] { changeOnDisk("End"), comeToTheFront(); }, 1},
        {"changed there unseen", [&] { changeOnDisk("End"); }, 1},
    };

    for (const auto& [what, act, kept] : cases) {
        editor = std::make_unique<fr_edit>(host);
        host.closedTexts.clear();
        open(tank);
        act();
        editor->close();
        EXPECT_EQ(host.closedTexts.size(), kept) << what;
    }
}

TEST_F(FileOfTheEditor, F5ColoursAgainAndTouchesNothingElse) {
    std::string text;
    for (int block = 0; block < 100; ++block)
        text += tank;
    open(text);
    const auto asOpened = box().colouredText();
    box().setSelStart(3000);
    QTest::keyClicks(&box(), ";x");
    box().setSelLength(0);
    box().setSelStart(2000);
    box().setSelLength(40);
    box().setSelColor(0x123456);
    box().setSelStart(2500);
    box().setSelLength(25);
    box().scrollLines(3, 40);
    const LineIndex line = box().firstVisibleLine();
    const int column = box().horizontalScrollBar()->value();
    ASSERT_NE(line, 0);
    const std::string typed = box().text();

    comeToTheFront();
    QTest::keyClick(&box(), Qt::Key_F5);
    const auto again = box().colouredText();
    {
        fr_edit fresh(host);
        fresh.Openfile(folder.file("typed.ini", typed));
        EXPECT_EQ(again, fresh.txt_edit->colouredText()) << "as a file with this text is opened";
    }
    bringBackTheKeyboard();
    EXPECT_EQ(box().selStart(), 2500);
    EXPECT_EQ(box().selLength(), 25);
    EXPECT_EQ(box().firstVisibleLine(), line);
    EXPECT_EQ(box().horizontalScrollBar()->value(), column);
    EXPECT_TRUE(pictureHasDot());
    QTest::keyClick(&box(), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&box(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box().text(), text) << "undo goes on";
    QTest::keyClick(&box(), Qt::Key_F5);
    EXPECT_EQ(box().colouredText(), asOpened);
}

TEST_F(FileOfTheEditor, AClipboardThatDoesNotAnswerIsTold) {
    class Silent : public QMimeData {
    public:
        QStringList formats() const override {
            QThread::msleep(1100); // as long as the window system waits, or rather longer than it takes to answer
            return {};
        }
    };

    open(tank);
    QGuiApplication::clipboard()->setMimeData(new Silent);
    QTest::keyClick(&box(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box().text(), tank);
    EXPECT_NE(notice("clipboard"), "");
    QTest::keyClick(&box(), Qt::Key_F, Qt::ControlModifier);
    auto& line = *editor->findChild<QLineEdit*>(QStringLiteral("Txt_find"));
    line.setText(QStringLiteral("Tank"));
    QTest::keyClick(&line, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(line.text(), QStringLiteral("Tank"));
    const auto* outcome = editor->findChild<QLabel*>(QStringLiteral("labelOutcome"));
    EXPECT_TRUE(outcome->text().contains(QStringLiteral("does not answer")));
    QGuiApplication::clipboard()->setText(QStringLiteral("er"));
    QTest::keyClick(&line, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(line.text(), QStringLiteral("Tanker"));
}

TEST_F(FileOfTheEditor, CharactersThatWereReplacedAreTold) {
    open(tank);
    QGuiApplication::clipboard()->setText(QStringLiteral("\u0416"));
    QTest::keyClick(&box(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box().text().front(), '?');
    EXPECT_NE(notice("replaced"), "");
    editor->notices->dismiss();
    QTest::keyClick(&box(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_NE(notice("replaced"), "") << "every time";
}

} // namespace
} // namespace blockhouse
