#include "shell/WindowBar.h"

#include "platform/text/units.h"
#include "platform/widgets/pictures.h"
#include "shell/artwork.h"
#include "shell/cursor_and_window_state.h"

#include <QAction>
#include <QEvent>
#include <QLayout>
#include <QMenu>
#include <QShortcut>
#include <QStyle>
#include <QToolButton>

#include <algorithm>
#include <vector>

namespace blockhouse {
namespace {

constexpr const char* keyProperty = "key";

QString keyOf(WindowHandle window) {
    return QLatin1Char('a') + QString::number(window);
}

WindowHandle windowBehind(const QAction* button) {
    return button->property(keyProperty).toString().mid(1).toLongLong();
}

// The greatest width that no button exceeds when all are to fit into the room. At least every button's share of it.
int widestThatFits(std::vector<int> widths, int room) {
    std::sort(widths.begin(), widths.end());
    auto left = static_cast<int>(widths.size());
    for (const int width : widths) {
        if (width * left > room)
            return room / left;
        room -= width;
        --left;
    }
    return widths.empty() ? 0 : widths.back();
}

// By itself a tool button takes Space only.
void takeReturn(QToolButton& button) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        const auto* pressing = new QShortcut(key, &button, nullptr, nullptr, Qt::WidgetShortcut);
        QObject::connect(pressing, &QShortcut::activated, &button, [&button] {
            if (button.menu())
                button.showMenu();
            else
                button.click();
        });
    }
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
    setFixedHeight(buttonHeight_);
    makeMoreButton();
}

void WindowBar::makeMoreButton() {
    windows_ = new QMenu(this);
    connect(windows_, &QMenu::aboutToShow, this, &WindowBar::listWindows);
    more_ = new QToolButton(this);
    more_->setObjectName(QStringLiteral("moreWindows"));
    more_->setAccessibleName(tr("All open files"));
    more_->setToolTip(tr("All open files"));
    more_->setText(QStringLiteral("\u00BB"));
    more_->setPopupMode(QToolButton::InstantPopup);
    more_->setMenu(windows_);
    more_->setAutoRaise(true);
    more_->setFocusPolicy(Qt::TabFocus);
    more_->hide();
    takeReturn(*more_);
}

void WindowBar::listWindows() {
    windows_->clear();
    for (QAction* button : actions()) {
        QAction* entry = windows_->addAction(button->icon(), button->text());
        entry->setToolTip(button->toolTip());
        entry->setCheckable(true);
        entry->setChecked(button->isChecked());
        connect(entry, &QAction::triggered, button, [this, button] { bringUp(button); });
    }
}

void WindowBar::addWindow(WindowHandle window, const QString& caption) {
    QAction* button = buttonOf(window);
    pressOnly(button ? button : makeButton(window, caption));
}

void WindowBar::addMinimised(WindowHandle window, const QString& caption) {
    if (!buttonOf(window))
        makeButton(window, caption);
    fit();
    ShowWindow(window, ShowCommand::Minimise);
}

