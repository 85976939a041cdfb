#include "bench/measure.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>

namespace blockhouse {

void paint(QWidget& window) {
    QCoreApplication::processEvents();
    window.repaint();
    QCoreApplication::processEvents();
}

double secondsOf(const std::function<void()>& work) {
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

double quantile(std::vector<double>& values, double share) {
    const auto index = static_cast<std::size_t>(share * static_cast<double>(values.size() - 1) + 0.5);
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(index), values.end());
    return values[index];
}

namespace {

bool isMissed = false;

} // namespace

void row(const char* what, double value, double bound) {
    isMissed = isMissed || value > bound;
    std::printf("%-66s %8.2f  at most %5.2f  %s\n", what, value, bound, value <= bound ? "met" : "NOT MET");
}

int outcome() {
    return isMissed ? 1 : 0;
}

} // namespace blockhouse
