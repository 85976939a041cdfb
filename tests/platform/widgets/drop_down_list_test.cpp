#include "platform/widgets/DropDownList.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QListView>
#include <QStringListModel>
#include <QTest>
#include <QWheelEvent>

#include <functional>
#include <string>

namespace blockhouse {
namespace {

const QStringList fourNames{QStringLiteral("Ash"), QStringLiteral("Birch"), QStringLiteral("Cedar"),
                            QStringLiteral("Elm")};

class ADropDownList : public testing::Test {
protected:
    void SetUp() override {
        list_->setModel(&names_);
        QObject::connect(list_, &DropDownList::chosen, list_, [this](int index, Pick how) {
            chosen_ += std::to_string(index) + (how == Pick::InOpenList ? " in the list " : " ");
        });
        window_.resize(200, 300);
        window_.show();
        window_.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
        list_->setFocus();
    }

    void fill() {
        list_->fill([this] { names_.setStringList(fourNames); });
    }

    void key(int key, Qt::KeyboardModifiers modifiers = {}) {
        QWidget* popup = QApplication::activePopupWidget();
        QTest::keyClick(popup ? list_->view() : static_cast<QWidget*>(list_), static_cast<Qt::Key>(key), modifiers);
    }

    // As a hand does it: the list opens at the press, and its entries are pointed at before one is clicked.
    void openByMouse() {
        QTest::mousePress(list_, Qt::LeftButton);
        QTest::mouseRelease(list_, Qt::LeftButton);
    }

    void clickEntry(int index) {
        QWidget* viewport = list_->view()->viewport();
        for (const int passed : {3, 0, index})
            QTest::mouseMove(viewport, list_->view()->visualRect(names_.index(passed)).center());
        QTest::mousePress(viewport, Qt::LeftButton, {}, list_->view()->visualRect(names_.index(index)).center());
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, list_->view()->visualRect(names_.index(index)).center());
    }

    void clickBesideTheList() {
        QWidget* popup = QApplication::activePopupWidget();
        ASSERT_TRUE(popup);
        QTest::mousePress(popup, Qt::LeftButton, {}, QPoint(-50, -50));
        QTest::mouseRelease(popup, Qt::LeftButton, {}, QPoint(-50, -50));
    }

