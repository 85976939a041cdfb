#include "fuzz/monkey/Monkey.h"

#include "fuzz/monkey/Watchdog.h"
#include "platform/text/paths.h"
#include "platform/widgets/qt_text.h"
#include "tools/Fr_Directory.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QWheelEvent>

#include <iterator>

namespace blockhouse {
namespace {

// An action may run an event loop of its own, in which the next ones happen; deeper than this only dialogs are left.
constexpr int deepest = 6;

std::string nameOf(const QWidget* widget) {
    if (widget == nullptr)
        return "nothing";
    const QString name =
        widget->objectName().isEmpty() ? QLatin1String(widget->metaObject()->className()) : widget->objectName();
    return name.toStdString() + " in " + widget->window()->objectName().toStdString();
}

} // namespace

Monkey::Monkey(std::mt19937& random, Chaos& chaos, Watchdog& watchdog)
    : random_(random), chaos_(chaos), watchdog_(watchdog) {
    actSoon();
}

void Monkey::actSoon() {
    QTimer::singleShot(static_cast<int>(below(4)), this, &Monkey::act);
}

// Windows that close at the end of the run may still tell something.
void Monkey::endDialogs() {
    actSoon();
    if (QWidget* dialog = QApplication::activeModalWidget())
        QTest::keyClick(dialog, Qt::Key_Escape);
}

void Monkey::act() {
    if (stopped_)
        return endDialogs();
    // Before the action: it may run an event loop, which is to go on.
    actSoon();
    QWidget* dialog = QApplication::activeModalWidget();
    if (dialog == nullptr && depth_ >= deepest)
        return letGo();
    ++depth_;
    ++actions_;
    std::string did;
    // From a file dialog every way leads out of the workspace but one.
    if (dialog != nullptr && (qobject_cast<QFileDialog*>(dialog) != nullptr || below(10) != 0)) {
        did = actOnDialog(*dialog);
    } else {
        static constexpr Act acts[] = {&Monkey::click,          &Monkey::click,        &Monkey::click,
                                       &Monkey::drag,           &Monkey::turnWheel,    &Monkey::type,
                                       &Monkey::type,           &Monkey::pressKey,     &Monkey::pressKey,
                                       &Monkey::pressKey,       &Monkey::openFromTree, &Monkey::chooseMenuItem,
                                       &Monkey::chooseMenuItem, &Monkey::openListed,   &Monkey::changeWindow,
                                       &Monkey::choosePlace,    &Monkey::walkFolders,  &Monkey::strike};
        // In the middle of something, what matters is whether its windows are still there.
        did = depth_ > 1 && below(3) == 0 ? changeWindow() : (this->*acts[below(std::size(acts))])();
    }
    --depth_;
    std::printf("%d %s\n", actions_, did.c_str());
    std::fflush(stdout);
    watchdog_.beat(did);
}

// What is being dragged from one widget to another ends only with a key or a button that reaches the window itself.
void Monkey::letGo() {
    watchdog_.beat("let go");
    QWidget* window = someWindow();
    if (window != nullptr && window->windowHandle() != nullptr)
        QTest::keyClick(window->windowHandle(), Qt::Key_Escape);
}

// ---- Where ------------------------------------------------------------------------------------------------------

QWidget* Monkey::someWindow() {
    if (QWidget* popup = QApplication::activePopupWidget())
        return popup;
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    QWidgetList visible;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible())
            visible.append(window);
    return visible.isEmpty() ? nullptr : oneOf(visible);
}

// The innermost widget at some place of some window, as a pointer would meet it.
QWidget* Monkey::someWidget() {
    QWidget* window = someWindow();
    if (window == nullptr)
        return nullptr;
    if (below(2) == 0) {
        QWidget* child = window->childAt(somePointIn(*window));
        return child != nullptr ? child : window;
    }
    // Small ones are rarely met by chance.
    QWidgetList visible;
    for (QWidget* child : window->findChildren<QWidget*>())
        if (child->isVisible())
            visible.append(child);
    return visible.isEmpty() ? window : oneOf(visible);
}

