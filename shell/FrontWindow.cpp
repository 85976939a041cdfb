#include "shell/FrontWindow.h"

#include "platform/widgets/MenuSource.h"
#include "shell/WindowBar.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>

#include <algorithm>
#include <utility>

namespace blockhouse {
namespace {

bool canBeSeen(const QMdiSubWindow* frame) {
    return frame && !frame->isHidden() && !frame->isMinimized();
}

QMdiSubWindow* frameAround(QWidget& window) {
    if (auto* frame = qobject_cast<QMdiSubWindow*>(&window))
        return frame;
    return qobject_cast<QMdiSubWindow*>(window.parentWidget());
}

} // namespace

FrontWindow::FrontWindow(const Surroundings& surroundings, QList<QAction*> ownMenus)
    : surroundings_(surroundings), ownMenus_(std::move(ownMenus)) {
    connect(&surroundings_.area, &QMdiArea::subWindowActivated, this, &FrontWindow::onActivated);
    connect(&surroundings_.bar, &WindowBar::broughtUp, this, [this](WindowHandle window) {
        QWidget* widget = windowOf(window);
        QMdiSubWindow* shown = widget ? frameAround(*widget) : nullptr;
        if (canBeSeen(shown)) {
            makeFront(shown);
            giveKeyboardTo(shown);
        }
    });
    connect(&surroundings_.bar, &WindowBar::minimised, this, &FrontWindow::settle);
    showMenus();
}

QMdiSubWindow* FrontWindow::frame() const {
    return canBeSeen(front_) ? front_.data() : nullptr;
}

// --- Bringing up ------------------------------------------------------------------------------------------------

void FrontWindow::bringUp(QWidget& window) {
    QMdiSubWindow* frame = frameAround(window);
    if (!frame)
        return;
    if (frame->isMinimized())
        frame->showNormal();
    frame->show();
    frame->raise();
    makeFront(frame);
    giveKeyboardTo(frame);
}

void FrontWindow::addToBar(WindowHandle window, const QString& caption) {
    QWidget* widget = windowOf(window);
    const QMdiSubWindow* opened = widget ? frameAround(*widget) : nullptr;
    const bool anotherIsInFront = frame() && frame() != opened;
    if (anotherIsInFront && surroundings_.bar.hasButton(handleOf(frame()->widget())))
        surroundings_.bar.addMinimised(window, caption);
    else
        surroundings_.bar.addWindow(window, caption);
    settle();
}

void FrontWindow::bringUpAlone(QMdiSubWindow& frame) {
    const WindowHandle window = frame.widget() ? handleOf(frame.widget()) : 0;
    if (!frame.isMinimized() || !surroundings_.bar.bringUp(window))
        bringUp(frame);
}

// --- The rule ---------------------------------------------------------------------------------------------------

void FrontWindow::watch(QMdiSubWindow* frame) {
    if (lastUsed_.contains(frame))
        return;
    lastUsed_.prepend(frame);
    frame->installEventFilter(this);
    // A press on its title bar is for the window inside.
    frame->setFocusProxy(frame->widget());
    connect(frame, &QMdiSubWindow::windowStateChanged, this,
            [this, frame](Qt::WindowStates before, Qt::WindowStates now) { onStateChanged(frame, before ^ now); });
    connect(frame, &QObject::destroyed, this, [this, frame] {
        lastUsed_.removeOne(frame);
        forgetInWalk(frame);
        settleSoon();
    });
}

bool FrontWindow::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Close:
        // Closed, it leaves the area before it is hidden.
        if (watched == front_)
            front_.clear();
        settleSoon();
        break;
    case QEvent::Hide:
        settleSoon();
        break;
    case QEvent::KeyRelease:
        if (static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Control)
            endWalk();
        break;
    case QEvent::MouseButtonPress:
    case QEvent::ApplicationStateChange:
        endWalk();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void FrontWindow::onStateChanged(QMdiSubWindow* frame, Qt::WindowStates changed) {
    if (changed.testFlag(Qt::WindowMinimized)) {
        // Tab would walk into a minimised window.
        frame->setFocusPolicy(frame->isMinimized() ? Qt::NoFocus : Qt::StrongFocus);
        if (!frame->isMinimized()) {
            makeFront(frame);
            giveKeyboardTo(frame);
        }
        settle();
    } else if (changed.testFlag(Qt::WindowMaximized) && !frame->isMaximized() && keyboardIsIn(*frame)) {
        // The toolkit leaves it with whatever control comes first.
        frame->widget()->setFocus(Qt::OtherFocusReason);
    }
}

// None is active also while another program is, or while the main window is hidden: that changes nothing here.
void FrontWindow::onActivated(QMdiSubWindow* frame) {
    if (!frame)
        return;
    watch(frame);
    if (canBeSeen(frame))
        makeFront(frame);
    else
        settle();
}

void FrontWindow::settleSoon() {
    if (std::exchange(settlesSoon_, true))
        return;
    // Qt is still handling this event and goes on using the window afterwards.
    QMetaObject::invokeMethod(
        this,
        [this] {
            settlesSoon_ = false;
            settle();
        },
        Qt::QueuedConnection);
}

void FrontWindow::settle() {
    QMdiSubWindow* wanted = canBeSeen(front_) ? front_.data() : topmostVisible();
    const bool isLost = keyboardIsNowhere() || (keyboardIsIn(surroundings_.area) && !(wanted && keyboardIsIn(*wanted)));
    QWidget* keyboard = surroundings_.mainWindow.focusWidget();
    makeFront(wanted);
    if (!isLost) {
        // Activating a window moves the keyboard into it.
        if (surroundings_.mainWindow.focusWidget() != keyboard)
            keyboard->setFocus(Qt::OtherFocusReason);
        return;
    }
    if (wanted)
        giveKeyboardTo(wanted);
    else
        giveKeyboardToTree();
}

void FrontWindow::makeFront(QMdiSubWindow* frame) {
    front_ = frame;
    if (frame) {
        watch(frame);
        if (!isWalking_ && lastUsed_.first() != frame)
            lastUsed_.move(lastUsed_.indexOf(frame), 0);
    }
    if (surroundings_.area.activeSubWindow() != frame)
        surroundings_.area.setActiveSubWindow(frame);
    showMenus();
}

QMdiSubWindow* FrontWindow::topmostVisible() const {
    const QList<QMdiSubWindow*> frames = surroundings_.area.subWindowList(QMdiArea::StackingOrder);
    const auto found = std::find_if(frames.rbegin(), frames.rend(), canBeSeen);
    return found == frames.rend() ? nullptr : *found;
}

void FrontWindow::showMenus() {
    QList<QAction*> wanted = ownMenus_;
    if (auto* source = dynamic_cast<MenuSource*>(frame() ? frame()->widget() : nullptr)) {
        wanted.clear();
        for (const QMenu* menu : source->menus())
            wanted.append(menu->menuAction());
    }
    QMenuBar* menus = surroundings_.mainWindow.menuBar();
    if (menus->actions() == wanted)
        return;
    menus->clear();
    menus->addActions(wanted);
}

// --- The keyboard -----------------------------------------------------------------------------------------------

bool FrontWindow::keyboardIsIn(const QWidget& widget) const {
    const QWidget* focus = surroundings_.mainWindow.focusWidget();
    return focus && (focus == &widget || widget.isAncestorOf(focus));
}

bool FrontWindow::keyboardIsNowhere() const {
    const QWidget* focus = surroundings_.mainWindow.focusWidget();
    return !focus || focus == &surroundings_.mainWindow || !focus->isVisibleTo(&surroundings_.mainWindow);
}

void FrontWindow::giveKeyboardTo(QMdiSubWindow* frame) {
    if (frame->widget() && !keyboardIsIn(*frame->widget()))
        frame->widget()->setFocus(Qt::OtherFocusReason);
}

void FrontWindow::giveKeyboardToTree() {
    if (surroundings_.tree.isVisibleTo(&surroundings_.mainWindow))
        surroundings_.tree.setFocus(Qt::OtherFocusReason);
    else
        surroundings_.area.setFocus(Qt::OtherFocusReason);
}

void FrontWindow::leave(const QWidget& panel) {
    if (!keyboardIsIn(panel))
        return;
    if (QMdiSubWindow* front = frame())
        giveKeyboardTo(front);
    else
        surroundings_.area.setFocus(Qt::OtherFocusReason);
}

void FrontWindow::goAround() {
    const bool isInTree = keyboardIsIn(surroundings_.tree);
    const bool isInBar = keyboardIsIn(surroundings_.bar);
    if (isInTree && frame())
        return giveKeyboardTo(frame());
    if (!isInBar && surroundings_.bar.takeKeyboard())
        return;
    if (!isInTree && surroundings_.tree.isVisibleTo(&surroundings_.mainWindow))
        return giveKeyboardToTree();
    if (frame())
        giveKeyboardTo(frame());
}

// --- Walking through the windows --------------------------------------------------------------------------------

void FrontWindow::walk(int step) {
    if (!isWalking_)
        beginWalk();
    const qsizetype count = walked_.size();
    for (qsizetype tries = 0; tries < count; ++tries) {
        // From no window at all, both ways begin at the end they lead to.
        walkedTo_ = walkedTo_ < 0 && step < 0 ? count - 1 : (walkedTo_ + step + count) % count;
        if (!walked_.at(walkedTo_)->isHidden())
            return bringUpAlone(*walked_.at(walkedTo_));
    }
}

void FrontWindow::beginWalk() {
    isWalking_ = true;
    walked_ = lastUsed_;
    const bool startsAtFront = frame() && walked_.first() == frame();
    walkedTo_ = startsAtFront ? 0 : -1;
    qApp->installEventFilter(this); // for the key's release
}

void FrontWindow::forgetInWalk(QMdiSubWindow* frame) {
    const qsizetype at = walked_.indexOf(frame);
    if (at < 0)
        return;
    walked_.removeAt(at);
    if (at <= walkedTo_)
        --walkedTo_;
}

void FrontWindow::endWalk() {
    if (!isWalking_)
        return;
    isWalking_ = false;
    qApp->removeEventFilter(this);
    walked_.clear();
    if (front_)
        makeFront(front_);
}

void FrontWindow::bringUpButton(int index) {
    QWidget* window = surroundings_.bar.windowOfButton(index);
    if (QMdiSubWindow* frame = window ? frameAround(*window) : nullptr)
        bringUpAlone(*frame);
}

} // namespace blockhouse
