#include "findref/fr_findref.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSignalSpy>
#include <QTest>

namespace blockhouse {
namespace {

// Two directories with two files each; what happens in the middle of a search happens when its bar is drawn.
class FindReference : public testing::Test {
protected:
    FindReference() {
        for (const char* name : {"one/a.ini", "one/b.ini", "two/c.ini", "two/d.ini"})
            temp_.file(name, "Tower tower");
        Dirs_.add(temp_.path("one"));
        Dirs_.add(temp_.path("two"));
        window_ = new fr_findref(Dirs_, [this](PictureBox&, double value, double maximum) {
            bars_ += std::to_string(static_cast<int>(value)) + "/" + std::to_string(static_cast<int>(maximum)) + " ";
            if (const auto act = std::exchange(duringSearch_, {}))
                act();
        });
        area_.addSubWindow(window_);
        area_.resize(600, 400);
        area_.show();
    }

    [[nodiscard]] std::string hits() const {
        std::string lines;
        for (int row = 0; row < window_->List1->model()->rowCount(); ++row)
            lines += window_->List1->model()->index(row, 0).data().toString().toStdString() + "|";
        return lines;
    }

    void search(const char* text) {
        window_->Text1->setText(QString::fromUtf8(text));
        QTest::mouseClick(window_->command1, Qt::LeftButton);
    }

    TempFolder temp_;
    EntryList Dirs_;
    std::function<void()> duringSearch_; // once
    std::string bars_;
    QMdiArea area_;
    QPointer<fr_findref> window_;
};

TEST_F(FindReference, ListsHitsAndKeepsThemUntilTheNextSearch) {
    EXPECT_EQ(window_->Text1->text(), QStringLiteral("Text1"));
    window_->findRef("TOWER");
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(window_->Text1->text(), QStringLiteral("TOWER"));
    EXPECT_EQ(hits(), "a.ini :1|a.ini :7|b.ini :1|b.ini :7|c.ini :1|c.ini :7|d.ini :1|d.ini :7|");
    EXPECT_EQ(window_->Label1->text(), QStringLiteral("2 out of 2"));
    EXPECT_EQ(bars_, "0/1 1/1 0/1 1/1 ");
    temp_.file("one/b.ini", "T\xE9l\xE9?");
    search("\u00C9L\u00C9");
    EXPECT_EQ(hits(), "b.ini :2|");
    search("\u0416"); // not in the code page, so in no file
    EXPECT_EQ(hits(), "");
    window_->Text1->setText(QStringLiteral("r t"));
    QTest::keyClick(window_->Text1, Qt::Key_Return);
    EXPECT_EQ(hits(), "a.ini :5|c.ini :5|d.ini :5|");
    bars_.clear();
    search("");
    EXPECT_EQ(hits(), "");
    EXPECT_EQ(bars_, "");
}

TEST_F(FindReference, ADoubleClickOrReturnChoosesAHit) {
    window_->findRef("tower");
    std::string chosen;
    QObject::connect(window_, &fr_findref::hitChosen, window_,
                     [&chosen](const std::string& path, TextPosition position, const std::string& text) {
                         chosen += path + ":" + std::to_string(position.value) + " " + text + "|";
                     });
    QListView& list = *window_->List1;
    area_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&area_));
    list.setFocus();
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, {20, list.viewport()->height() - 2});
    EXPECT_EQ(chosen, "") << "nothing is selected";
    const QPoint at = list.visualRect(list.model()->index(5, 0)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, at);
    QTest::keyClick(&list, Qt::Key_Up);
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(chosen, temp_.path("two/c.ini") + ":7 tower|" + temp_.path("two/c.ini") + ":1 tower|");
}

