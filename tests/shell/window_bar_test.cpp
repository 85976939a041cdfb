#include "shell/Fr_main.h"

#include <gtest/gtest.h>
#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QTest>
#include <QToolButton>

namespace blockhouse {
namespace {

class WindowBarOfThree : public testing::Test {
protected:
    void SetUp() override {
        main_.show();
        for (const char* name : {"a.ini", "b & c.ini", "d.ini"}) {
            auto* editor = new QPlainTextEdit;
            QMdiSubWindow* frame = main_.mdiArea()->addSubWindow(editor);
            frame->setAttribute(Qt::WA_DeleteOnClose);
            frame->show();
            frames_.append(frame);
            main_.Toolbar1->addWindow(handleOf(editor), QString::fromLatin1(name));
        }
    }

    [[nodiscard]] WindowHandle handle(int index) const { return handleOf(frames_[index]->widget()); }

    [[nodiscard]] QToolButton* button(int index) const {
        return qobject_cast<QToolButton*>(main_.Toolbar1->widgetForAction(main_.Toolbar1->actions().at(index)));
    }

    void click(int index) const { QTest::mouseClick(button(index), Qt::LeftButton); }

    // A letter per window: minimised, maximised (capital X) or normal; a star for a pressed button.
    [[nodiscard]] std::string states() const {
        std::string text;
        for (int index = 0; index < frames_.size(); ++index) {
            text += frames_[index]->isMinimized() ? "m" : frames_[index]->isMaximized() ? "X" : "n";
            text += button(index)->isChecked() ? "* " : " ";
        }
        return text;
    }

    EntryList Dirs_;
    Fr_main main_{Dirs_, ApplicationFolder("/nowhere")};
    QList<QMdiSubWindow*> frames_;
};

TEST_F(WindowBarOfThree, KeepsOneWindowUpAtATime) {
    EXPECT_EQ(states(), "m m n* ") << "each new window minimises the others";
    EXPECT_EQ(main_.mdiArea()->currentSubWindow(), frames_[2]);
    click(0);
    EXPECT_EQ(states(), "X* m m ");
    EXPECT_EQ(main_.mdiArea()->currentSubWindow(), frames_[0]) << "it also gets the keyboard";
    click(0);
    EXPECT_EQ(states(), "m m m ");
    frames_[1]->showNormal();
    frames_[2]->showMaximized();
    click(1);
    EXPECT_EQ(states(), "m m X ") << "a window that is up is only minimised, the others are left alone";
    click(1);
    EXPECT_EQ(states(), "m X* m ");
}

TEST_F(WindowBarOfThree, ButtonsCarryTheKeyAndTheCaption) {
    EXPECT_EQ(button(1)->property("key").toString(), QStringLiteral("a%1").arg(handle(1)));
    EXPECT_EQ(main_.Toolbar1->actions().at(1)->property("key"), button(1)->property("key"));
    EXPECT_EQ(button(1)->accessibleName(), QStringLiteral("b & c.ini"));
    EXPECT_EQ(button(1)->text(), QStringLiteral("b && c.ini"));
    EXPECT_FALSE(button(1)->icon().isNull());
    EXPECT_LE(button(1)->geometry().bottom(), main_.Toolbar1->rect().bottom()) << "not cut off";
}

TEST_F(WindowBarOfThree, OpensToShowWhatDoesNotFit) {
    main_.resize(200, 300);
    auto* more = main_.Toolbar1->findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"));
    ASSERT_TRUE(more && QTest::qWaitFor([more] { return more->isVisible(); }));
    EXPECT_FALSE(button(2)->isVisible());
    QTest::mouseClick(more, Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([this] { return button(2)->isVisible(); }));
    EXPECT_TRUE(QTest::qWaitFor([this] { return main_.Toolbar1->rect().contains(button(2)->geometry()); }));
}

TEST_F(WindowBarOfThree, ForgetsWindowsAndSurvivesTheirEnd) {
    main_.Toolbar1->addWindow(handle(0), QStringLiteral("again"));
    ASSERT_EQ(main_.Toolbar1->actions().size(), 3);
    EXPECT_EQ(states(), "m* m m ");

    const WindowHandle second = handle(1);
    delete frames_.takeAt(1);
    click(1); // its window has gone, its button has not
    EXPECT_FALSE(button(1)->isChecked());
    main_.Toolbar1->removeWindow(second);
    main_.Toolbar1->removeWindow(second);
    ASSERT_EQ(main_.Toolbar1->actions().size(), 2);
    click(1);
    EXPECT_EQ(states(), "m X* ");
}

} // namespace
} // namespace blockhouse