QPoint Monkey::somePointIn(const QWidget& widget) {
    return {static_cast<int>(below(static_cast<std::size_t>(std::max(1, widget.width())))),
            static_cast<int>(below(static_cast<std::size_t>(std::max(1, widget.height()))))};
}

// The one place where a user may lead the program to files outside the workspace.
bool Monkey::mayLeaveTheWorkspace(const QWidget* widget) const {
    if (widget == nullptr)
        return false;
    const auto* editor = qobject_cast<const Fr_Directory*>(widget->window());
    return editor != nullptr && (widget == editor->Command1 || editor->Command1->hasFocus()) &&
           !editor->Dir1->path().starts_with(chaos_.root());
}

// ---- What ------------------------------------------------------------------------------------------------------

std::string Monkey::click() {
    QWidget* widget = someWidget();
    if (widget == nullptr || mayLeaveTheWorkspace(widget))
        return "no click";
    const std::string name = nameOf(widget);
    static constexpr Qt::MouseButton buttons[] = {Qt::LeftButton, Qt::LeftButton, Qt::LeftButton, Qt::RightButton,
                                                  Qt::MiddleButton};
    const Qt::MouseButton button = buttons[below(std::size(buttons))];
    const QPoint place = somePointIn(*widget);
    if (below(4) == 0) {
        const QPointer<QWidget> still = widget;
        QTest::mouseClick(widget, button, {}, place);
        if (still)
            QTest::mouseDClick(widget, button, {}, place);
        return "double-clicked " + name;
    }
    QTest::mouseClick(widget, button, below(6) == 0 ? Qt::ShiftModifier : Qt::NoModifier, place);
    return "clicked " + name;
}

std::string Monkey::drag() {
    const QPointer<QWidget> widget = someWidget();
    if (!widget || mayLeaveTheWorkspace(widget))
        return "no drag";
    const std::string name = nameOf(widget);
    const Qt::MouseButton button = below(5) == 0 ? Qt::RightButton : Qt::LeftButton;
    QTest::mousePress(widget, button, {}, somePointIn(*widget));
    for (std::size_t moves = 1 + below(5); moves > 0 && widget; --moves) {
        const QPoint place = somePointIn(*widget) * 2 - QPoint(20, 20);
        QMouseEvent move(QEvent::MouseMove, place, widget->mapToGlobal(place), Qt::NoButton, button, {});
        QApplication::sendEvent(widget, &move);
        // Timers move what is held, so they get their turn.
        QCoreApplication::processEvents();
    }
    if (widget)
        QTest::mouseRelease(widget, button, {}, somePointIn(*widget));
    return "dragged in " + name;
}

