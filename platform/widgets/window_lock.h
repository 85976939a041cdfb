// States of a long operation that end on every path out.
#pragma once

#include <QPointer>
#include <QWidget>

namespace blockhouse {

// Keeps a window from repainting. At most one window of the whole program is locked at a time: while one is, a
// further lock does nothing and isHeld() says so; no window (null) takes no lock.
class WindowUpdateLock {
public:
    explicit WindowUpdateLock(QWidget* window);
    ~WindowUpdateLock();
    WindowUpdateLock(const WindowUpdateLock&) = delete;
    WindowUpdateLock& operator=(const WindowUpdateLock&) = delete;

    [[nodiscard]] bool isHeld() const { return held_; }

private:
    QPointer<QWidget> window_;
    bool held_ = false;
};

// Shows the hourglass for the whole program; may be nested.
class Hourglass {
public:
    Hourglass();
    ~Hourglass();
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;
};

} // namespace blockhouse