TEST_F(FindReference, WhatHappensDuringASearchTakesEffectAtOnce) {
    duringSearch_ = [this] { window_->Text1->setText(QStringLiteral("er t")); };
    search("tower");
    EXPECT_EQ(hits(), "a.ini :4|b.ini :4|c.ini :4|d.ini :4|") << "typed into the text";

    duringSearch_ = [this] { QTest::keyClick(window_->Text1, Qt::Key_Escape); };
    search("tower");
    EXPECT_EQ(hits(), "") << "given up";
    duringSearch_ = [this] { // at the second file
        duringSearch_ = [this] { QTest::keyClick(window_->Text1, Qt::Key_Escape); };
    };
    search("tower");
    EXPECT_EQ(hits(), "a.ini :1|a.ini :7|") << "what was found before that stays";

    duringSearch_ = [this] {
        temp_.file("two/d.ini", "er");
        Dirs_.add("more");
        search("er");
        EXPECT_EQ(hits(), "") << "the search under way sees to it";
    };
    search("tower");
    EXPECT_EQ(hits(), "a.ini :4|a.ini :10|b.ini :4|b.ini :10|c.ini :4|c.ini :10|d.ini :1|") << "a second search";
    EXPECT_EQ(window_->Label1->text(), QStringLiteral("3 out of 3"));

    duringSearch_ = [this] { search(""); };
    search("tower");
    EXPECT_EQ(hits(), "") << "a second search for nothing";
}

TEST_F(FindReference, AHitThatIsClickedDuringTheSearchIsNotOpenedByTheReturnThatStartedIt) {
    window_->Text1->setText(QStringLiteral("tower"));
    area_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&area_));
    window_->Text1->setFocus();
    const QSignalSpy chosen(window_, &fr_findref::hitChosen);
    const auto clickTheFirstHit = [this] {
        const QListView& list = *window_->List1;
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(0, 0)).center());
        EXPECT_TRUE(list.hasFocus());
    };
    duringSearch_ = [&] { duringSearch_ = clickTheFirstHit; }; // at the second file: there are hits
    QTest::keyClick(window_->Text1, Qt::Key_Return);
    EXPECT_EQ(window_->List1->currentIndex().row(), 0);
    EXPECT_EQ(chosen.count(), 0);
}

TEST_F(FindReference, HitsAreSeenWhileTheSearchGoesOn) {
    QImage empty;
    window_->Text1->setText(QStringLiteral("tower"));
    window_->show();
    duringSearch_ = [&] {
        empty = window_->List1->viewport()->grab().toImage();
        duringSearch_ = [&] {
            ASSERT_GT(window_->List1->model()->rowCount(), 0);
            EXPECT_NE(window_->List1->viewport()->grab().toImage(), empty);
        };
    };
    QTest::mouseClick(window_->command1, Qt::LeftButton);
    EXPECT_FALSE(empty.isNull());
}

TEST_F(FindReference, ASearchEndsWhenItsWindowIsClosed) {
    QSignalSpy closed(window_, &fr_findref::closed);
    duringSearch_ = [this] { window_->parentWidget()->close(); };
    window_->findRef("tower");
    EXPECT_EQ(closed.count(), 1);
    EXPECT_EQ(hits(), "");
}

// The toolkit goes on with the text box that has the Enter, and with the list that has the double-click.
TEST_F(FindReference, ClosedByItsOwnControlsTheWindowOutlivesTheirHandlers) {
    const auto deleteWhatWasClosed = [] { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); };
    const QPointer<fr_findref> searched = window_;
    duringSearch_ = [&] {
        searched->parentWidget()->close();
        deleteWhatWasClosed();
        EXPECT_TRUE(searched);
    };
    QTest::keyClick(window_->Text1, Qt::Key_Return);
    deleteWhatWasClosed();
    EXPECT_FALSE(searched);

    window_ = new fr_findref(Dirs_, [](PictureBox&, double, double) {});
    const QPointer<fr_findref> chosenFrom = window_;
    area_.addSubWindow(window_);
    window_->findRef("tower");
    QObject::connect(window_, &fr_findref::hitChosen, [&] {
        chosenFrom->parentWidget()->close();
        deleteWhatWasClosed();
        EXPECT_TRUE(chosenFrom);
    });
    Q_EMIT window_->List1->doubleClicked(window_->List1->model()->index(0, 0));
    deleteWhatWasClosed();
    EXPECT_FALSE(chosenFrom);
}

TEST_F(FindReference, ASearchEndsWhenItsWindowIsGone) {
    duringSearch_ = [this] { delete window_->parentWidget(); };
    window_->findRef("tower");
    EXPECT_FALSE(window_);
}

} // namespace
} // namespace blockhouse