std::string Monkey::turnWheel() {
    QWidget* widget = someWidget();
    if (widget == nullptr)
        return "no wheel";
    const std::string name = nameOf(widget);
    const QPoint place = somePointIn(*widget);
    const int angle = below(2) == 0 ? 120 : -360;
    QWheelEvent event(place, widget->mapToGlobal(place), {}, {0, angle}, Qt::NoButton,
                      below(5) == 0 ? Qt::ControlModifier : Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
    return "turned the wheel over " + name;
}

std::string Monkey::type() {
    QWidget* widget = QApplication::focusWidget();
    if (widget == nullptr || mayLeaveTheWorkspace(widget))
        return "nothing typed";
    const std::string name = nameOf(widget);
    static const char* const texts[] = {"object ", "weapon ", "end\r",    ";a note",
                                        "Armor",   "\t",      "  = 12.5", "\xC3\xA9\xD0\x96",
                                        "x",       "e",       "\"",       "Object X\r\rEnd\r"};
    const QPointer<QWidget> still = widget;
    for (const QChar character : QString::fromUtf8(texts[below(std::size(texts))])) {
        if (!still)
            break;
        const Qt::Key key = character == QLatin1Char('\r')   ? Qt::Key_Return
                            : character == QLatin1Char('\t') ? Qt::Key_Tab
                            : character == QLatin1Char(' ')  ? Qt::Key_Space
                                                             : static_cast<Qt::Key>(character.toUpper().unicode());
        QTest::sendKeyEvent(QTest::Click, still, key, QString(character), Qt::NoModifier);
    }
    return "typed into " + name;
}

std::string Monkey::pressKey() {
    QWidget* widget = QApplication::focusWidget();
    if (QWidget* popup = QApplication::activePopupWidget())
        widget = popup;
    if (widget == nullptr || mayLeaveTheWorkspace(widget))
        return "no key";
    const std::string name = nameOf(widget);
    static constexpr Qt::Key plain[] = {
        Qt::Key_Return, Qt::Key_Tab,    Qt::Key_Backtab, Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_Up,
        Qt::Key_Down,   Qt::Key_Left,   Qt::Key_Right,   Qt::Key_Home,      Qt::Key_End,    Qt::Key_PageDown,
        Qt::Key_PageUp, Qt::Key_Escape, Qt::Key_F6,      Qt::Key_Menu,      Qt::Key_Space,  Qt::Key_F4};
    static constexpr Qt::Key withControl[] = {Qt::Key_Z, Qt::Key_Y, Qt::Key_A, Qt::Key_C,    Qt::Key_X,   Qt::Key_V,
                                              Qt::Key_S, Qt::Key_F, Qt::Key_W, Qt::Key_Home, Qt::Key_End, Qt::Key_Tab};
    static constexpr Qt::Key withAlt[] = {Qt::Key_F, Qt::Key_E, Qt::Key_V, Qt::Key_Down, Qt::Key_R, Qt::Key_S};
    // Adding a directory has a mnemonic, and there a letter would be enough.
    const bool addsDirectories = qobject_cast<Fr_Directory*>(widget->window()) != nullptr;
    switch (addsDirectories ? 0 : below(4)) {
    case 0:
    case 1: {
        const Qt::Key key = plain[below(std::size(plain))];
        QTest::keyClick(widget, key, below(5) == 0 ? Qt::ShiftModifier : Qt::NoModifier);
        break;
    }
    case 2: {
        const Qt::Key key = withControl[below(std::size(withControl))];
        QTest::keyClick(widget, key, below(6) == 0 ? Qt::ControlModifier | Qt::ShiftModifier : Qt::ControlModifier);
        break;
    }
    default:
        QTest::keyClick(widget, withAlt[below(std::size(withAlt))], Qt::AltModifier);
        break;
    }
    return "pressed a key in " + name;
}

std::string Monkey::chooseMenuItem() {
    QWidget* window = someWindow();
    if (window == nullptr)
        return "no menu";
    QList<QAction*> items;
    for (QAction* action : window->findChildren<QAction*>())
        if (action->isEnabled() && action->isVisible() && action->menu() == nullptr &&
            action->objectName().startsWith(QLatin1Char('m')))
            items.append(action);
    if (items.isEmpty())
        return "no menu item";
    QAction* item = oneOf(items);
    const std::string name = item->objectName().toStdString();
    item->trigger();
    return "chose " + name;
}

std::string Monkey::openFromTree() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* tree = window->findChild<QTreeView*>(QStringLiteral("Tree1"));
        if (tree == nullptr || !tree->isVisible() || QApplication::activeModalWidget() != nullptr)
            continue;
        const QModelIndex folder = tree->model()->index(someRow(tree->model()->rowCount()), 0);
        if (!folder.isValid())
            continue;
        tree->expand(folder);
        const QModelIndex file = tree->model()->index(someRow(tree->model()->rowCount(folder)), 0, folder);
        tree->scrollTo(file);
        const QPoint place = tree->visualRect(file.isValid() ? file : folder).center();
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, place);
        return "opened from the tree";
    }
    return "no tree";
}

// A row of some list: a hit, an entry, a folder.
std::string Monkey::openListed() {
    QWidget* window = someWindow();
    if (window == nullptr)
        return "no list";
    QList<QAbstractItemView*> lists;
    for (auto* list : window->findChildren<QAbstractItemView*>())
        if (list->isVisible() && list->model() != nullptr && list->model()->rowCount() > 0)
            lists.append(list);
    if (lists.isEmpty())
        return "no list";
    QAbstractItemView* list = oneOf(lists);
    const std::string name = nameOf(list);
    const QModelIndex row = list->model()->index(someRow(list->model()->rowCount()), 0);
    list->scrollTo(row);
    const QPoint place = list->visualRect(row).center();
    const QPointer<QWidget> viewport = list->viewport();
    QTest::mouseClick(viewport, Qt::LeftButton, {}, place);
    if (viewport && below(2) == 0)
        QTest::mouseDClick(viewport, Qt::LeftButton, {}, place);
    return "took a row of " + name;
}

