#include "platform/widgets/window_lock.h"

#include <QGuiApplication>

namespace blockhouse {
namespace {

bool someWindowIsLocked = false;

} // namespace

WindowUpdateLock::WindowUpdateLock(QWidget* window) {
    if (someWindowIsLocked || !window || !window->updatesEnabled())
        return;
    window_ = window;
    held_ = someWindowIsLocked = true;
    window->setUpdatesEnabled(false);
}

WindowUpdateLock::~WindowUpdateLock() {
    if (!held_)
        return;
    someWindowIsLocked = false;
    if (window_)
        window_->setUpdatesEnabled(true);
}

Hourglass::Hourglass() {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

Hourglass::~Hourglass() {
    QGuiApplication::restoreOverrideCursor();
}

} // namespace blockhouse
