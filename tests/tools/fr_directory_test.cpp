#include "tests/support/MessageBoxReader.h"
#include "tests/support/TempFolder.h"
#include "tests/tools/listed.h"
#include "tools/Fr_Directory.h"

#include <gtest/gtest.h>
#include <QClipboard>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace blockhouse {
namespace {

class DirectoryEditor : public testing::Test {
protected:
    DirectoryEditor() {
        for (const char* folder : {"one/Data", "two/Data", "two/.hidden", "two/empty"})
            temp_.folder(folder);
        temp_.file("two/file.ini");
    }

    void open(const std::vector<std::string>& entries) {
        for (const std::string& entry : entries)
            Dirs_.add(entry);
        window_ = std::make_unique<Fr_Directory>(Dirs_, [this](const EntryList& list, const EntryList& before) {
            saved_ += listed(list) + "\n";
            before_ = listed(before);
        });
        window_->show();
        window_->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    }

    // Double-clicks the folder of that name below the current one.
    void walkInto(const char* name) {
        DirectoryList& list = *window_->Dir1;
        for (int row = list.model()->rowCount() - 1; row >= 0; --row) {
            const QModelIndex index = list.model()->index(row, 0);
            if (index.data().toString() != QLatin1String(name))
                continue;
            list.scrollTo(index);
            const QPoint at = list.visualRect(index).center();
            QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at);
            QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, at);
            return;
        }
        ADD_FAILURE() << "no folder " << name;
    }

    TempFolder temp_;
    EntryList Dirs_;
    std::string saved_;
    std::string before_;
    MessageBoxReader boxes_;
    std::unique_ptr<Fr_Directory> window_;
};

TEST_F(DirectoryEditor, ClosedUnchangedItSavesThePathsAsTheyAre) {
    // Not text in any encoding, with a blank at its end, and not there at all.
    const std::string awkward = temp_.path("\xFF name ");
    open({awkward, temp_.path("two"), awkward});
    EXPECT_EQ(window_->List2->count(), 3);
    QSignalSpy saved(window_.get(), &Fr_Directory::directoriesSaved);
    boxes_.onBox = [&] {
        EXPECT_EQ(saved.count(), 0) << "first the message";
        QApplication::activeModalWidget()->close();
    };
    window_->close();
    window_->close();
    EXPECT_EQ(boxes_.messages(), QStringList(QStringLiteral("Blockhouse|Directory's Saved")));
    EXPECT_EQ(saved.count(), 1);
    EXPECT_EQ(saved_, listed(Dirs_) + "\n");
    EXPECT_EQ(before_, listed(Dirs_));
    EXPECT_EQ(listed(Dirs_), awkward + "|" + temp_.path("two") + "|" + awkward + "|");
}

TEST_F(DirectoryEditor, AFolderIsAddedByWalkingIntoIt) {
    open({temp_.path("one/Data")});
    ASSERT_TRUE(window_->Dir1->walkTo(temp_.path()));
    walkInto("two");
    const int folders = window_->Dir1->model()->rowCount();
    QStringList inside;
    for (int row = folders - 3; row < folders; ++row)
        inside << window_->Dir1->model()->index(row, 0).data().toString();
    EXPECT_EQ(inside, QStringList({"Data", "empty", ".hidden"}));
    walkInto("Data");
    EXPECT_EQ(window_->Lab_stat->text().toStdString(), "Add takes " + temp_.path("two/Data"));
    QTest::mouseClick(window_->Command1, Qt::LeftButton);
    QTest::mouseClick(window_->Command1, Qt::LeftButton);
    QTest::keyClick(window_->Dir1, Qt::Key_Backspace);
    // A line that is merely highlighted is not walked into.
    window_->Dir1->setCurrentIndex(window_->Dir1->model()->index(folders - 1, 0));
    QTest::mouseClick(window_->Command1, Qt::LeftButton);

    window_->List2->setCurrentRow(1);
    EXPECT_EQ(window_->List2->item(1)->text(), window_->List2->item(0)->text());
    EXPECT_EQ(window_->Lab_stat->text().toStdString(), temp_.path("two/Data"));
    QTest::mouseClick(window_->List2->viewport(), Qt::LeftButton, {},
                      window_->List2->visualItemRect(window_->List2->item(0)).center());
    EXPECT_EQ(window_->Lab_stat->text().toStdString(), temp_.path("one/Data"));
    QTest::mouseClick(window_->Command2, Qt::LeftButton);
    EXPECT_EQ(listed(Dirs_), temp_.path("one/Data") + "|") << "the list itself waits for the window to close";
    window_->close();
    EXPECT_EQ(listed(Dirs_), temp_.path("two/Data") + "|" + temp_.path("two/Data") + "|" + temp_.path("two") + "|");
}

