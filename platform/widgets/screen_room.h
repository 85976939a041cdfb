// How much of the screen a window may take.
#pragma once

#include <QSize>

class QWidget;

namespace blockhouse {

// `size` for the inside of a top-level window, or as much of it as leaves the window, its frame counted in, within the
// part of its screen that is free for windows. For a window that was not shown yet, the frame is the usual one.
[[nodiscard]] QSize boundedToScreen(const QWidget& window, QSize size);

} // namespace blockhouse