    void wheelDown() {
        const QPointF at(5, 5);
        QWheelEvent event(at, list_->mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(list_, &event);
    }

    // What one act announces.
    std::string after(const std::function<void()>& act) {
        chosen_.clear();
        act();
        return chosen_;
    }

    QStringListModel names_;
    QWidget window_;
    DropDownList* list_ = new DropDownList(QStringLiteral("Trees"), &window_);
    std::string chosen_;
};

TEST_F(ADropDownList, AnnouncesEachChoiceOnceAndHowItWasMade) {
    QComboBox& box = *list_; // the program may know it as no more than that

    const struct {
        const char* what;
        int before;
        std::function<void()> act;
        const char* announced;
    } cases[] = {
        {"click", 1, [this] { openByMouse(), clickEntry(2); }, "2 in the list "},
        {"click on the selected one", 1, [this] { openByMouse(), clickEntry(1); }, "1 in the list "},
        {"keys in the list", 1, [this] { key(Qt::Key_F4), key(Qt::Key_Down), key(Qt::Key_Return); }, "2 in the list "},
        {"Return on the selected one", 1, [this] { key(Qt::Key_Space), key(Qt::Key_Return); }, "1 in the list "},
        {"left by the key that opened it", 1,
         [this] { key(Qt::Key_F4), key(Qt::Key_End), key(Qt::Key_Down, Qt::AltModifier); }, ""},
        {"left by Escape", 1, [this] { key(Qt::Key_F4), key(Qt::Key_Down), key(Qt::Key_Escape); }, ""},
        {"left by a click beside it", 1, [this] { openByMouse(), clickBesideTheList(); }, ""},
        {"left, then the program", 1,
         [&] { key(Qt::Key_F4), key(Qt::Key_Down), key(Qt::Key_Escape), box.setCurrentIndex(3); }, "3 "},
        {"chosen, then the program", 1, [&] { openByMouse(), clickEntry(2), box.setCurrentIndex(0); },
         "2 in the list 0 "},
        {"the program, then the same one by hand", 1, [&] { box.setCurrentIndex(2), openByMouse(), clickEntry(2); },
         "2 2 in the list "},
        {"arrow key", 1, [this] { key(Qt::Key_Down); }, "2 "},
        {"arrow key at the end", 3, [this] { key(Qt::Key_Down); }, ""},
        {"End, then an arrow", 1, [this] { key(Qt::Key_End), key(Qt::Key_Up); }, "3 2 "},
        {"letter", 1, [this] { key(Qt::Key_E); }, "3 "},
        {"wheel", 1, [this] { wheelDown(); }, "2 "},
        {"wheel at the end", 3, [this] { wheelDown(); }, ""},
        {"the program, another", 1, [&] { box.setCurrentIndex(0); }, "0 "},
        {"the program, the same", 1, [&] { box.setCurrentIndex(1); }, ""},
        {"the program, none", 1, [&] { box.setCurrentIndex(-1); }, ""},
        {"the first one", -1, [this] { key(Qt::Key_Down); }, "0 "},
    };

    fill();
    for (const auto& [what, before, act, announced] : cases) {
        list_->setCurrentIndex(before);
        EXPECT_EQ(after(act), announced) << what;
        ASSERT_FALSE(QApplication::activePopupWidget()) << what;
    }
}

TEST_F(ADropDownList, ClickedWhileItWasEmptyItIsNotTakenForOpen) {
    openByMouse();
    EXPECT_FALSE(QApplication::activePopupWidget());
    fill();
    EXPECT_EQ(after([this] { key(Qt::Key_Down); }), "0 ");
    EXPECT_EQ(after([this] { wheelDown(); }), "1 ");
    EXPECT_EQ(after([this] { openByMouse(), clickEntry(2); }), "2 in the list ");
}

TEST_F(ADropDownList, WhoeverListensMayChooseAnotherOne) {
    fill();
    QObject::connect(list_, &DropDownList::chosen, list_, [this](int index) {
        if (index == 2)
            list_->setCurrentIndex(0);
    });
    EXPECT_EQ(after([this] { openByMouse(), clickEntry(2); }), "2 in the list 0 ");
    EXPECT_EQ(after([this] { key(Qt::Key_Down); }), "1 ");
    EXPECT_EQ(after([this] { key(Qt::Key_Down); }), "2 0 ");
}

TEST_F(ADropDownList, FillingAnnouncesNothingAndLeavesNothingSelected) {
    EXPECT_EQ(after([this] { fill(); }), "");
    list_->setCurrentIndex(1);
    EXPECT_EQ(after([this] {
                  list_->fill([this] {
                      names_.setStringList({});
                      list_->addItem(QStringLiteral("first of an empty list"));
                      list_->setCurrentIndex(0);
                  });
              }),
              "");
    EXPECT_EQ(list_->count(), 1);
    EXPECT_EQ(list_->currentIndex(), -1);
    EXPECT_EQ(after([this] { list_->setCurrentIndex(0); }), "0 ");
}

TEST_F(ADropDownList, ItsToolTipNamesTheSelectedEntryOrWhatItLists) {
    EXPECT_EQ(list_->accessibleName(), QStringLiteral("Trees"));
    EXPECT_EQ(list_->toolTip(), QStringLiteral("Trees"));
    fill();
    EXPECT_EQ(list_->toolTip(), QStringLiteral("Trees"));
    list_->setCurrentIndex(1);
    EXPECT_EQ(list_->toolTip(), QStringLiteral("Birch"));
    fill();
    EXPECT_EQ(list_->toolTip(), QStringLiteral("Trees")) << "nothing of what it listed before";
    list_->setCurrentIndex(2);
    list_->setCurrentIndex(-1);
    EXPECT_EQ(list_->toolTip(), QStringLiteral("Trees"));
    list_->setCurrentIndex(2);
    list_->clear();
    EXPECT_EQ(list_->toolTip(), QStringLiteral("Trees"));
}

} // namespace
} // namespace blockhouse
