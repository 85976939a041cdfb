#include "platform/widgets/message_box.h"

#include <QFile>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

namespace blockhouse {
namespace {

QMessageBox::StandardButton ask(QWidget* parent, const QString& text, QMessageBox::StandardButtons buttons) {
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

} // namespace

void tell(QWidget* parent, const QString& text) {
    ask(parent, text, QMessageBox::Ok);
}

bool tellOneOfMany(QWidget* parent, const QString& text) {
    return ask(parent, text, QMessageBox::Ok | QMessageBox::Cancel) == QMessageBox::Ok;
}

void tellFileError(QWidget* parent, const QString& attempt, const FileError& error) {
    tell(parent, QStringLiteral("%1\n%2\n%3").arg(displayed(error.path), attempt, QString::fromStdString(error.cause)));
}

bool askYesNo(QWidget* parent, const QString& question) {
    return ask(parent, question, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

QString displayed(const std::string& path) {
    return QFile::decodeName(QByteArray(path.data(), static_cast<qsizetype>(path.size())));
}

} // namespace blockhouse
