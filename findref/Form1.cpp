#include "findref/Form1.h"

#include "platform/text/units.h"

#include <QCloseEvent>
#include <QKeyEvent>

#include <algorithm>

namespace blockhouse {
namespace {

constexpr int margin = toPixels(Twips{120}).value;
constexpr int boxTop = toPixels(Twips{360}).value;
constexpr int rightMargin = toPixels(Twips{7005 - 120 - 6612}).value;

} // namespace

Form1::Form1() : RichTextBox1(new RichTextBox(this)), Label1(new QLabel(this)) {
    setObjectName(QStringLiteral("Form1"));
    setWindowTitle(QStringLiteral("Form1"));
    setAccessibleName(tr("Number of characters"));
    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setAccessibleName(tr("Number of characters"));
    Label1->move(margin, 0);
    RichTextBox1->setObjectName(QStringLiteral("RichTextBox1"));
    RichTextBox1->setAccessibleName(tr("Text to count"));
    RichTextBox1->setKeyDown([this](const QKeyEvent& event) {
        if (event.key() == Qt::Key_Escape)
            close();
        return event.key() == Qt::Key_Escape;
    });
    connect(RichTextBox1, &RichTextBox::changed, this, &Form1::showLength);
    RichTextBox1->setText("Text1");
    resize(toPixels(Twips{7005}).value, toPixels(Twips{6720}).value);
    layOut();
}

void Form1::resizeEvent(QResizeEvent*) {
    layOut();
}

void Form1::closeEvent(QCloseEvent* event) {
    event->accept();
    Q_EMIT closed();
}

void Form1::layOut() {
    RichTextBox1->setGeometry(margin, boxTop, std::max(width() - margin - rightMargin, 0),
                              std::max(height() - boxTop - margin, 0));
}

void Form1::showLength() {
    Label1->setText(QStringLiteral("length: %1").arg(RichTextBox1->textLength()));
    Label1->adjustSize();
}

} // namespace blockhouse
