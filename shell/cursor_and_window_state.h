#pragma once

#include "platform/text/units.h"
#include "platform/widgets/window_handles.h"

namespace blockhouse {

// Where the mouse pointer is on the screen.
[[nodiscard]] Pixels CursorX();
[[nodiscard]] Pixels CursorY();

// 1 minimised, 3 maximised, 2 neither; 2 also for a window that has gone.
[[nodiscard]] int WinState(WindowHandle handle);

// Serves events until the time has passed, sleeping in between. Ends early only when the program is told to exit.
// Any window may be gone when it returns.
void Pause(double seconds);

} // namespace blockhouse
