// Windows known by a number. Handles are never used twice in a run and outlive nothing: a handle whose window has
// gone finds no window.
#pragma once

#include <cstdint>

class QWidget;

namespace blockhouse {

using WindowHandle = std::int64_t;

// The same number every time for the same window; starts at 1.
[[nodiscard]] WindowHandle handleOf(QWidget* window);
// Null when no such window is left.
[[nodiscard]] QWidget* windowOf(WindowHandle handle);

// For child windows of the main window, the state of the frame around them is meant.
[[nodiscard]] bool isIconic(WindowHandle handle);
[[nodiscard]] bool isZoomed(WindowHandle handle);

enum class ShowCommand { Maximise = 3, Minimise = 6 };

// Does nothing when the window has gone.
void ShowWindow(WindowHandle handle, ShowCommand command);

// Shows a top-level window, brings it back if it is minimised, and makes it the active one.
void bringUp(QWidget* window);

} // namespace blockhouse
