#include "platform/widgets/NoticeArea.h"
#include "tests/support/MessageBoxReader.h"
#include "tests/tools/listed.h"
#include "tools/Fr_options.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace blockhouse {
namespace {

class JumpListEditor : public testing::Test {
protected:
    JumpListEditor() {
        for (const char* entry : {"Body", "Arm\xE9", "Turret\r\n", ""})
            jumps_.add(entry);
        open();
    }

    void open() {
        window_ = std::make_unique<Fr_options>(jumps_, [this](const EntryList& list, const EntryList& before) {
            saved_ += listed(list) + "\n";
            before_ = listed(before);
            EXPECT_TRUE(boxes_.messages().isEmpty()) << "written before it is told";
        });
        window_->show();
        window_->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    }

    void add(const char* text) {
        window_->txt_enter->setText(QString::fromUtf8(text));
        QTest::mouseClick(window_->Command1, Qt::LeftButton);
        EXPECT_EQ(window_->txt_enter->text(), QString());
    }

    EntryList jumps_;
    std::string saved_;
    std::string before_;
    MessageBoxReader boxes_;
    std::unique_ptr<Fr_options> window_;
};

TEST_F(JumpListEditor, TabLeadsThroughAllOfItAndWhatIsEnteredIsChosen) {
    EXPECT_TRUE(window_->txt_enter->hasFocus()) << "ready to type";
    for (QWidget* next : {static_cast<QWidget*>(window_->Check1), static_cast<QWidget*>(window_->Command1),
                          static_cast<QWidget*>(window_->Command2), static_cast<QWidget*>(window_->List1)}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_TRUE(next->hasFocus()) << next->objectName().toStdString();
    }
    QTest::keyClick(window_->List1, Qt::Key_Delete);
    EXPECT_EQ(window_->List1->count(), 3);
}

TEST_F(JumpListEditor, ClosedUnchangedItSavesTheEntriesAsTheyAre) {
    EXPECT_EQ(window_->List1->count(), 4);
    QSignalSpy closed(window_.get(), &Fr_options::closed);
    window_->close();
    window_->close(); // it is closed already
    EXPECT_EQ(boxes_.messages(), QStringList(QStringLiteral("Blockhouse|Saved")));
    EXPECT_EQ(saved_, listed(jumps_) + "\n");
    EXPECT_EQ(before_, listed(jumps_));
    EXPECT_EQ(listed(jumps_), "Body|Arm\xE9|Turret\r\n||");
    EXPECT_EQ(closed.count(), 1);
}

TEST_F(JumpListEditor, EntriesComeAndGo) {
    QTest::mouseClick(window_->Command2, Qt::LeftButton); // nothing is selected yet
    add(" two  words ");
    window_->Check1->setChecked(true);
    add("Alon\u00E9");
    EXPECT_FALSE(window_->Check1->isChecked());
    add("");
    window_->txt_enter->setText(QStringLiteral("Last\u0416"));
    QTest::keyClick(window_->txt_enter, Qt::Key_Return);
    EXPECT_NE(window_->notices->textOf(QStringLiteral("replaced")), QString()) << "no such letter in these files";
    EXPECT_EQ(window_->List1->item(5)->text(), QStringLiteral("Alon\u00E9 \u21B5"));
    window_->List1->setCurrentRow(0);
    QTest::mouseClick(window_->Command2, Qt::LeftButton);
    EXPECT_EQ(listed(jumps_), "Body|Arm\xE9|Turret\r\n||") << "the list itself waits for the window to close";
    window_->close();
    EXPECT_EQ(listed(jumps_), "Arm\xE9|Turret\r\n|| two  words |Alon\xE9\r\n||Last?|");
}

TEST_F(JumpListEditor, AnEmptyListIsSavedToo) {
    window_->List1->setCurrentRow(3);
    window_->List1->setFocus();
    for (int entry = 0; entry < 4; ++entry)
        QTest::keyClick(window_->List1, Qt::Key_Delete);
    window_->close();
    EXPECT_EQ(saved_, "\n");
    EXPECT_EQ(jumps_.count(), 0);
}

} // namespace
} // namespace blockhouse
