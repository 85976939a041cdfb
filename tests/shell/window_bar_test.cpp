#include "shell/Fr_main.h"

#include <gtest/gtest.h>
#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <algorithm>

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

    void addWindows(int count) {
        for (int i = 0; i < count; ++i) {
            auto* editor = new QPlainTextEdit;
            frames_.append(main_.mdiArea()->addSubWindow(editor));
            frames_.last()->show();
            main_.Toolbar1->addWindow(handleOf(editor), QStringLiteral("a long name %1.ini").arg(i));
        }
    }

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

// However narrow, and however many.
TEST_F(WindowBarOfThree, ThePressedButtonIsAlwaysInView) {
    const auto* extension = main_.Toolbar1->findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"));
    const auto* more = main_.Toolbar1->findChild<QToolButton*>(QStringLiteral("moreWindows"));
    ASSERT_TRUE(extension && more);
    for (const int count : {0, 3, 20}) {
        addWindows(count);
        for (const int width : {900, 520, 300, 200}) {
            main_.resize(width, 300);
            QCoreApplication::processEvents();
            const auto buttons = static_cast<int>(main_.Toolbar1->actions().size());
            for (const int pressed : {0, buttons / 2, buttons - 1}) {
                SCOPED_TRACE(std::to_string(buttons) + " at " + std::to_string(width) + ": " + std::to_string(pressed));
                main_.front().bringUpButton(pressed);
                QCoreApplication::processEvents();
                ASSERT_TRUE(button(pressed)->isChecked());
                EXPECT_TRUE(button(pressed)->isVisible());
                EXPECT_TRUE(main_.Toolbar1->rect().contains(button(pressed)->geometry()));
                EXPECT_FALSE(more->isVisible() && more->geometry().intersects(button(pressed)->geometry()));
                EXPECT_FALSE(extension->isVisible());
            }
            const QList<QAction*> all = main_.Toolbar1->actions();
            const bool allShown =
                std::all_of(all.begin(), all.end(), [](const QAction* action) { return action->isVisible(); });
            EXPECT_EQ(more->isVisible(), !allShown);
        }
    }
    EXPECT_EQ(main_.Toolbar1->actions().at(5)->text(), QStringLiteral("a long name 2.ini"))
        << "shortened on the screen";
    EXPECT_EQ(button(5)->accessibleName(), QStringLiteral("a long name 2.ini"));
}

TEST_F(WindowBarOfThree, TheMenuAtItsEndLeadsToEveryWindow) {
    addWindows(9);
    main_.resize(300, 300);
    QCoreApplication::processEvents();
    auto* more = main_.Toolbar1->findChild<QToolButton*>(QStringLiteral("moreWindows"));
    ASSERT_TRUE(more->isVisible());
    QString entries;
    QTimer::singleShot(0, [&entries] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(menu);
        for (const QAction* entry : menu->actions())
            entries += entry->text() + (entry->isChecked() ? QStringLiteral("* ") : QStringLiteral(" "));
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().first()).center());
    });
    QTest::mouseClick(more, Qt::LeftButton);
    EXPECT_TRUE(entries.startsWith(QStringLiteral("a.ini b && c.ini d.ini a long name 0.ini a")))
        << entries.toStdString();
    EXPECT_TRUE(entries.endsWith(QStringLiteral("a long name 8.ini* "))) << entries.toStdString();
    EXPECT_EQ(states(), "X* m m m m m m m m m m m ");
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
