// Which child window of the main window is in front, and whose menus the menu bar shows. One rule: keys go only to
// what can be seen. Whenever the front window is minimised, hidden or closed, the topmost child window that can be
// seen takes its place, with its menus; where there is none, the tree. Nobody else activates child windows or moves
// the keyboard from one to another.
#pragma once

#include "platform/widgets/window_handles.h"

#include <QList>
#include <QObject>
#include <QPointer>

class QAction;
class QMainWindow;
class QMdiArea;
class QMdiSubWindow;
class QWidget;

namespace blockhouse {

class WindowBar;

class FrontWindow : public QObject {
    Q_OBJECT

public:
    // What it keeps in order; all of it must outlive it.
    struct House {
        QMainWindow& mainWindow;
        QMdiArea& area;
        WindowBar& bar;
        QWidget& tree;
    };

    // `ownMenus` stand in the menu bar while the front window brings no menus.
    FrontWindow(const House& house, QList<QAction*> ownMenus);

    // Null when no child window can be seen.
    [[nodiscard]] QMdiSubWindow* frame() const;

    // Shows a child window of the area, brings it back if it is minimised, and gives it the keyboard. For what the user
    // asked for just now, never for what ends in the background.
    void bringUp(QWidget& window);

    // An editor window is open and gets its button. It stays in front if it still is there; if another window was
    // brought up while its file was read, it goes behind that one.
    void addToBar(WindowHandle window, const QString& caption);

    // As its button does for a minimised window: the window is shown maximised, alone. A child window without a button
    // is just brought up.
    void bringUpAlone(QMdiSubWindow& frame);

    // The tree is about to be hidden: the keyboard goes elsewhere if it is there.
    void leave(const QWidget& panel);

    // To the window used before the present one (1) or the one used longest ago (-1). Further steps go on from there
    // until Ctrl is released; only then the order changes.
    void walk(int step);
    // The bar's button `index`, counted from 0: its window comes up. Does nothing without such a button.
    void bringUpButton(int index);
    // From the tree to the front window, from there to the bar, and back to the tree.
    void goAround();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watch(QMdiSubWindow* frame);
    void onActivated(QMdiSubWindow* frame);
    // Applies the rule.
    void settle();
    void settleSoon();
    void makeFront(QMdiSubWindow* frame);
    [[nodiscard]] QMdiSubWindow* topmostVisible() const;
    void giveKeyboardTo(QMdiSubWindow* frame);
    void giveKeyboardToTree();
    [[nodiscard]] bool keyboardIsIn(const QWidget& widget) const;
    [[nodiscard]] bool keyboardIsNowhere() const;
    void showMenus();
    void beginWalk();
    void endWalk();

    const House house_;
    const QList<QAction*> ownMenus_;
    QPointer<QMdiSubWindow> front_;
    QList<QMdiSubWindow*> lastUsed_; // the child windows, the one used last first
    QList<QMdiSubWindow*> walked_;   // lastUsed_ as it was when the walk began; empty when there is none
    qsizetype walkedTo_ = 0;
    bool settlesSoon_ = false;
};

} // namespace blockhouse
