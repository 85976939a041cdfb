#include "platform/widgets/window_handles.h"

#include <QGuiApplication>
#include <QHash>
#include <QMdiSubWindow>
#include <QPointer>
#include <QWidget>

namespace blockhouse {
namespace {

struct Registry {
    QHash<WindowHandle, QPointer<QWidget>> windows;
    QHash<const QObject*, WindowHandle> handles;
    WindowHandle last = 0;
};

Registry& registry() {
    static Registry instance;
    return instance;
}

QWidget* frameOf(QWidget* window) {
    auto* frame = qobject_cast<QMdiSubWindow*>(window ? window->parentWidget() : nullptr);
    return frame ? frame : window;
}

QWidget* frameOf(WindowHandle handle) {
    return frameOf(windowOf(handle));
}

} // namespace

WindowHandle handleOf(QWidget* window) {
    Registry& known = registry();
    if (const auto found = known.handles.constFind(window); found != known.handles.constEnd())
        return *found;
    const WindowHandle handle = ++known.last;
    known.windows.insert(handle, window);
    known.handles.insert(window, handle);
    QObject::connect(window, &QObject::destroyed, [handle, window] {
        registry().windows.remove(handle);
        registry().handles.remove(window);
    });
    return handle;
}

QWidget* windowOf(WindowHandle handle) {
    return registry().windows.value(handle);
}

bool isIconic(WindowHandle handle) {
    const QWidget* frame = frameOf(handle);
    return frame && frame->isMinimized();
}

bool isZoomed(WindowHandle handle) {
    const QWidget* frame = frameOf(handle);
    return frame && frame->isMaximized() && !frame->isMinimized();
}

void ShowWindow(WindowHandle handle, ShowCommand command) {
    QWidget* frame = frameOf(handle);
    if (!frame)
        return;
    if (command == ShowCommand::Maximise)
        frame->showMaximized();
    else
        frame->showMinimized();
}

void bringUp(QWidget* window) {
    // A Wayland compositor puts a window in front when it appears. One that is there already comes to the front only if
    // the compositor thinks that the user asked for it, and of a choice in a menu it often does not.
    const bool mustAppearAnew = QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
    if (mustAppearAnew && window->isVisible() && !window->isActiveWindow())
        window->hide();
    if (window->isMinimized())
        window->showNormal();
    window->show();
    window->raise();
    window->activateWindow();
}

} // namespace blockhouse