TEST_F(DirectoryEditor, APathOnTheClipboardIsWalkedTo) {
    open({});
    const std::string two = temp_.path("two");
    const std::string file = temp_.file("two/units.ini");
    const std::string cases[] = {two, two + "/\n", "'" + two + "'", "\"" + two + "\"\r\n", "file://" + two, file};
    for (const std::string& text : cases) {
        ASSERT_TRUE(window_->Dir1->walkTo("/"));
        QGuiApplication::clipboard()->setText(QString::fromStdString(text));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(window_->Dir1->path(), two) << text;
    }
    QGuiApplication::clipboard()->setText(QStringLiteral("two"));
    QTest::keyClick(window_->Dir1, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(window_->Dir1->path(), two) << "no path at all";
    QGuiApplication::clipboard()->setText(QStringLiteral("/no such folder"));
    QTest::keyClick(window_->Dir1, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(window_->Lab_stat->text(), QStringLiteral("/no such folder: No such file or directory"));
}

TEST_F(DirectoryEditor, WithEveryEntryRemovedNothingIsSaved) {
    open({temp_.path("one")});
    QTest::mouseClick(window_->Command2, Qt::LeftButton); // nothing is selected yet
    EXPECT_EQ(window_->List2->count(), 1);
    window_->List2->setCurrentRow(0);
    window_->List2->setFocus();
    QTest::keyClick(window_->List2, Qt::Key_Delete);
    EXPECT_EQ(window_->Lab_stat->text(), QString());
    QSignalSpy closed(window_.get(), &Fr_Directory::closed);
    window_->close();
    EXPECT_EQ(closed.count(), 1);
    EXPECT_EQ(saved_, "");
    EXPECT_EQ(listed(Dirs_), temp_.path("one") + "|");
    EXPECT_TRUE(boxes_.messages().isEmpty());
}

TEST_F(DirectoryEditor, WhatCannotBeReadChangesNothing) {
    open({});
    ASSERT_TRUE(window_->Dir1->walkTo(temp_.path()));
    const int rows = window_->Dir1->model()->rowCount();
    std::filesystem::remove_all(temp_.path("one"));
    walkInto("one");
    EXPECT_EQ(window_->Dir1->path(), temp_.path());
    EXPECT_EQ(window_->Dir1->model()->rowCount(), rows);
    EXPECT_EQ(window_->Lab_stat->text().toStdString(), temp_.path("one") + ": No such file or directory");

    const int drive = window_->Drive1->currentIndex();
    ASSERT_GE(drive, 0);
    window_->Drive1->addItem(QStringLiteral("gone"), QByteArray("/no such drive"));
    window_->Drive1->setCurrentIndex(window_->Drive1->count() - 1);
    EXPECT_EQ(window_->Drive1->currentIndex(), drive);
    EXPECT_EQ(window_->Dir1->path(), temp_.path());
    window_->Drive1->addItem(QStringLiteral("there"), QByteArray::fromStdString(temp_.path("two")));
    window_->Drive1->setCurrentIndex(window_->Drive1->count() - 1);
    EXPECT_EQ(window_->Dir1->path(), temp_.path("two"));

    // The drive shown is the one that the folder is on, and choosing it again leads back to where it begins.
    walkInto("empty");
    EXPECT_EQ(window_->Drive1->currentText(), QStringLiteral("there"));
    Q_EMIT window_->Drive1->activated(window_->Drive1->currentIndex());
    EXPECT_EQ(window_->Dir1->path(), temp_.path("two"));
    ASSERT_TRUE(window_->Dir1->walkTo("/"));
    EXPECT_EQ(window_->Drive1->currentText(), QStringLiteral("/"));
}

TEST_F(DirectoryEditor, StaysAboveAndKeepsItsSize) {
    open({temp_.path(std::string(300, 'x'))});
    EXPECT_TRUE(window_->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    window_->List2->setCurrentRow(0);
    EXPECT_EQ(window_->size(), QSize(328, 259));
    EXPECT_EQ(window_->minimumSize(), window_->maximumSize());
}

} // namespace
} // namespace blockhouse
