#include "shell/ExplorerPanel.h"

#include "platform/widgets/controls.h"
#include "platform/widgets/fonts.h"
#include "shell/cursor_and_window_state.h"
#include "shell/DirectoryTreeModel.h"
#include "shell/DirectoryView.h"
#include "shell/splitter.h"

#include <QEvent>
#include <QLayout>
#include <QPushButton>

#include <algorithm>

namespace blockhouse {
namespace {

constexpr int treeTop = pixelsOf(360);
constexpr int stripHeight = pixelsOf(8310); // at least: it can be grabbed all the way down a tall window

} // namespace

ExplorerPanel::ExplorerPanel(QWidget* parent)
    : QWidget(parent), model_(new DirectoryTreeModel(this)), tree_(new DirectoryView(this)),
      closeButton_(new QPushButton(this)), handle_(new QWidget(this)), width_(toPixels(Twips{2724})) {
    setObjectName(QStringLiteral("picPlane"));
    setAccessibleName(tr("File explorer"));
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Ignored);
    makeTree();
    makeCloseButton();
    makeHandle();
}

void ExplorerPanel::makeTree() {
    named(tree_, "Tree1", tr("Directories and their files"));
    tree_->setFont(arial(7.5));
    tree_->setModel(model_);
    tree_->setGeometry(pixelsOf(240), treeTop, 0, pixelsOf(5292));
}

void ExplorerPanel::makeCloseButton() {
    named(closeButton_, "Command1", tr("Close the file explorer"));
    closeButton_->setText(QStringLiteral("x"));
    closeButton_->setToolTip(tr("Close the file explorer"));
    closeButton_->setFont(arial(7.5, QFont::Bold));
    const int side = pixelsOf(252);
    closeButton_->setGeometry(0, (treeTop - side) / 2, side, side);
    connect(closeButton_, &QPushButton::clicked, this, &ExplorerPanel::closeWanted);
}

void ExplorerPanel::makeHandle() {
    named(handle_, "picHandle", tr("Width of the file explorer"));
    handle_->setToolTip(tr("Drag to change the panel's width"));
    handle_->setCursor(Qt::SizeHorCursor);
    handle_->setAutoFillBackground(true);
    handle_->setBackgroundRole(QPalette::Mid);
    handle_->setGeometry(-pixelsOf(120), 0, pixelsOf(240), stripHeight);
    handle_->installEventFilter(this);
    resizing_.setParent(this);
    resizing_.setObjectName(QStringLiteral("timResize"));
    resizing_.setInterval(50);
    connect(&resizing_, &QTimer::timeout, this, &ExplorerPanel::followCursor);
}

void ExplorerPanel::resizeEvent(QResizeEvent*) {
    constexpr int margin = 25; // pixels, whatever the scale of everything else
    if (width() >= margin)
        tree_->resize(width() - margin, tree_->height());
    closeButton_->move(width() - margin, closeButton_->y());
    handle_->resize(handle_->width(), std::max(stripHeight, height()));
}

bool ExplorerPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == handle_) {
        if (event->type() == QEvent::MouseButtonPress)
            resizing_.start();
        else if (event->type() == QEvent::MouseButtonRelease || event->type() == QEvent::Hide)
            resizing_.stop();
    }
    return QWidget::eventFilter(watched, event);
}

void ExplorerPanel::followCursor() {
    const Pixels x = CursorX();
    if (x == lastCursorX_)
        return;
    lastCursorX_ = x;
    const QRect frame = window()->frameGeometry();
    const OuterSpan span{toTwips(Pixels{frame.left()}), toTwips(Pixels{frame.width()})};
    width_ = toPixels(panelWidthAt(x, span, twipsPerPixel));
    updateGeometry();
    if (QLayout* around = parentWidget() ? parentWidget()->layout() : nullptr)
        around->activate();
}

} // namespace blockhouse
