#include "platform/widgets/screen_room.h"

#include <QScreen>
#include <QStyle>
#include <QStyleOptionTitleBar>
#include <QWidget>

namespace blockhouse {
namespace {

// What the window manager will add is known only after it has. Ours for child windows is about as large.
QSize usualFrame(const QWidget& window) {
    const int border = window.style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, &window);
    QStyleOptionTitleBar title;
    title.initFrom(&window);
    const int caption = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, &title, &window);
    return {2 * border, 2 * border + caption};
}

} // namespace

QSize boundedToScreen(const QWidget& window, QSize size) {
    const QSize known = window.frameGeometry().size() - window.size();
    const QSize frame = known.isNull() ? usualFrame(window) : known;
    return size.boundedTo(window.screen()->availableGeometry().size() - frame);
}

} // namespace blockhouse
