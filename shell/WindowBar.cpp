#include "shell/WindowBar.h"

#include "platform/text/units.h"
#include "shell/artwork.h"
#include "shell/cursor_and_window_state.h"

#include <QAction>
#include <QLayout>
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

void WindowBar::addMinimised(WindowHandle window, const QString& caption) {
    if (!buttonOf(window))
        makeButton(window, caption);
    ShowWindow(window, ShowCommand::Minimise);
}

void WindowBar::removeWindow(WindowHandle window) {
    if (QAction* button = buttonOf(window)) {
        removeAction(button);
        button->deleteLater(); // its own click may be what closed the window
    }
}

void WindowBar::toggle(QAction* button) {
    const WindowHandle window = windowBehind(button);
    if (WinState(window) == 1)
        return bringUp(button);
    ShowWindow(window, ShowCommand::Minimise);
    button->setChecked(false);
    Q_EMIT minimised();
}

bool WindowBar::bringUp(WindowHandle window) {
    QAction* button = buttonOf(window);
    if (button)
        bringUp(button);
    return button != nullptr;
}

void WindowBar::bringUp(QAction* button) {
    ShowWindow(windowBehind(button), ShowCommand::Maximise);
    pressOnly(button);
}

QWidget* WindowBar::windowOfButton(int index) const {
    const QList<QAction*> buttons = actions();
    return index < buttons.size() ? windowOf(windowBehind(buttons.at(index))) : nullptr;
}

bool WindowBar::takeKeyboard() {
    const QList<QAction*> buttons = actions();
    if (buttons.isEmpty())
        return false;
    const auto pressed =
        std::find_if(buttons.begin(), buttons.end(), [](QAction* button) { return button->isChecked(); });
    widgetForAction(pressed == buttons.end() ? buttons.first() : *pressed)->setFocus(Qt::TabFocusReason);
    return true;
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
    Q_EMIT broughtUp(windowBehind(button));
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
