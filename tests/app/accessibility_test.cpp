// What people need who work without a mouse, or without seeing the screen, in every window of the program.
#include "app/Program.h"
#include "editor/FindPanel.h"
#include "editor/fr_edit.h"
#include "findref/Form1.h"
#include "findref/fr_findref.h"
#include "placement/Form2.h"
#include "shell/Fr_main.h"
#include "tests/support/TempFolder.h"
#include "tools/Fr_Directory.h"
#include "tools/Fr_options.h"

#include <gtest/gtest.h>
#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>

#include <set>

namespace blockhouse {
namespace {

class Accessibility : public testing::Test {
protected:
    Accessibility() {
        const std::string file = temp_.file("data/one.ini", "Weapon Longbarrel\r\nEnd\r\n");
        const std::string aiFile = temp_.file("data/aidata.ini", "SkirmishBuildList North\r\nEnd\r\n");
        temp_.file("Dirs.lst", temp_.path("data") + "\r\n");
        temp_.file("jumps.lst", "Barrel\r\n");
        program_.fr_main().resize(1200, 800);
        program_.fr_main().show();
        const QPointer<fr_edit> editor = program_.openEditor(file);
        editor->FindFrame->open();
        program_.form2().Openfile(aiFile);
        program_.form2().Frame1->show();
        program_.fr_directory().show();
        program_.form1().show();
        program_.fr_findref().present();
        program_.fr_options().show();
        windows_ = {
            editor.data(),          &program_.form2(),      &program_.fr_directory(),    &program_.form1(),
            &program_.fr_findref(), &program_.fr_options(), program_.fr_main().picPlane, program_.fr_main().Toolbar1};
    }

    void SetUp() override { QCoreApplication::processEvents(); } // what was added gets its place

    static std::string nameOf(const QWidget* widget) {
        return widget->metaObject()->className() + std::string(" ") + widget->objectName().toStdString() + " in " +
               widget->window()->objectName().toStdString();
    }

    // The visible controls that Tab is meant to lead to.
    static QWidgetList stopsIn(const QWidget& window) {
        QWidgetList stops;
        for (QWidget* widget : window.findChildren<QWidget*>())
            if (widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) != 0 &&
                widget->focusProxy() == nullptr)
                stops.append(widget);
        return stops;
    }

    TempFolder temp_;
    Program program_{temp_.path()};
    QWidgetList windows_;
};

TEST_F(Accessibility, EveryControlHasAName) {
    for (const QWidget* window : windows_) {
        EXPECT_FALSE(window->accessibleName().isEmpty()) << nameOf(window);
        const QWidgetList stops = stopsIn(*window);
        EXPECT_FALSE(stops.isEmpty()) << nameOf(window);
        for (const QWidget* stop : stops)
            EXPECT_FALSE(stop->accessibleName().isEmpty()) << nameOf(stop);
    }
}

TEST_F(Accessibility, EveryCommandHasALetterOrAKey) {
    std::set<std::string> checked;
    for (const QWidget* window :
         {static_cast<const QWidget*>(&program_.fr_main()), static_cast<const QWidget*>(&program_.form2())})
        for (const QAction* action : window->findChildren<QAction*>())
            if (action->objectName().startsWith(QLatin1Char('m'))) {
                EXPECT_TRUE(action->text().contains(QLatin1Char('&'))) << action->objectName().toStdString();
                checked.insert(action->objectName().toStdString());
            }
    EXPECT_GT(checked.size(), 15U);
    for (const QWidget* window : windows_)
        for (const auto* button : window->findChildren<QPushButton*>())
            EXPECT_TRUE(button->text().size() <= 1 || button->text().contains(QLatin1Char('&'))) << nameOf(button);
}

TEST_F(Accessibility, TheFocusIsSeenWhereverItIs) {
    for (QWidget* window : windows_) {
        window->window()->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window->window()));
        window->window()->setAttribute(Qt::WA_KeyboardFocusChange); // what a press of Tab sets
        for (QWidget* stop : stopsIn(*window)) {
            stop->clearFocus();
            const QImage without = stop->grab().toImage();
            stop->setFocus(Qt::TabFocusReason);
            ASSERT_TRUE(stop->hasFocus()) << nameOf(stop);
            EXPECT_TRUE(stop->grab().toImage() != without) << nameOf(stop);
        }
    }
}

} // namespace
} // namespace blockhouse