void WindowBar::removeWindow(WindowHandle window) {
    if (QAction* button = buttonOf(window)) {
        removeAction(button);
        button->deleteLater(); // its own click may be what closed the window
        fit();
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
    Q_EMIT broughtUp(windowBehind(button));
}

QWidget* WindowBar::windowOfButton(int index) const {
    const QList<QAction*> buttons = actions();
    return index < buttons.size() ? windowOf(windowBehind(buttons.at(index))) : nullptr;
}

bool WindowBar::takeKeyboard() {
    QList<QAction*> shown = actions();
    shown.removeIf([](const QAction* button) { return !button->isVisible(); });
    if (shown.isEmpty())
        return false;
    const auto pressed =
        std::find_if(shown.begin(), shown.end(), [](const QAction* button) { return button->isChecked(); });
    widgetForAction(pressed == shown.end() ? shown.first() : *pressed)->setFocus(Qt::TabFocusReason);
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
    fit();
}

QAction* WindowBar::buttonOf(WindowHandle window) const {
    const QList<QAction*> buttons = actions();
    const auto found = std::find_if(buttons.begin(), buttons.end(),
                                    [window](const QAction* button) { return windowBehind(button) == window; });
    return found == buttons.end() ? nullptr : *found;
}

void WindowBar::markUnsaved(WindowHandle window, bool unsaved) {
    QAction* button = buttonOf(window);
    if (!button)
        return;
    button->setIcon(unsaved ? withDot(documentPicture()) : documentPicture());
    if (QWidget* face = widgetForAction(button))
        face->setAccessibleDescription(unsaved ? tr("holds text that is not saved") : QString());
}

QAction* WindowBar::makeButton(WindowHandle window, const QString& caption) {
    QString text = caption;
    QAction* button = addAction(documentPicture(), text.replace(QLatin1Char('&'), QLatin1String("&&")));
    button->setCheckable(true);
    button->setProperty(keyProperty, keyOf(window));
    // Files of one name lie in several directories.
    const QWidget* document = windowOf(window);
    button->setToolTip(document && !document->windowFilePath().isEmpty() ? document->windowFilePath() : caption);
    connect(button, &QAction::triggered, this, [this, button] { toggle(button); });
    if (auto* face = qobject_cast<QToolButton*>(widgetForAction(button))) {
        face->setProperty(keyProperty, keyOf(window));
        face->setAccessibleName(caption);
        face->setFixedHeight(buttonHeight_);
        face->setFocusPolicy(Qt::TabFocus);
        takeReturn(*face);
    }
    return button;
}

// --- Room -------------------------------------------------------------------------------------------------------

void WindowBar::resizeEvent(QResizeEvent* event) {
    QToolBar::resizeEvent(event);
    fit();
}

void WindowBar::changeEvent(QEvent* event) {
    QToolBar::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fit();
}

// What the toolkit's own layout of the bar leaves for buttons. One that did not fit would go to an extension, which
// covers what lies below the bar.
int WindowBar::room() const {
    const int edge = style()->pixelMetric(QStyle::PM_ToolBarItemMargin, nullptr, this) +
                     style()->pixelMetric(QStyle::PM_ToolBarFrameWidth, nullptr, this);
    return width() - 2 * edge;
}

int WindowBar::naturalWidth(QAction* button) const {
    button->setIconText(button->text());
    QWidget* face = widgetForAction(button);
    face->setMinimumWidth(0);
    face->setMaximumWidth(QWIDGETSIZE_MAX);
    return face->sizeHint().width();
}

void WindowBar::setButtonWidth(QAction* button, int width) {
    const int beside = naturalWidth(button) - fontMetrics().size(Qt::TextShowMnemonic, button->text()).width();
    button->setIconText(
        fontMetrics().elidedText(button->text(), Qt::ElideMiddle, width - beside, Qt::TextShowMnemonic));
    widgetForAction(button)->setFixedWidth(width);
}

void WindowBar::fit() {
    const QList<QAction*> buttons = actions();
    const auto count = static_cast<int>(buttons.size());
    std::vector<int> widths;
    for (QAction* button : buttons)
        widths.push_back(naturalWidth(button));
    const int narrowest = more_->sizeHint().width() + iconSize().width() + 10 * fontMetrics().averageCharWidth();
    int widest = widestThatFits(widths, room());
    int shown = count;
    if (widest < narrowest && count > 1) {
        const int beside = room() - more_->sizeHint().width();
        shown = std::clamp(beside / narrowest, 1, count);
        widest = std::max(beside / shown, 1);
    }
    more_->setVisible(shown < count);
    more_->setGeometry(width() - more_->sizeHint().width(), 0, more_->sizeHint().width(), height());
    for (int i = 0; i < count; ++i)
        if (widths[static_cast<std::size_t>(i)] > widest)
            setButtonWidth(buttons.at(i), widest);
    const auto pressed =
        std::find_if(buttons.begin(), buttons.end(), [](QAction* button) { return button->isChecked(); });
    if (pressed != buttons.end()) {
        const auto at = static_cast<int>(pressed - buttons.begin());
        firstShown_ = std::clamp(firstShown_, at - shown + 1, at);
    }
    firstShown_ = std::clamp(firstShown_, 0, count - shown);
    showRange(firstShown_, shown);
}

void WindowBar::showRange(int first, int count) {
    const QList<QAction*> buttons = actions();
    for (int i = 0; i < buttons.size(); ++i)
        buttons.at(i)->setVisible(i >= first && i < first + count);
}

} // namespace blockhouse
