// Nothing that is written in a window is cut off, however large the desktop's letters are.
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
#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QStyleOptionFrame>
#include <QTest>

#include <memory>
#include <tuple>
#include <utility>

namespace blockhouse {
namespace {

// What the text's own letters need, drawn from the left edge on.
QSize inkOf(const QWidget& control, QString text) {
    const QRect ink = control.fontMetrics().tightBoundingRect(text.remove(QLatin1Char('&')));
    return {ink.right() + 1, ink.height()};
}

// One line, whatever it says.
QSize lineOf(const QWidget& control, const QString& text) {
    return {inkOf(control, text).width(), control.fontMetrics().height()};
}

bool isAtLeast(QSize room, QSize needed) {
    return room.width() >= needed.width() && room.height() >= needed.height();
}

template <typename Option, typename Control>
Option optionOf(const Control& control) {
    Option option;
    option.initFrom(&control);
    return option;
}

bool fits(const QWidget& widget) {
    const QStyle& style = *widget.style();
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return label->wordWrap() ? label->heightForWidth(label->width()) <= label->height()
                                 : isAtLeast(label->contentsRect().size(), lineOf(widget, label->text()));
    if (const auto* box = qobject_cast<const QCheckBox*>(&widget)) {
        const auto option = optionOf<QStyleOptionButton>(widget);
        return isAtLeast(style.subElementRect(QStyle::SE_CheckBoxContents, &option, &widget).size(),
                         lineOf(widget, box->text()));
    }
    if (const auto* button = qobject_cast<const QPushButton*>(&widget)) {
        const auto option = optionOf<QStyleOptionButton>(widget);
        return isAtLeast(style.subElementRect(QStyle::SE_PushButtonContents, &option, &widget).size(),
                         inkOf(widget, button->text()));
    }
    if (qobject_cast<const QLineEdit*>(&widget)) {
        const auto option = optionOf<QStyleOptionFrame>(widget);
        return isAtLeast(style.subElementRect(QStyle::SE_LineEditContents, &option, &widget).size(),
                         lineOf(widget, QStringLiteral("x")));
    }
    if (qobject_cast<const QComboBox*>(&widget)) {
        const auto option = optionOf<QStyleOptionComboBox>(widget);
        return isAtLeast(
            style.subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &widget).size(),
            lineOf(widget, QStringLiteral("x")));
    }
    if (qobject_cast<const QAbstractButton*>(&widget)) // of a toolbar, which shortens what is too long
        return widget.height() >= widget.fontMetrics().height() &&
               widget.parentWidget()->rect().contains(widget.geometry());
    return true;
}

class Letters : public testing::Test {
protected:
    ~Letters() override { QApplication::setFont(before_); }

    static void setPoints(int points) {
        QFont font = QApplication::font();
        font.setPointSize(points);
        QApplication::setFont(font);
    }

    // Everything is shown that can be.
    void openAllWindows() {
        const std::string file = temp_.file("data/one.ini", "Weapon Longbarrel\r\nEnd\r\n");
        temp_.file("Dirs.lst", temp_.path("data") + "\r\n");
        temp_.file("jumps.lst", "Barrel\r\n");
        program_ = std::make_unique<Program>(temp_.path());
        program_->fr_main().resize(1200, 900);
        program_->fr_main().show();
        editor_ = program_->openEditor(file);
        ASSERT_TRUE(editor_);
        editor_->FindFrame->open();
        editor_->FindFrame->Check2->setChecked(true);
        program_->form2().show();
        program_->form2().Frame1->show();
        program_->form2().Label2->setText(QStringLiteral("x: 504.85 y: -52.43"));
        program_->form2().Label2->adjustSize();
        program_->fr_directory().show();
        program_->form1().show();
        program_->fr_findref().present();
        program_->fr_findref().Label1->setText(QStringLiteral("12 out of 12"));
        program_->fr_findref().Label1->adjustSize();
        program_->fr_options().show();
        settle();
    }

    static void settle() {
        for (int round = 0; round < 5; ++round)
            QCoreApplication::processEvents();
    }

    [[nodiscard]] QWidgetList windows() const {
        return {editor_,
                &program_->form2(),
                &program_->fr_directory(),
                &program_->form1(),
                &program_->fr_findref(),
                &program_->fr_options(),
                program_->fr_main().picPlane};
    }

    // "window.control left top width height, ..." of what has a text of its own or gives way to one.
    [[nodiscard]] std::string places() const {
        std::string text;
        const auto add = [&text](const QWidget& widget) {
            const QRect place = widget.geometry();
            text += widget.objectName().toStdString();
            for (const int measure : {place.x(), place.y(), place.width(), place.height()})
                text += " " + std::to_string(measure);
            text += "\n";
        };
        const FindPanel& panel = *editor_->FindFrame;
        for (const QWidget* control :
             {panel.Picture2, static_cast<QWidget*>(panel.Command1), static_cast<QWidget*>(panel.Label1),
              static_cast<QWidget*>(panel.Txt_find), static_cast<QWidget*>(panel.Label2),
              static_cast<QWidget*>(panel.txt_replace), static_cast<QWidget*>(panel.Check1),
              static_cast<QWidget*>(panel.Check2), static_cast<QWidget*>(panel.Command2),
              static_cast<QWidget*>(panel.Command3), static_cast<QWidget*>(panel.replaceButton),
              static_cast<QWidget*>(panel.replaceAllButton), static_cast<QWidget*>(editor_->Combo1)})
            add(*control);
        const Form2& form2 = program_->form2();
        for (const QWidget* control : {static_cast<QWidget*>(form2.log1), static_cast<QWidget*>(form2.Command1)})
            add(*control);
        return text + std::to_string(panel.width()) + " x " + std::to_string(panel.height()) + ", " +
               std::to_string(form2.Picture2->height()) + ", " + std::to_string(program_->form1().RichTextBox1->y()) +
               "\n";
    }

