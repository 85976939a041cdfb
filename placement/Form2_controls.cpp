// The placement editor's menus and controls, at their design places.
#include "placement/Canvas.h"
#include "placement/Form2.h"
#include "placement/structure_colour.h"
#include "platform/widgets/controls.h"
#include "platform/widgets/DropDownList.h"
#include "platform/widgets/fonts.h"
#include "platform/widgets/NoticeArea.h"
#include "platform/widgets/screen_room.h"

#include <QAction>
#include <qdrawutil.h>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QStringListModel>
#include <QTextDocument>
#include <QVBoxLayout>

#include <algorithm>

namespace blockhouse {
namespace {

constexpr int stripHeight = pixelsOf(315);

// Shows its widget whole where there is room for it, and as much as there is room for where there is less.
class ScrollingRoom : public QScrollArea {
public:
    using QScrollArea::QScrollArea;

    QSize sizeHint() const override { return widget()->minimumSize(); }

    // In pixels. What does not fit any more can be scrolled into view.
    void keepFootFree(int height) { setViewportMargins(0, 0, 0, height); }
};

// What it holds may begin at its very corner: its frame is one line, above the ink of any text.
class Strip : public QFrame {
public:
    using QFrame::QFrame;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        qDrawShadeLine(&painter, 0, 1, width(), 1, palette());
    }
};

} // namespace

