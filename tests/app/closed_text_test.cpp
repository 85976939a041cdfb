// Text that was closed without being saved: told, kept, brought back.
#include "app/Program.h"
#include "editor/fr_edit.h"
#include "placement/Canvas.h"
#include "placement/Form2.h"
#include "platform/system/files.h"
#include "platform/widgets/DropDownList.h"
#include "platform/widgets/NoticeArea.h"
#include "shell/Fr_main.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTest>
#include <QToolButton>

#include <memory>

namespace blockhouse {
namespace {

class ClosedUnsaved : public testing::Test {
protected:
    void SetUp() override {
        for (const char* name : {"one.ini", "two.ini"})
            temp_.file(name, "Object AlphaTower\r\nEnd\r\n");
        temp_.file("Dirs.lst", temp_.path() + "\r\n");
        program_ = std::make_unique<Program>(temp_.path());
        main().show();
        main().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&main()));
    }

    [[nodiscard]] Fr_main& main() const { return program_->fr_main(); }

    fr_edit* open(const char* name) { return program_->openEditor(temp_.path(name)); }

    [[nodiscard]] fr_edit* front() const { return qobject_cast<fr_edit*>(main().front().frame()->widget()); }

    static void press(Qt::Key key, Qt::KeyboardModifiers held = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, held);
    }

    void closeFront() {
        press(Qt::Key_F4, Qt::ControlModifier);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    static void bringBack() { press(Qt::Key_T, Qt::ControlModifier | Qt::ShiftModifier); }

    [[nodiscard]] std::string notice() const {
        return main().notices()->textOf(QStringLiteral("closedText")).toStdString();
    }

    static bool hasDot(const QIcon& icon) {
        const QRgb corner = icon.isNull() ? 0 : icon.pixmap(QSize(16, 16), 1.0).toImage().pixel(11, 11);
        return qRed(corner) > 200 && qGreen(corner) < 100;
    }

    // Of the bar's last button, which is the front window's.
    [[nodiscard]] bool buttonHasDot() const {
        QAction* button = main().Toolbar1->actions().last();
        const bool dotted = hasDot(button->icon());
        EXPECT_EQ(dotted, hasDot(main().front().frame()->windowIcon()));
        EXPECT_EQ(dotted, !main().Toolbar1->widgetForAction(button)->accessibleDescription().isEmpty());
        return dotted;
    }

    TempFolder temp_;
    std::unique_ptr<Program> program_;
};

TEST_F(ClosedUnsaved, IsToldAndComesBackToBeSaved) {
    open("one.ini");
    EXPECT_FALSE(buttonHasDot());
    const auto picture = [&] { return main().front().frame()->windowIcon().pixmap(QSize(16, 16), 1.0).toImage(); };
    const QImage plain = picture();
    QTest::keyClicks(QApplication::focusWidget(), "x");
    EXPECT_TRUE(buttonHasDot());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(picture(), plain);
    press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_TRUE(buttonHasDot());
    closeFront();
    EXPECT_TRUE(main().mdiArea()->subWindowList().isEmpty());
    EXPECT_EQ(notice(),
              "\"one.ini\" was closed with text that its file does not hold. Ctrl+Shift+T brings the text back.");
    EXPECT_EQ(readWholeFile(temp_.path("one.ini")).value(), "Object AlphaTower\r\nEnd\r\n") << "nothing is written";

    open("two.ini");
    bringBack();
    ASSERT_EQ(main().mdiArea()->subWindowList().size(), 2);
    EXPECT_EQ(front()->Filepath, temp_.path("one.ini"));
    EXPECT_EQ(front()->txt_edit->text(), "xObject AlphaTower\r\nEnd\r\n");
    EXPECT_EQ(QApplication::focusWidget(), front()->txt_edit);
    EXPECT_TRUE(buttonHasDot());
    EXPECT_EQ(notice(), "") << "it is back";
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(readWholeFile(temp_.path("one.ini")).value(), "xObject AlphaTower\r\nEnd\r");
    EXPECT_FALSE(buttonHasDot());

    bringBack();
    EXPECT_EQ(main().mdiArea()->subWindowList().size(), 2);
    EXPECT_EQ(notice(), "No text was closed that its file does not hold.");
}

TEST_F(ClosedUnsaved, TheLastOneComesBackFirst) {
    for (const char* name : {"one.ini", "two.ini"}) {
        open(name);
        QTest::keyClicks(QApplication::focusWidget(), "x");
        closeFront();
    }
    EXPECT_NE(notice().find("\"two.ini\""), std::string::npos);
    EXPECT_NE(notice().find("(1 more)"), std::string::npos);
    bringBack();
    EXPECT_EQ(front()->Filepath, temp_.path("two.ini"));
    EXPECT_NE(notice().find("\"one.ini\""), std::string::npos) << "it is still to be had";
    bringBack();
    EXPECT_EQ(notice(), "");
    EXPECT_EQ(front()->Filepath, temp_.path("one.ini"));
}