    const QFont before_ = QApplication::font();
    TempFolder temp_;
    std::unique_ptr<Program> program_;
    fr_edit* editor_ = nullptr;
};

std::string nameOf(const QWidget& widget) {
    return widget.objectName().toStdString() + " in " + widget.parentWidget()->objectName().toStdString();
}

bool hasText(const QWidget& widget) {
    return qobject_cast<const QLabel*>(&widget) || qobject_cast<const QAbstractButton*>(&widget) ||
           qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QComboBox*>(&widget);
}

void expectNothingCutOff(const QWidget& window) {
    for (const QWidget* widget : window.findChildren<QWidget*>())
        EXPECT_TRUE(!widget->isVisible() || widget->isWindow() || fits(*widget)) << nameOf(*widget);
}

// Texts side by side, each within what holds it.
void expectNothingOverlaps(const QWidget& window) {
    const auto isText = [](const QWidget* widget) { return widget->isVisible() && hasText(*widget); };
    for (const QWidget* widget : window.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (!isText(widget))
            continue;
        EXPECT_TRUE(window.rect().contains(widget->geometry())) << nameOf(*widget);
        for (const QWidget* other : window.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            EXPECT_TRUE(other == widget || !isText(other) || !other->geometry().intersects(widget->geometry()))
                << nameOf(*widget) << " and " << nameOf(*other);
    }
}

// The longest that the panel says of a search.
void expectOutcomesFit(fr_edit& editor) {
    FindPanel& panel = *editor.FindFrame;
    editor.txt_edit->setText("once");
    for (const auto& [text, outcome] : {std::pair("once", "1 of 1 \u2013 from the end again"),
                                        std::pair("\u0142", "is not a character of these files")}) {
        panel.Txt_find->setText(QString::fromUtf8(text));
        QTest::keyClick(panel.Txt_find, Qt::Key_Return, Qt::ShiftModifier);
        EXPECT_TRUE(panel.labelOutcome->text().contains(QString::fromUtf8(outcome)));
        EXPECT_TRUE(fits(*panel.labelOutcome)) << outcome;
        expectNothingOverlaps(panel);
    }
}

class LargeLetters : public Letters, public testing::WithParamInterface<std::tuple<int, bool>> {};

TEST_P(LargeLetters, AreNotCutOff) {
    const auto [points, fromTheStart] = GetParam();
    if (fromTheStart)
        setPoints(points);
    openAllWindows();
    setPoints(points);
    settle();
    for (const QWidget* window : windows())
        expectNothingCutOff(*window);
    expectNothingOverlaps(*editor_->FindFrame);
    expectNothingOverlaps(program_->fr_findref());
    expectOutcomesFit(*editor_);
    EXPECT_LE(editor_->Toolbar1->geometry().bottom(), editor_->Combo1->y());
    EXPECT_GE(editor_->Toolbar1->height(), editor_->Toolbar1->sizeHint().height());
    const Form1& form1 = program_->form1();
    EXPECT_LE(form1.Label1->geometry().bottom(), form1.RichTextBox1->y());
    const Form2& form2 = program_->form2();
    EXPECT_TRUE(form2.Picture2->rect().contains(form2.Label2->geometry()));
    EXPECT_GE(form2.log1->y(), form2.Frame1->fontMetrics().height()) << "below the caption";
    EXPECT_TRUE(form2.Frame1->rect().contains(form2.Command1->geometry()));
}

INSTANTIATE_TEST_SUITE_P(OfManySizes, LargeLetters, testing::Combine(testing::Values(14, 18), testing::Bool()));

TEST_F(Letters, OfTheUsualSizeLeaveEverythingAtItsDesignPlace) {
    openAllWindows();
    const std::string design = "Picture2 0 0 177 25\nCommand1 161 1 13 22\nLabel1 6 31 52 21\nTxt_find 58 31 113 21\n"
                               "Label2 6 57 52 21\ntxt_replace 58 57 113 21\nCheck1 6 83 92 21\nCheck2 99 83 75 21\n"
                               "Command2 6 109 79 21\nCommand3 91 109 79 21\nreplaceButton 6 135 79 21\n"
                               "replaceAllButton 91 135 79 21\n";
    EXPECT_EQ(places().substr(0, design.size()), design);
    EXPECT_EQ(places().substr(places().find("log1")), "log1 16 16 377 241\nCommand1 400 16 17 17\n177 x 195, 21, 24\n");
    expectOutcomesFit(*editor_);
    EXPECT_EQ(editor_->Combo1->y(), 40);
    EXPECT_EQ(editor_->Combo1->height(), 21);
    const fr_findref& search = program_->fr_findref();
    EXPECT_EQ(search.sizeHint(), QSize(335, 266));
    EXPECT_EQ(search.command1->geometry(), QRect(8, search.height() - 50, 89, 25));
    EXPECT_EQ(search.Picture1->geometry(), QRect(0, search.height() - 74, 145, 17));

    const std::string before = places();
    setPoints(18);
    settle();
    EXPECT_NE(places(), before);
    QApplication::setFont(before_);
    settle();
    EXPECT_EQ(places(), before);
}

TEST_F(Letters, TheFindPanelsCrossIsBold) {
    openAllWindows();
    EXPECT_EQ(editor_->FindFrame->Command1->font().family(), QStringLiteral("System"));
    EXPECT_TRUE(editor_->FindFrame->Command1->font().bold());
}

} // namespace
} // namespace blockhouse
