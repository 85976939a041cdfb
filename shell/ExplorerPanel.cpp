#include "shell/ExplorerPanel.h"

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

constexpr int pixels(double twips) {
    return toPixels(Twips{twips}).value;
}

QFont panelFont(QFont::Weight weight) {
    QFont font(QStringLiteral("Arial"));
    font.setPointSizeF(7.5);
    font.setWeight(weight);
    return font;
}

constexpr int treeTop = pixels(360);
constexpr int stripHeight = pixels(8310); // at least: it can be grabbed all the way down a tall window

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
    tree_->setObjectName(QStringLiteral("Tree1"));
    tree_->setAccessibleName(tr("Directories and their files"));
    tree_->setFont(panelFont(QFont::Normal));
    tree_->setModel(model_);
    tree_->setGeometry(pixels(240), treeTop, 0, pixels(5292));
}

void ExplorerPanel::makeCloseButton() {
    closeButton_->setObjectName(QStringLiteral("Command1"));
    closeButton_->setText(QStringLiteral("x"));
    closeButton_->setAccessibleName(tr("Close the file explorer"));
    closeButton_->setToolTip(tr("Close the file explorer"));
    closeButton_->setFont(panelFont(QFont::Bold));
    const int side = pixels(252);
    closeButton_->setGeometry(0, (treeTop - side) / 2, side, side);
    connect(closeButton_, &QPushButton::clicked, this, &ExplorerPanel::closeWanted);
}

void ExplorerPanel::makeHandle() {
    handle_->setObjectName(QStringLiteral("picHandle"));
    handle_->setAccessibleName(tr("Width of the file explorer"));
    handle_->setToolTip(tr("Drag to change the panel's width"));
    handle_->setCursor(Qt::SizeHorCursor);
    handle_->setAutoFillBackground(true);
    handle_->setBackgroundRole(QPalette::Mid);
    handle_->setGeometry(-pixels(120), 0, pixels(240), stripHeight);
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
