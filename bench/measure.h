// What the window benchmarks share.
#pragma once

#include <QWidget>

#include <functional>
#include <vector>

namespace blockhouse {

// Serves events and puts the window on the screen now.
void paint(QWidget& window);

[[nodiscard]] double secondsOf(const std::function<void()>& work);

// share 0.5 is the median. The values are reordered.
[[nodiscard]] double quantile(std::vector<double>& values, double share);

// Prints a figure beside its bound.
void row(const char* what, double value, double bound);
// For main() to return: not 0 if a row so far has missed its bound.
[[nodiscard]] int outcome();

} // namespace blockhouse
