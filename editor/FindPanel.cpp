#include "editor/FindPanel.h"

#include "platform/richtext/RichTextBox.h"
#include "platform/widgets/clipboard.h"
#include "platform/widgets/controls.h"
#include "platform/widgets/fonts.h"

#include <QAction>
#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QStyle>

#include <algorithm>
#include <tuple>

namespace blockhouse {
namespace {

// The design sizes, which a font that is too large for them makes larger.
constexpr QSize panelSize = designPlace(0, 0, 2652, 2412).size();
constexpr int stripHeight = pixelsOf(372);
constexpr QRect closePlace = designPlace(2420, 20, 200, 330);
constexpr int margin = 6;
constexpr int rowHeight = 21;
constexpr int betweenRows = 5;
constexpr int labelWidth = 52;
constexpr int boxWidth = panelSize.width() - labelWidth - 2 * margin;
constexpr int wholeWordWidth = 92;
constexpr int replaceWidth = 75;
constexpr int buttonWidth = (panelSize.width() - 3 * margin) / 2;

// A check box as wide as its square and its text.
int widthOf(const QCheckBox& box) {
    const int square = box.style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &box);
    const int gap = box.style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, &box);
    return square + gap + textWidth(box, box.text());
}

// How far the cursor lies from the panel's corner while it is dragged, measured from the main window's corner.
constexpr int dragLeft = pixelsOf(200);
constexpr int dragTop = pixelsOf(1100);

} // namespace

