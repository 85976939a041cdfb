#include "shell/Splash.h"

#include "platform/text/units.h"
#include "platform/widgets/LongWork.h"
#include "platform/widgets/message_box.h"
#include "shell/artwork.h"
#include "shell/cursor_and_window_state.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>

namespace blockhouse {

// No Qt::SplashScreen: showing one serves events, and the window may be left, and be gone, before show() returns.
Splash::Splash() : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint) {
    setObjectName(QStringLiteral("Splash"));
    setWindowTitle(applicationTitle);
    setWindowIcon(applicationIcon());
    setAccessibleName(tr("%1 is starting").arg(QLatin1String(applicationTitle)));
    setFixedSize(toPixels(Twips{4920}).value, toPixels(Twips{4485}).value);
    timer_.setParent(this);
    timer_.setObjectName(QStringLiteral("Timer1"));
    timer_.setInterval(1);
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &Splash::waitThenLeave);
}

void Splash::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // The toolkit drops it as long as the window does not exist in the window system.
    setAttribute(Qt::WA_X11NetWmWindowTypeSplash);
    QRect frame = rect();
    frame.moveCenter(screen()->geometry().center());
    move(frame.topLeft());
    if (!left_)
        timer_.start();
}

void Splash::paintEvent(QPaintEvent*) {
    // The picture is a little wider than the window: what is cut off is cut off at both sides.
    QRectF target(QPointF(), splashPictureSize);
    target.moveCenter(QRectF(rect()).center());
    QPainter painter(this);
    paintSplashPicture(painter, target);
}

void Splash::mouseReleaseEvent(QMouseEvent* event) {
    if (rect().contains(event->position().toPoint()))
        leave();
}

void Splash::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
    case Qt::Key_Escape:
        leave();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

// Whoever closes the window wants to get on with it, not to be left with a program that has no window.
void Splash::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    leave();
}

void Splash::waitThenLeave() {
    constexpr double seconds = 2;
    if (stillOpenAfter(*this, [] { Pause(seconds); }))
        leave();
}

void Splash::leave() {
    if (left_)
        return;
    left_ = true;
    timer_.stop(); // a pause that begins while the main window loads would hold it up
    if (stillOpenAfter(*this, [this] { Q_EMIT mainWindowWanted(); }))
        close();
}

} // namespace blockhouse
