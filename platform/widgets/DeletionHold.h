// Keeps a window that is closed from being deleted while code of its own is still under way: a handler that serves
// events is called from inside the toolkit, which goes on with the control when the handler returns.
#pragma once

#include <QPointer>
#include <QWidget>

namespace blockhouse {

class DeletionHold {
public:
    // `window` is what gets closed: the frame around a child window, or the window itself. Holds may be nested.
    explicit DeletionHold(QWidget* window) : window_(window), deletes_(window->testAttribute(Qt::WA_DeleteOnClose)) {
        window->setAttribute(Qt::WA_DeleteOnClose, false);
    }

    // Closed meanwhile, the window is deleted when control is back in the event loop.
    ~DeletionHold() {
        if (!window_ || !deletes_)
            return;
        window_->setAttribute(Qt::WA_DeleteOnClose);
        if (window_->isHidden())
            window_->deleteLater();
    }

    DeletionHold(const DeletionHold&) = delete;
    DeletionHold& operator=(const DeletionHold&) = delete;

private:
    const QPointer<QWidget> window_;
    const bool deletes_;
};

} // namespace blockhouse