FindPanel::FindPanel(RichTextBox& textBox, QWidget* parent) : QFrame(parent), textBox_(textBox) {
    setObjectName(QStringLiteral("FindFrame"));
    setAccessibleName(tr("Find and replace"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    makeTitleStrip();
    makeFields();
    makeButtons();
    labelOutcome = named(new QLabel(this), "labelOutcome", tr("Outcome of the search"));
    labelOutcome->setWordWrap(true);
    labelOutcome->setTextFormat(Qt::PlainText);
    labelOutcome->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    addKey("findNextPlace", tr("Find the next place"), QKeySequence(Qt::Key_F3), &FindPanel::stepForwards);
    addKey("findPreviousPlace", tr("Find the previous place"), QKeySequence(Qt::SHIFT | Qt::Key_F3),
           &FindPanel::stepBackwards);
    connect(&textBox_, &RichTextBox::changed, this, [this] {
        occurrences_.reset();
        say({}, false);
    });
    offerReplacing(false);
    hide();
}

void FindPanel::makeTitleStrip() {
    Picture2 = named(new QWidget(this), "Picture2", tr("Title strip: drag to move the panel"));
    Picture2->setAutoFillBackground(true);
    Picture2->setBackgroundRole(QPalette::Highlight);
    Picture2->setCursor(Qt::SizeAllCursor);
    Picture2->setToolTip(tr("Drag to move the panel"));
    Picture2->installEventFilter(this);
    Command1 = named(new QPushButton(QStringLiteral("x"), Picture2), "Command1", tr("Close the find panel"));
    QFont font = Command1->font();
    font.setFamily(QStringLiteral("System"));
    font.setBold(true);
    Command1->setFont(font);
    Command1->setCursor(Qt::ArrowCursor);
    Command1->setToolTip(tr("Close (Escape)"));
    connect(Command1, &QPushButton::clicked, this, &FindPanel::dismiss);
    Timer2 = new QTimer(this);
    Timer2->setObjectName(QStringLiteral("Timer2"));
    Timer2->setInterval(10);
    connect(Timer2, &QTimer::timeout, this, &FindPanel::followCursor);
}

void FindPanel::makeFields() {
    Label1 = named(new QLabel(tr("Find"), this), "Label1", tr("Find"));
    Txt_find = named(new QLineEdit(this), "Txt_find", tr("Text to find"));
    Label2 = named(new QLabel(tr("Replace"), this), "Label2", tr("Replace"));
    txt_replace = named(new QLineEdit(this), "txt_replace", tr("Text to replace it by"));
    Txt_find->installEventFilter(this);
    connect(Txt_find, &QLineEdit::textChanged, this, [this] {
        editedSince_ = true;
        forgetOutcome();
    });
    connect(Txt_find, &QLineEdit::returnPressed, this, &FindPanel::stepForwards);
    connect(txt_replace, &QLineEdit::returnPressed, this, &FindPanel::Replace);

    for (QLineEdit* line : {Txt_find, txt_replace})
        pasteWithin(*line, [this] { say(clipboardIsSilent(), false); });

    Check1 = named(new QCheckBox(tr("&Whole Word"), this), "Check1", tr("Whole Word"));
    Check1->setToolTip(tr("Finds the text only where a blank follows it"));
    connect(Check1, &QCheckBox::toggled, this, &FindPanel::forgetOutcome);
    Check2 = named(new QCheckBox(tr("&Replace"), this), "Check2", tr("Replace"));
    connect(Check2, &QCheckBox::toggled, this, &FindPanel::offerReplacing);
}

void FindPanel::makeButtons() {
    const auto button = [this](const char* name, const QString& caption, void (FindPanel::*act)()) {
        auto* made = named(new QPushButton(caption, this), name, QString(caption).remove(QLatin1Char('&')));
        connect(made, &QPushButton::clicked, this, act);
        return made;
    };
    Command2 = button("Command2", tr("F&ind"), &FindPanel::Find);
    Command3 = button("Command3", tr("Find &Next"), &FindPanel::FindNext);
    replaceButton = button("replaceButton", tr("Re&place"), &FindPanel::Replace);
    replaceAllButton = button("replaceAllButton", tr("Replace A&ll"), &FindPanel::ReplaceAll);
}

void FindPanel::layOut() {
    const int label =
        std::max({labelWidth, textWidth(*Label1, Label1->text()) + 4, textWidth(*Label2, Label2->text()) + 4});
    const int wholeWord = std::max(wholeWordWidth, widthOf(*Check1));
    const int replace = std::max(replaceWidth, widthOf(*Check2));
    int button = buttonWidth;
    for (const QPushButton* each : {Command2, Command3, replaceButton, replaceAllButton})
        button = std::max(button, textWidth(*each, each->text()) + 12);
    const int close = std::max(closePlace.width(), textWidth(*Command1, Command1->text()) + 5);
    const int closeHeight = std::max(closePlace.height(), textHeight(*Command1) + 4);
    const int strip = std::max(stripHeight, closeHeight + stripHeight - closePlace.height());
    const int row = std::max(rowHeight, textHeight(*this) + 6);
    const auto top = [&](int number) { return strip + margin + number * (row + betweenRows); };
    const int width =
        std::max({label + boxWidth + 2 * margin, wholeWord + replace + margin + 4, 2 * button + 3 * margin});
    // The last row of buttons takes no room while it is not offered.
    const int outcomeRow = Check2->isChecked() ? 5 : 4;
    const int outcomeHeight = std::max(2 * textHeight(*labelOutcome), labelOutcome->heightForWidth(width - 2 * margin));
    resize(width, top(outcomeRow) + outcomeHeight + margin);
    labelOutcome->setGeometry(margin, top(outcomeRow), width - 2 * margin, outcomeHeight);

    Picture2->setGeometry(0, 0, width, strip);
    const int besideClose = panelSize.width() - closePlace.x() - closePlace.width();
    Command1->setGeometry(width - besideClose - close, closePlace.y(), close, closeHeight);
    for (const auto& [name, box, number] : {std::tuple(Label1, Txt_find, 0), std::tuple(Label2, txt_replace, 1)}) {
        name->setGeometry(margin, top(number), label, row);
        box->setGeometry(margin + label, top(number), width - label - 2 * margin, row);
    }
    Check1->setGeometry(margin, top(2), wholeWord, row);
    Check2->setGeometry(margin + wholeWord + 1, top(2), replace, row);
    button = (width - 3 * margin) / 2;
    for (const auto& [left, right, number] :
         {std::tuple(Command2, Command3, 3), std::tuple(replaceButton, replaceAllButton, 4)}) {
        left->setGeometry(margin, top(number), button, row);
        right->setGeometry(2 * margin + button, top(number), button, row);
    }
}

void FindPanel::changeEvent(QEvent* event) {
    if (changesRoomOfTexts(*event))
        layOut();
    QFrame::changeEvent(event);
}

void FindPanel::offerReplacing(bool offered) {
    txt_replace->setEnabled(offered);
    Label2->setEnabled(offered);
    replaceButton->setVisible(offered);
    replaceAllButton->setVisible(offered);
    layOut();
}

void FindPanel::addKey(const char* name, const QString& caption, const QKeySequence& key, void (FindPanel::*act)()) {
    auto* command = new QAction(caption, parentWidget());
    command->setObjectName(QLatin1String(name));
    command->setShortcut(key);
    parentWidget()->addAction(command);
    connect(command, &QAction::triggered, this, act);
}

void FindPanel::open() {
    takeOverSelection();
    appear();
    Txt_find->setFocus();
    Txt_find->selectAll();
}

void FindPanel::appear() {
    // Dragged out of sight and closed, it must not come back there.
    const QRect room = parentWidget()->rect().adjusted(0, 0, -width(), -height());
    move(std::clamp(x(), 0, std::max(room.right(), 0)), std::clamp(y(), 0, std::max(room.bottom(), 0)));
    show();
    raise();
}

void FindPanel::dismiss() {
    hide();
    textBox_.setFocus();
}

// --- Dragging ---------------------------------------------------------------------------------------------------

bool FindPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == Picture2 && event->type() == QEvent::MouseButtonPress)
        Timer2->start();
    else if (watched == Picture2 && event->type() == QEvent::MouseButtonRelease)
        Timer2->stop();
    if (watched == Txt_find && event->type() == QEvent::KeyPress) {
        const auto& press = static_cast<const QKeyEvent&>(*event);
        const bool isReturn = press.key() == Qt::Key_Return || press.key() == Qt::Key_Enter;
        if (isReturn && press.modifiers().testFlag(Qt::ShiftModifier)) {
            stepBackwards();
            return true;
        }
    }
    return QFrame::eventFilter(watched, event);
}

void FindPanel::followCursor() {
    move(QCursor::pos() - window()->frameGeometry().topLeft() - QPoint(dragLeft, dragTop));
}

// A strip that is held while the panel goes away is never released.
void FindPanel::hideEvent(QHideEvent* event) {
    Timer2->stop();
    QFrame::hideEvent(event);
}

// What is typed after a click on the panel must not go into the text.
void FindPanel::mousePressEvent(QMouseEvent* event) {
    if (!isAncestorOf(QApplication::focusWidget()))
        Txt_find->setFocus(Qt::MouseFocusReason);
    QFrame::mousePressEvent(event);
}

void FindPanel::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        dismiss();
    else
        QFrame::keyPressEvent(event);
}

} // namespace blockhouse