Form2::Form2() : sideNames_(new QStringListModel(this)), structureNames_(new QStringListModel(this)) {
    setObjectName(QStringLiteral("Form2"));
    setWindowTitle(tr("Building tool"));
    setAccessibleName(tr("Building tool"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->setMenuBar(makeMenus());
    auto* room = new ScrollingRoom(this);
    room->setFrameShape(QFrame::NoFrame);
    room->setFocusPolicy(Qt::NoFocus); // it follows the focus of what is inside
    room->setWidgetResizable(true);
    room->setWidget(makeControls());
    column->addWidget(room, 1);
    Picture2 = named(new Strip(this), "Picture2", tr("Status"));
    column->addWidget(Picture2);
    Label2 = named(new QLabel(Picture2), "Label2", tr("Pointer coordinates"));
    labelWritten = named(new QLabel(Picture2), "labelWritten", tr("Written into the text"));
    labelWritten->setTextFormat(Qt::PlainText);
    labelWritten->hide();
    notices = new NoticeArea(*room);
    connect(notices, &NoticeArea::heightChanged, room, &ScrollingRoom::keepFootFree);
    makeKeys();
    fitToFont();
    startAtSizeFor(*room);

    connect(Combo1, &DropDownList::chosen, this, &Form2::chooseSide);
    connect(Combo2, &DropDownList::chosen, this, &Form2::chooseStructure);
    connect(Picture1, &Canvas::pressed, this, &Form2::press);
    connect(Picture1, &Canvas::moved, this, &Form2::move);
    connect(Picture1, &Canvas::released, this, &Form2::release);
}

void Form2::changeEvent(QEvent* event) {
    if (changesRoomOfTexts(*event))
        fitToFont();
    QWidget::changeEvent(event);
}

// What has a text of the desktop's font is larger than by design where the font is too large for it.
void Form2::fitToFont() {
    Label2->adjustSize();
    labelWritten->adjustSize();
    labelWritten->move(textWidth(*Label2, QStringLiteral("x: -1000.00 y: -1000.00")) + 12, 0);
    Picture2->setFixedHeight(std::max(stripHeight, textHeight(*Label2) + 1));
    QRect log = designPlace(240, 240, 5655, 3615);
    log.setTop(std::max(log.top(), textHeight(*Frame1) + 2)); // below the frame's caption
    log1->setGeometry(log);
    const int close = std::max(pixelsOf(255), textWidth(*Command1, Command1->text()) + 6);
    Command1->setGeometry(pixelsOf(6000), log.top(), close, close);
}

void Form2::startAtSizeFor(const QScrollArea& room) {
    const QSize whole = sizeHint();
    const QSize bounded = boundedToScreen(*this, whole);
    const QSize scrollBar(room.verticalScrollBar()->sizeHint().width(), 0);
    resize(bounded.height() < whole.height() ? boundedToScreen(*this, whole + scrollBar) : bounded);
}

QMenuBar* Form2::makeMenus() {
    auto* bar = new QMenuBar(this);
    const auto menu = [bar](const char* name, const QString& caption) {
        QMenu* made = bar->addMenu(caption);
        made->setObjectName(QLatin1String(name));
        return made;
    };
    const auto item = [this](QMenu* in, const char* name, const QString& caption, auto act) {
        QAction* made = in->addAction(caption);
        made->setObjectName(QLatin1String(name));
        connect(made, &QAction::triggered, this, act);
        return made;
    };
    QMenu* file = menu("m_file", tr("&File"));
    item(file, "mnu_open", tr("&Open"), [this] { open(); })->setShortcut(QKeySequence::Open);
    m_save_ = item(file, "m_save", tr("&Save ME"), [this] { save(); });
    m_save_->setShortcut(QKeySequence::Save);
    m_save_->setEnabled(false); // until there is something to save
    QMenu* view = menu("mnu_view", tr("&View"));
    item(view, "m_linelog", tr("&line Log"), [this] {
        Frame1->show();
        Frame1->raise();
    });
    return bar;
}

void Form2::makeKeys() {
    const auto key = [this](const QKeySequence& sequence, void (Form2::*act)()) {
        const auto* shortcut = new QShortcut(sequence, this);
        connect(shortcut, &QShortcut::activated, this, act);
    };
    key(Qt::CTRL | Qt::Key_Z, &Form2::undo);
    key(Qt::CTRL | Qt::Key_Y, &Form2::redo);
    key(Qt::CTRL | Qt::SHIFT | Qt::Key_Z, &Form2::redo);
    key(Qt::CTRL | Qt::SHIFT | Qt::Key_T, &Form2::closedTextWanted);
    log1->installEventFilter(this);
}

QWidget* Form2::makeControls() {
    auto* inside = new QWidget(this);
    inside->setMinimumSize(pixelsOf(7575), pixelsOf(5805) - stripHeight);
    const auto list = [inside](const char* name, const QString& whatItLists, QStringListModel* model) {
        auto* made = new DropDownList(whatItLists, inside);
        made->setObjectName(QLatin1String(name));
        made->setModel(model);
        useSmallLetters(*made);
        return made;
    };
    Combo1 = list("Combo1", tr("Sides"), sideNames_);
    Combo1->setGeometry(designPlace(120, 120, 2175, 315));
    Combo2 = list("Combo2", tr("Structures"), structureNames_);
    Combo2->setGeometry(designPlace(2640, 120, 1935, 315));
    Picture1 = named(new Canvas(board_, inside), "Picture1", tr("Places of the structures"));
    Picture1->move(pixelsOf(120), pixelsOf(600));
    Text1 = named(new QPlainTextEdit(inside), "Text1", tr("What the colours mean"));
    Text1->setFont(arial(8.25));
    // With a caret, so that it is seen where the keyboard is.
    Text1->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    Text1->setTabChangesFocus(true);
    // The longest line just fits, but only without a scroll bar beside it.
    Text1->setLineWrapMode(QPlainTextEdit::NoWrap);
    Text1->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    Text1->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    Text1->document()->setDocumentMargin(1);
    Text1->setPlainText(QString::fromLatin1(colourLegend.data(), static_cast<qsizetype>(colourLegend.size())));
    Text1->setGeometry(designPlace(5040, 720, 2295, 1815));
    makeLog(inside);
    return inside;
}

void Form2::makeLog(QWidget* inside) {
    Frame1 = named(new QGroupBox(tr("log"), inside), "Frame1", tr("Written lines"));
    Frame1->setGeometry(designPlace(840, 600, 6375, 4215));
    Frame1->setAutoFillBackground(true);
    Frame1->hide();
    log1 = named(new QPlainTextEdit(Frame1), "log1", tr("Written lines"));
    log1->setTabChangesFocus(true);
    log1->setUndoRedoEnabled(false);
    Command1 = named(new QPushButton(QStringLiteral("x"), Frame1), "Command1", tr("Hide the log"));
    connect(Command1, &QPushButton::clicked, Frame1, &QWidget::hide);
    const auto* leaving = new QShortcut(QKeySequence(Qt::Key_Escape), Frame1, nullptr, nullptr, Qt::WindowShortcut);
    connect(leaving, &QShortcut::activated, Frame1, &QWidget::hide);
}

} // namespace blockhouse
