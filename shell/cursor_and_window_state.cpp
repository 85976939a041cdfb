#include "shell/cursor_and_window_state.h"

#include <QCursor>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <chrono>

namespace blockhouse {

Pixels CursorX() {
    return {QCursor::pos().x()};
}

Pixels CursorY() {
    return {QCursor::pos().y()};
}

int WinState(WindowHandle handle) {
    int state = 0;
    if (isIconic(handle))
        state = 1;
    if (isZoomed(handle))
        state = 3;
    if (!isIconic(handle) && !isZoomed(handle))
        state = 2;
    return state;
}

void Pause(double seconds) {
    using namespace std::chrono;
    const QDeadlineTimer end(ceil<nanoseconds>(duration<double>(seconds)), Qt::PreciseTimer);
    QEventLoop loop;
    QTimer alarm;
    alarm.setTimerType(Qt::PreciseTimer);
    alarm.setSingleShot(true);
    QObject::connect(&alarm, &QTimer::timeout, &loop, &QEventLoop::quit);
    while (!end.hasExpired()) {
        alarm.start(ceil<milliseconds>(end.remainingTimeAsDuration()));
        const int outcome = loop.exec();
        if (!alarm.isActive())
            continue;
        constexpr int refused = -1; // an exit asked for earlier found no loop to end and stands in our way
        if (outcome != refused)
            return;
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
}

} // namespace blockhouse
