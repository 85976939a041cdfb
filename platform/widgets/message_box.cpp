#include "platform/widgets/message_box.h"

#include "platform/widgets/LongWork.h"
#include "platform/widgets/qt_text.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

namespace blockhouse {
namespace {

// A dialog lies above its parent in every window system, but not above a window that is kept on top.
QWidget* dialogParent(QWidget* window) {
    for (QWidget* top : QApplication::topLevelWidgets())
        if (top->isVisible() && !top->isMinimized() && top->windowFlags().testFlag(Qt::WindowStaysOnTopHint))
            return top;
    return window;
}

// What `dialog` answers, or nothing when the window was closed meanwhile.
template <typename Answer>
Answered<Answer> ask(QWidget& window, const std::function<Answer(QWidget* parent)>& dialog) {
    Answered<Answer> answer;
    QWidget* parent = dialogParent(&window);
    const bool isOpen = stillOpenAfter(window, [&] {
        // The dialog belongs to its parent, and may be an object of the stack.
        if (!stillOpenAfter(*parent, [&] { answer = dialog(parent); }))
            answer.reset();
    });
    if (!isOpen)
        answer.reset();
    return answer;
}

QMessageBox::StandardButton show(QWidget* parent, const QString& text, QMessageBox::StandardButtons buttons) {
    // On the heap and guarded: the parent, and with it the box, may be deleted while the box is open.
    const QPointer<QMessageBox> box = new QMessageBox(parent);
    box->setWindowTitle(applicationTitle);
    box->setIcon(QMessageBox::NoIcon);
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    box->setStandardButtons(buttons);
    // An only button is what Escape presses: one could not be told from the other.
    if (buttons.testFlag(QMessageBox::Cancel))
        box->button(QMessageBox::Cancel)->hide();
    const int answer = box->exec();
    delete box;
    return static_cast<QMessageBox::StandardButton>(answer);
}

Answered<QMessageBox::StandardButton> ask(QWidget& window, const QString& text, QMessageBox::StandardButtons buttons) {
    return ask<QMessageBox::StandardButton>(window, [&](QWidget* parent) { return show(parent, text, buttons); });
}

Answered<std::string> askForPath(QWidget& window, const std::function<QString(QWidget* parent)>& dialog) {
    const Answered<QString> chosen = ask<QString>(window, dialog);
    if (chosen) // a dialog of the system's own need not give the keyboard back
        window.activateWindow();
    if (!chosen || chosen->isEmpty())
        return std::nullopt;
    return pathOf(*chosen);
}

} // namespace

void tell(QWidget* window, const QString& text) {
    if (window)
        static_cast<void>(ask(*window, text, QMessageBox::Ok));
    else
        show(dialogParent(nullptr), text, QMessageBox::Ok);
}

bool tellOneOfMany(QWidget& window, const QString& text) {
    return ask(window, text, QMessageBox::Ok | QMessageBox::Cancel) == QMessageBox::Ok;
}

void tellFileError(QWidget* window, const QString& attempt, const FileError& error) {
    tell(window, QStringLiteral("%1\n%2\n%3").arg(displayed(error.path), attempt, QString::fromStdString(error.cause)));
}

Answered<bool> askYesNo(QWidget& window, const QString& question) {
    const auto answer = ask(window, question, QMessageBox::Yes | QMessageBox::No);
    return answer ? Answered<bool>(answer == QMessageBox::Yes) : std::nullopt;
}

Answered<std::string> askForFileToSave(QWidget& window, const QString& title, const QString& proposed) {
    return askForPath(window, [&](QWidget* parent) { return QFileDialog::getSaveFileName(parent, title, proposed); });
}

Answered<std::string> askForFileToOpen(QWidget& window, const QString& title, const QString& proposed) {
    return askForPath(window, [&](QWidget* parent) { return QFileDialog::getOpenFileName(parent, title, proposed); });
}

} // namespace blockhouse
