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
    // The widgets it coordinates; they must outlive it.
    struct Surroundings {
        QMainWindow& mainWindow;
        QMdiArea& area;
        WindowBar& bar;
        QWidget& tree;
    };

    // `ownMenus` stand in the menu bar while the front window brings no menus.
    FrontWindow(const Surroundings& surroundings, QList<QAction*> ownMenus);

    // Null when no child window can be seen.
    [[nodiscard]] QMdiSubWindow* frame() const;

    // Shows a child window of the area, brings it back if it is minimised, and gives it the keyboard. For what the user
    // asked for just now, never for what ends in the background.
    void bringUp(QWidget& window);

    // An editor window gets its button when its file has been read. The button is pressed and the other editors are
    // minimised; but if another editor was brought up while the file was read, this one is minimised instead. Either
    // way the keyboard stays where it is.
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
    void onStateChanged(QMdiSubWindow* frame, Qt::WindowStates changed);
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
    void forgetInWalk(QMdiSubWindow* frame);
    void endWalk();

    const Surroundings surroundings_;
    const QList<QAction*> ownMenus_;
    QPointer<QMdiSubWindow> front_;
    QList<QMdiSubWindow*> lastUsed_; // the child windows, the one used last first
    bool isWalking_ = false;         // from the first step to the release of Ctrl
    QList<QMdiSubWindow*> walked_;   // lastUsed_ as it was when the walk began
    qsizetype walkedTo_ = 0;         // index of the window reached, -1 before the first
    bool settlesSoon_ = false;
};

} // namespace blockhouse
