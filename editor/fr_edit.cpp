#include "editor/fr_edit.h"

#include "editor/BlockListModel.h"
#include "editor/EditorHost.h"
#include "editor/FindPanel.h"
#include "platform/widgets/controls.h"
#include "platform/widgets/DropDownList.h"
#include "platform/widgets/fonts.h"
#include "platform/widgets/NoticeArea.h"

#include <QCloseEvent>
#include <QMdiSubWindow>
#include <QStyle>
#include <QStyleOptionTitleBar>

#include <algorithm>

namespace blockhouse {
namespace {

constexpr QSize designSize = designPlace(0, 0, 7215, 5640).size();

} // namespace

fr_edit::fr_edit(EditorHost& host, QWidget* parent)
    : QWidget(parent), host_(host), handle_(handleOf(this)), blocks_(new BlockListModel(this)), work_(*this) {
    setObjectName(QStringLiteral("fr_edit"));
    makeToolbar();
    makeControls();
    makePlaceLabel();
    makeMenus();
    watchFile();
    resize(sizeHint());
    layOut();
}

fr_edit::~fr_edit() = default;

QSize fr_edit::sizeHint() const {
    return designSize;
}

void fr_edit::makeControls() {
    Combo1 = new DropDownList(tr("Settings of the chosen block"), this);
    Combo1->setObjectName(QStringLiteral("Combo1"));
    Combo1->setGeometry(designPlace(0, 600, 2532, 315));
    List1 = new DropDownList(tr("Blocks of the file"), this);
    List1->setObjectName(QStringLiteral("List1"));
    List1->setGeometry(designPlace(4440, 600, 2772, 315));
    List1->setModel(blocks_);
    txt_edit = named(new RichTextBox(this), "txt_edit", tr("Text of the file"), designPlace(0, 840, 3732, 3252));
    txt_edit->lower();
    fitRowsToFont();
    Picture1 = named(new PictureBox(this), "Picture1", tr("Status strip"));
    thebar = named(new PictureBox(Picture1), "thebar", tr("Loading progress"), designPlace(120, 0, 1332, 132));
    notices = new NoticeArea(*txt_edit);
    FindFrame = new FindPanel(*txt_edit, this);
    FindFrame->move(pixelsOf(1920), pixelsOf(840));
    connect(FindFrame, &FindPanel::wentRoundUnseen, this, [this](const QString& outcome) {
        notices->tell(QStringLiteral("wentRound"), outcome, {}, NoticeArea::briefly);
    });
    setFocusProxy(txt_edit);

    connect(List1, &DropDownList::chosen, this, &fr_edit::chooseBlock);
    connect(Combo1, &DropDownList::chosen, this, &fr_edit::chooseSetting);
    // Picked from the open list, the place is where typing is to go on.
    for (const DropDownList* list : {List1, Combo1})
        connect(list, &DropDownList::chosen, txt_edit, [this](int, Pick how) {
            if (how == Pick::InOpenList)
                txt_edit->setFocus();
        });
    txt_edit->setKeyDown([this](const QKeyEvent& event) { return assistTyping(event); });
    tellTroubleWithInput();
}

// --- Layout -----------------------------------------------------------------------------------------------------

void fr_edit::resizeEvent(QResizeEvent*) {
    layOut();
}

void fr_edit::changeEvent(QEvent* event) {
    if (changesRoomOfTexts(*event)) {
        fitRowsToFont();
        layOut();
    }
    QWidget::changeEvent(event);
}

// The text box keeps its place. By design the lists reach a little into it, and with a large font farther: they lie
// above it, and its text begins below them.
void fr_edit::fitRowsToFont() {
    const int top = std::max(pixelsOf(600), Toolbar1->sizeHint().height());
    for (DropDownList* list : {Combo1, List1})
        list->setGeometry(list->x(), top, list->width(), std::max(pixelsOf(315), textHeight(*list) + 6));
    txt_edit->setTopMargin(Pixels{Combo1->geometry().bottom() + 1 - txt_edit->y()});
}

// The frame counts as part of the window even while it is maximised and its frame not drawn, so that the text box
// keeps its distance from the window's edges. Distances are designed for a thin frame: of a thicker one only so much
// counts, or the box would reach under it.
QSize fr_edit::outerSize() const {
    constexpr int designedBorder = 4;
    const auto* frame = qobject_cast<const QMdiSubWindow*>(parentWidget());
    if (!frame)
        return frameGeometry().size();
    const int border =
        std::min(designedBorder, frame->style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, frame));
    QStyleOptionTitleBar title;
    title.titleBarState = frame->windowState() & ~Qt::WindowMaximized;
    const int caption = frame->style()->pixelMetric(QStyle::PM_TitleBarHeight, &title, frame);
    return size() + QSize(2 * border, border + caption);
}

void fr_edit::layOut() {
    const Twips width = toTwips(Pixels{outerSize().width()});
    const Twips height = toTwips(Pixels{outerSize().height()});
    Toolbar1->setGeometry(0, 0, this->width(), Combo1->y());
    placeLabel();
    Picture1->setGeometry(0, this->height() - pixelsOf(132), this->width(), pixelsOf(132));

    // A control that cannot take its size ends the layout, so that none gets a size that no longer fits the others.
    if (width.value < 200)
        return;
    txt_edit->resize(pixelsOf(width.value - 200), txt_edit->height());
    if (height.value < 1500)
        return;
    txt_edit->resize(txt_edit->width(), pixelsOf(height.value - 1500));
    const double half = toTwips(Pixels{txt_edit->width()}).value / 2;
    List1->setGeometry(pixelsOf(half), List1->y(), pixelsOf(half), List1->height());
    if (half < 100)
        return;
    Combo1->resize(pixelsOf(half - 100), Combo1->height());
}

// --- Closing ----------------------------------------------------------------------------------------------------

void fr_edit::closeEvent(QCloseEvent* event) {
    handOverUnsavedText();
    host_.windowClosed(handle_);
    QWidget::closeEvent(event);
}

int fr_edit::Findin(std::string_view what) const {
    return blockhouse::Findin(blocks_->blocks(), what);
}

} // namespace blockhouse
