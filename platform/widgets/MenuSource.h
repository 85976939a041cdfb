#pragma once

#include <QList>

class QMenu;

namespace blockhouse {

// A child window that brings menus of its own: while it is the active one, they stand in the main window's menu bar.
class MenuSource {
public:
    virtual ~MenuSource() = default;

    // From left to right, the same menus at every call. They stay the window's own and live as long as it does.
    [[nodiscard]] virtual QList<QMenu*> menus() = 0;
};

} // namespace blockhouse
