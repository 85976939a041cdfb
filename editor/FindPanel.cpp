#include "editor/FindPanel.h"

#include "editor/find_rules.h"
#include "editor/textboxbas.h"
#include "platform/richtext/RichTextBox.h"
#include "platform/text/codepage.h"
#include "platform/widgets/controls.h"
#include "platform/widgets/qt_text.h"

#include <QCursor>
#include <QKeyEvent>

#include <algorithm>

namespace blockhouse {
namespace {

constexpr int panelWidth = pixelsOf(2652);
constexpr int panelHeight = pixelsOf(2412);
constexpr int stripHeight = pixelsOf(372);
constexpr int margin = 6;
constexpr int rowHeight = 21;
constexpr int rowStep = 26;
constexpr int labelWidth = 52;

// How far the cursor lies from the panel's corner while it is dragged, measured from the main window's corner.
constexpr int dragLeft = pixelsOf(200);
constexpr int dragTop = pixelsOf(1100);

constexpr int rowTop(int row) {
    return stripHeight + margin + row * rowStep;
}

} // namespace

FindPanel::FindPanel(RichTextBox& textBox, QWidget* parent) : QFrame(parent), textBox_(textBox) {
    setObjectName(QStringLiteral("FindFrame"));
    setAccessibleName(tr("Find and replace"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    resize(panelWidth, panelHeight);
    makeTitleStrip();
    makeFields();
    makeButtons();
    offerReplacing(false);
    hide();
}

void FindPanel::makeTitleStrip() {
    Picture2 = named(new QWidget(this), "Picture2", tr("Title strip: drag to move the panel"));
    Picture2->setGeometry(0, 0, panelWidth, stripHeight);
    Picture2->setAutoFillBackground(true);
    Picture2->setBackgroundRole(QPalette::Highlight);
    Picture2->setCursor(Qt::SizeAllCursor);
    Picture2->setToolTip(tr("Drag to move the panel"));
    Picture2->installEventFilter(this);
    Command1 = named(new QPushButton(QStringLiteral("x"), Picture2), "Command1", tr("Close the find panel"));
    Command1->setGeometry(pixelsOf(2420), pixelsOf(20), pixelsOf(200), pixelsOf(330));
    QFont font = Command1->font();
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
    const auto field = [this](int row, QLabel*& label, const char* labelName, const QString& caption, QLineEdit*& box,
                              const char* boxName, const QString& accessibleName) {
        label = named(new QLabel(caption, this), labelName, caption);
        label->setGeometry(margin, rowTop(row), labelWidth, rowHeight);
        box = named(new QLineEdit(this), boxName, accessibleName);
        box->setGeometry(margin + labelWidth, rowTop(row), panelWidth - labelWidth - 2 * margin, rowHeight);
    };
    field(0, Label1, "Label1", tr("Find"), Txt_find, "Txt_find", tr("Text to find"));
    field(1, Label2, "Label2", tr("Replace"), txt_replace, "txt_replace", tr("Text to replace it by"));
    connect(Txt_find, &QLineEdit::textChanged, this, [this] { tint(false); });
    connect(Txt_find, &QLineEdit::returnPressed, this, &FindPanel::findOrGoOn);
    connect(txt_replace, &QLineEdit::returnPressed, this, &FindPanel::Replace);

    const int half = (panelWidth - 2 * margin) / 2;
    Check1 = named(new QCheckBox(tr("&Whole Word"), this), "Check1", tr("Whole Word"));
    Check1->setGeometry(margin, rowTop(2), half + 10, rowHeight);
    Check1->setToolTip(tr("Finds the text only where a blank follows it"));
    Check2 = named(new QCheckBox(tr("&Replace"), this), "Check2", tr("Replace"));
    Check2->setGeometry(margin + half + 11, rowTop(2), half - 7, rowHeight);
    connect(Check2, &QCheckBox::toggled, this, &FindPanel::offerReplacing);
}

void FindPanel::makeButtons() {
    const int width = (panelWidth - 3 * margin) / 2;
    const auto button = [&](const char* name, const QString& caption, int row, int column, void (FindPanel::*act)()) {
        auto* made = named(new QPushButton(caption, this), name, QString(caption).remove(QLatin1Char('&')));
        made->setGeometry(margin + column * (width + margin), rowTop(row), width, rowHeight);
        connect(made, &QPushButton::clicked, this, act);
        return made;
    };
    Command2 = button("Command2", tr("F&ind"), 3, 0, &FindPanel::Find);
    Command3 = button("Command3", tr("Find &Next"), 3, 1, &FindPanel::FindNext);
    replaceButton = button("replaceButton", tr("Re&place"), 4, 0, &FindPanel::Replace);
    replaceAllButton = button("replaceAllButton", tr("Replace &All"), 4, 1, &FindPanel::ReplaceAll);
}

void FindPanel::offerReplacing(bool offered) {
    txt_replace->setEnabled(offered);
    Label2->setEnabled(offered);
    replaceButton->setVisible(offered);
    replaceAllButton->setVisible(offered);
}

void FindPanel::open() {
    // Dragged out of sight and closed, it must not come back there.
    const QRect room = parentWidget()->rect().adjusted(0, 0, -width(), -height());
    move(std::clamp(x(), 0, std::max(room.right(), 0)), std::clamp(y(), 0, std::max(room.bottom(), 0)));
    show();
    raise();
    Txt_find->setFocus();
    Txt_find->selectAll();
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

void FindPanel::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        dismiss();
    else
        QFrame::keyPressEvent(event);
}

// --- Searching --------------------------------------------------------------------------------------------------

std::string FindPanel::wanted() const {
    return documentBytes(Txt_find->text()).bytes;
}

std::string FindPanel::searchString() const {
    return blockhouse::searchString(wanted(), Check1->isChecked());
}

void FindPanel::Find() {
    if (!wanted().empty())
        showOutcome(textBox_.find(searchString()));
}

void FindPanel::FindNext() {
    const std::string text = wanted();
    if (!text.empty())
        showOutcome(textBox_.find(searchString(), textBox_.selStart() + text.size()));
}

// Return finds, and pressed again goes on from the hit.
void FindPanel::findOrGoOn() {
    if (codepage::equalIgnoringCase(textBox_.selText(), wanted()))
        FindNext();
    else
        Find();
}

void FindPanel::showOutcome(CaretPosition position) {
    tint(position < 0);
    if (position > 0)
        textBox_.setSelStart(position);
    textBox_.setSelLength(static_cast<std::ptrdiff_t>(wanted().size()));
    ScrollLines(textBox_, 0, GetCurrentLine(textBox_) - GetFirstVisibleLine(textBox_));
}

void FindPanel::tint(bool inVain) {
    QPalette palette;
    if (inVain) {
        palette.setColor(QPalette::Base, QColor(255, 205, 205));
        palette.setColor(QPalette::Text, Qt::black);
    }
    Txt_find->setPalette(palette);
}

// --- Replacing --------------------------------------------------------------------------------------------------

void FindPanel::Replace() {
    const std::string text = wanted();
    if (text.empty())
        return;
    CaretPosition from = textBox_.selStart();
    const bool isHit =
        textBox_.selLength() == static_cast<std::ptrdiff_t>(text.size()) && textBox_.find(searchString(), from) == from;
    textBox_.setSelStart(from);
    if (isHit) {
        textBox_.setSelLength(static_cast<std::ptrdiff_t>(text.size()));
        textBox_.setSelText(documentBytes(txt_replace->text()).bytes);
        from = textBox_.selStart();
    }
    showOutcome(textBox_.find(searchString(), from));
}

void FindPanel::ReplaceAll() {
    const std::string text = wanted();
    if (text.empty())
        return;
    textBox_.endComposition();
    const std::vector<TextRange> hits = replaceableRanges(textBox_.text(), text, Check1->isChecked());
    tint(hits.empty());
    textBox_.replaceRanges(hits, documentBytes(txt_replace->text()).bytes);
}

} // namespace blockhouse