std::string Monkey::changeWindow() {
    QWidget* window = someWindow();
    if (window == nullptr || QApplication::activeModalWidget() != nullptr)
        return "no window";
    const QList<QMdiSubWindow*> children = window->findChildren<QMdiSubWindow*>();
    if (!children.isEmpty() && below(3) != 0)
        window = oneOf(children);
    const std::string name = nameOf(window);
    switch (below(7)) {
    case 0:
        window->showMinimized();
        return "minimised " + name;
    case 1:
        window->showMaximized();
        return "maximised " + name;
    case 2:
        window->showNormal();
        return "restored " + name;
    case 3:
        window->resize(static_cast<int>(50 + below(1200)), static_cast<int>(50 + below(900)));
        return "resized " + name;
    case 4:
        window->move(static_cast<int>(below(900)), static_cast<int>(below(600)));
        return "moved " + name;
    default:
        // Few of them are the main window, whose end is the program's.
        if (window->objectName() == QLatin1String("Fr_main") && below(10) != 0)
            return "left open " + name;
        // A dialog keeps users from closing the window under it, but not us.
        if (window->findChild<QFileDialog*>() != nullptr)
            return "left open under its dialog " + name;
        window->close();
        return "closed " + name;
    }
}

std::string Monkey::choosePlace() {
    QWidget* window = someWindow();
    if (window == nullptr)
        return "no choice";
    QList<QComboBox*> boxes;
    for (auto* box : window->findChildren<QComboBox*>())
        if (box->isVisible() && box->isEnabled() && box->count() > 0)
            boxes.append(box);
    if (boxes.isEmpty())
        return "no choice";
    const QPointer<QComboBox> box = oneOf(boxes);
    const std::string name = nameOf(box);
    QTest::mouseClick(box, Qt::LeftButton);
    if (box) {
        QTest::keyClick(box->view(), below(2) == 0 ? Qt::Key_Down : Qt::Key_End);
        QTest::keyClick(box ? box->view() : nullptr, below(5) == 0 ? Qt::Key_Escape : Qt::Key_Return);
    }
    return "chose in " + name;
}

std::string Monkey::walkFolders() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* editor = qobject_cast<Fr_Directory*>(window); editor != nullptr && editor->isVisible()) {
            const bool walked = editor->Dir1->walkTo(chaos_.someFolder());
            return walked ? "walked to a folder" : "could not walk to a folder";
        }
    return "no folders to walk";
}

std::string Monkey::actOnDialog(QWidget& dialog) {
    if (auto* files = qobject_cast<QFileDialog*>(&dialog))
        return actOnFileDialog(*files);
    if (auto* box = qobject_cast<QMessageBox*>(&dialog); box != nullptr && below(3) != 0) {
        const QList<QAbstractButton*> buttons = box->buttons();
        const std::string text = box->text().toStdString();
        QTest::mouseClick(oneOf(buttons), Qt::LeftButton);
        return "answered: " + text;
    }
    QTest::keyClick(&dialog, below(2) == 0 ? Qt::Key_Return : Qt::Key_Escape);
    return "dismissed a dialog";
}

// Files of the workspace only: what a user chooses elsewhere would be no fault of the program's.
std::string Monkey::actOnFileDialog(QFileDialog& dialog) {
    if (below(3) == 0) {
        dialog.reject();
        return "cancelled the file dialog";
    }
    const std::string file = chaos_.someFile();
    dialog.setDirectory(QString::fromStdString(chaos_.root() + "/Data"));
    dialog.selectFile(displayed(LastPathPart(file)));
    QMetaObject::invokeMethod(&dialog, "accept", Qt::QueuedConnection);
    return "named " + file;
}

} // namespace blockhouse
