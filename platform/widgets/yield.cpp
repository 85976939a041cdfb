#include "platform/widgets/yield.h"

#include <QCoreApplication>
#include <QElapsedTimer>

namespace blockhouse {
namespace {

constexpr qint64 interval = 8; // milliseconds

bool isEager = false;

} // namespace

void yield() {
    static QElapsedTimer sinceLast = [] {
        QElapsedTimer timer;
        timer.start();
        return timer;
    }();
    if (!isEager && sinceLast.elapsed() < interval)
        return;
    QCoreApplication::processEvents();
    sinceLast.restart();
}

EagerYield::EagerYield() {
    isEager = true;
}

EagerYield::~EagerYield() {
    isEager = false;
}

} // namespace blockhouse
