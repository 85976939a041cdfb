#include "platform/widgets/yield.h"

#include <QCoreApplication>
#include <QElapsedTimer>

namespace blockhouse {
namespace {

constexpr qint64 interval = 8; // milliseconds

} // namespace

void yield() {
    static QElapsedTimer sinceLast = [] {
        QElapsedTimer timer;
        timer.start();
        return timer;
    }();
    if (sinceLast.elapsed() < interval)
        return;
    QCoreApplication::processEvents();
    sinceLast.restart();
}

} // namespace blockhouse