TEST_F(ClosedUnsaved, WhatIsSavedIsClosedWithoutAWord) {
    open("one.ini");
    QTest::keyClicks(QApplication::focusWidget(), "x");
    press(Qt::Key_S, Qt::ControlModifier);
    closeFront();
    EXPECT_EQ(notice(), "");
}

TEST_F(ClosedUnsaved, DropsComeBackInThePlacementEditor) {
    const std::string sides =
        "SkirmishBuildList North\r\n  Structure SupplyDepot\r\n    Location = X:100.00 Y:100.00\r\n  End\r\nEnd\r\n";
    const std::string path = temp_.file("aidata.ini", sides);
    const auto form = [&]() -> Form2& { return program_->form2(); };
    const auto drop = [&] {
        form().Openfile(path);
        form().Combo1->setCurrentIndex(0);
        QTest::mousePress(form().Picture1, Qt::LeftButton, {}, {35, 35});
        const QPointF place(60, 60);
        QMouseEvent held(QEvent::MouseMove, place, form().Picture1->mapToGlobal(place), Qt::NoButton, Qt::LeftButton,
                         {});
        QApplication::sendEvent(form().Picture1, &held);
        QTest::mouseRelease(form().Picture1, Qt::LeftButton, {}, {60, 60});
        return form().Filetext;
    };
    const std::string dropped = drop();
    ASSERT_NE(dropped, sides);

    form().Openfile(temp_.path("one.ini"));
    EXPECT_EQ(form().notices->textOf(QStringLiteral("unsavedDrops")).toStdString(),
              "The drops in \"aidata.ini\" were not saved. Ctrl+Shift+T brings them back.");
    form().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form()));
    QTest::keyClick(form().Combo1, Qt::Key_T, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(form().Filepath, path);
    EXPECT_EQ(form().Filetext, dropped);
    EXPECT_EQ(form().Combo1->count(), 1);
    EXPECT_FALSE(form().windowIcon().isNull()) << "the dot";

    form().close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_NE(notice().find("aidata.ini"), std::string::npos);
    main().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&main()));
    QTest::keyClick(&main(), Qt::Key_T, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(notice(), "");
    EXPECT_EQ(form().Filetext, dropped);
    form().undo();
    EXPECT_EQ(form().Filetext, sides);
    form().close();
    EXPECT_EQ(notice(), "") << "its file holds the text";
}

TEST(ClosedTexts, TheLastTwentyAreKeptTheLastFirst) {
    ClosedTexts texts;
    for (int i = 1; i <= 21; ++i)
        texts.keep(ClosedText{std::to_string(i), {}, 0, 0, {}});
    for (int i = 21; i >= 2; --i)
        EXPECT_EQ(std::get<ClosedText>(texts.takeLast().value()).path, std::to_string(i));
    EXPECT_FALSE(texts.takeLast());
}

TEST_F(ClosedUnsaved, OneTooManyIsToldToBeGone) {
    const auto gone = [&] { return main().notices()->textOf(QStringLiteral("closedTextGone")).toStdString(); };
    for (std::size_t closed = 0; closed <= ClosedTexts::most; ++closed) {
        EXPECT_EQ(gone(), "");
        open(closed == 0 ? "two.ini" : "one.ini");
        QTest::keyClicks(QApplication::focusWidget(), "x");
        closeFront();
    }
    EXPECT_EQ(gone(), "Gone: the text of \"two.ini\". Of the closed texts the last 20 are kept.");
    open("two.ini");
    QTest::keyClicks(QApplication::focusWidget(), "x");
    closeFront();
    EXPECT_NE(gone().find("\"two.ini\", \"one.ini\""), std::string::npos);
    open("one.ini");
    press(Qt::Key_Escape);
    EXPECT_EQ(gone(), "") << "with the keyboard in the text";
}

TEST_F(ClosedUnsaved, ItsNoticeLiesBelowTheWindows) {
    open("two.ini");
    open("one.ini");
    QTest::keyClicks(QApplication::focusWidget(), "x");
    closeFront();
    const NoticeArea& told = *main().notices();
    QCoreApplication::processEvents();
    EXPECT_LE(main().mdiArea()->mapTo(&main(), QPoint(0, main().mdiArea()->height())).y(), told.geometry().top());
    bringBack();
    EXPECT_FALSE(told.isVisible());
    QCoreApplication::processEvents();
    EXPECT_EQ(main().mdiArea()->height(), main().centralWidget()->height());
}

} // namespace
} // namespace blockhouse
