#include "shell/WindowBar.h"

#include "platform/text/units.h"
#include "shell/artwork.h"
#include "shell/cursor_and_window_state.h"

#include <QAction>
#include <QLayout>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QToolButton>

#include <algorithm>

namespace blockhouse {
namespace {

constexpr const char* keyProperty = "key";

QString keyOf(WindowHandle window) {
    return QLatin1Char('a') + QString::number(window);
}

WindowHandle windowBehind(const QAction* button) {
    return button->property(keyProperty).toString().mid(1).toLongLong();
}

// A child window that is minimised takes the focus with it.
void activate(WindowHandle window) {
    const QWidget* widget = windowOf(window);
    auto* frame = qobject_cast<QMdiSubWindow*>(widget ? widget->parentWidget() : nullptr);
    if (frame && frame->mdiArea())
        frame->mdiArea()->setActiveSubWindow(frame);
}

} // namespace

WindowBar::WindowBar(QWidget* parent) : QToolBar(parent) {
    setObjectName(QStringLiteral("Toolbar1"));
    setWindowTitle(tr("Open files"));
    setAccessibleName(tr("Open files"));
    setMovable(false);
    setFloatable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setIconSize({16, 16});
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    layout()->setContentsMargins(0, 0, 0, 0);
    layout()->setSpacing(0);
    // The design height, unless the desktop's font is too large for it.
    buttonHeight_ = std::max(toPixels(Twips{330}).value, fontMetrics().height() + 4);
    // No upper limit: the buttons that do not fit open below the first row.
    setMinimumHeight(buttonHeight_);
}

void WindowBar::addWindow(WindowHandle window, const QString& caption) {
    QAction* button = buttonOf(window);
    pressOnly(button ? button : makeButton(window, caption));
}

void WindowBar::removeWindow(WindowHandle window) {
    if (QAction* button = buttonOf(window)) {
        removeAction(button);
        button->deleteLater(); // its own click may be what closed the window
    }
}

void WindowBar::toggle(QAction* button) {
    const WindowHandle window = windowBehind(button);
    if (WinState(window) == 1) {
        ShowWindow(window, ShowCommand::Maximise);
        pressOnly(button);
    } else {
        ShowWindow(window, ShowCommand::Minimise);
        button->setChecked(false);
    }
}

void WindowBar::pressOnly(QAction* button) {
    button->setChecked(true);
    const QList<QAction*> buttons = actions();
    for (QAction* other : buttons) {
        if (other == button)
            continue;
        other->setChecked(false);
        ShowWindow(windowBehind(other), ShowCommand::Minimise);
    }
    activate(windowBehind(button));
}

QAction* WindowBar::buttonOf(WindowHandle window) const {
    const QList<QAction*> buttons = actions();
    const auto found = std::find_if(buttons.begin(), buttons.end(),
                                    [window](const QAction* button) { return windowBehind(button) == window; });
    return found == buttons.end() ? nullptr : *found;
}

QAction* WindowBar::makeButton(WindowHandle window, const QString& caption) {
    QString text = caption;
    QAction* button = addAction(documentPicture(), text.replace(QLatin1Char('&'), QLatin1String("&&")));
    button->setCheckable(true);
    button->setProperty(keyProperty, keyOf(window));
    // Files of one name lie in several directories.
    if (const QWidget* document = windowOf(window); document && !document->windowFilePath().isEmpty())
        button->setToolTip(document->windowFilePath());
    connect(button, &QAction::triggered, this, [this, button] { toggle(button); });
    if (auto* face = qobject_cast<QToolButton*>(widgetForAction(button))) {
        face->setProperty(keyProperty, keyOf(window));
        face->setAccessibleName(caption);
        face->setFixedHeight(buttonHeight_);
        face->setFocusPolicy(Qt::TabFocus);
    }
    return button;
}

} // namespace blockhouse
