#pragma once

#include "platform/widgets/window_handles.h"

#include <QToolBar>

class QMenu;
class QToolButton;

namespace blockhouse {

// One button for each editor window, in the order in which they were opened. A button is pressed while its window is
// the one that the bar brought up last. Its property "key" is the letter "a" followed by the window's handle.
//
// Where there is not room enough, captions are shortened on the screen. Where that is not enough either, a range of
// the buttons is shown that holds the pressed one, and a menu at the right end lists them all.
class WindowBar : public QToolBar {
    Q_OBJECT

public:
    explicit WindowBar(QWidget* parent);

    // A new pressed button at the end; all others are released and their windows minimised. For a window that has a
    // button already, that one is meant.
    void addWindow(WindowHandle window, const QString& caption);
    // A new released button at the end; the window is minimised, since another one came up before it.
    void addMinimised(WindowHandle window, const QString& caption);

    [[nodiscard]] bool hasButton(WindowHandle window) const { return buttonOf(window) != nullptr; }

    // The button's picture carries a dot while the window's text is not in its file. Does nothing without a button.
    void markUnsaved(WindowHandle window, bool unsaved);

    // Does nothing when the window has no button.
    void removeWindow(WindowHandle window);

    // Shows the window maximised, alone, its button pressed. False when it has no button.
    bool bringUp(WindowHandle window);

    // The window of a button counted from 0; null without such a button or when the window has gone.
    [[nodiscard]] QWidget* windowOfButton(int index) const;

    // The keyboard goes to the pressed button, or the first one. False when there is none.
    bool takeKeyboard();

Q_SIGNALS:
    // The window is shown alone and is to get the keyboard.
    void broughtUp(blockhouse::WindowHandle window);
    void minimised();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // A minimised window is brought up maximised, alone; any other is minimised.
    void toggle(QAction* button);
    void bringUp(QAction* button);
    void pressOnly(QAction* button);
    [[nodiscard]] QAction* buttonOf(WindowHandle window) const;
    QAction* makeButton(WindowHandle window, const QString& caption);
    void makeMoreButton();
    void listWindows();

    // Gives the buttons the room there is.
    void fit();
    void showRange(int first, int count);
    void setButtonWidth(QAction* button, int width);
    [[nodiscard]] int naturalWidth(QAction* button) const;
    [[nodiscard]] int room() const;

    int buttonHeight_ = 0;
    QToolButton* more_;
    QMenu* windows_;     // of more_
    int firstShown_ = 0; // of the range that is shown
};

} // namespace blockhouse
