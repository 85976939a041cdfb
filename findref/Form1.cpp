#include "findref/Form1.h"

#include "platform/widgets/controls.h"
#include "platform/widgets/fonts.h"
#include "platform/widgets/screen_room.h"

#include <QCloseEvent>
#include <QKeyEvent>

#include <algorithm>

namespace blockhouse {
namespace {

constexpr QSize designSize = designPlace(0, 0, 7005, 6720).size();
constexpr int margin = pixelsOf(120);
constexpr int boxTop = pixelsOf(360);
constexpr int rightMargin = pixelsOf(7005 - 120 - 6612);

} // namespace

Form1::Form1()
    : RichTextBox1(named(new RichTextBox(this), "RichTextBox1", tr("Text to count"))),
      Label1(named(new QLabel(this), "Label1", tr("Number of characters"))) {
    setObjectName(QStringLiteral("Form1"));
    setWindowTitle(QStringLiteral("Form1"));
    setAccessibleName(tr("Number of characters"));
    Label1->move(margin, 0);
    RichTextBox1->setKeyDown([this](const QKeyEvent& event) {
        if (event.key() == Qt::Key_Escape)
            close();
        return event.key() == Qt::Key_Escape;
    });
    connect(RichTextBox1, &RichTextBox::changed, this, &Form1::showLength);
    RichTextBox1->setText("Text1");
    resize(boundedToScreen(*this, designSize));
    layOut();
}

void Form1::resizeEvent(QResizeEvent*) {
    layOut();
}

void Form1::closeEvent(QCloseEvent* event) {
    event->accept();
    Q_EMIT closed();
}

void Form1::changeEvent(QEvent* event) {
    if (changesRoomOfTexts(*event)) {
        Label1->adjustSize();
        layOut();
    }
    QWidget::changeEvent(event);
}

void Form1::layOut() {
    const int top = std::max(boxTop, Label1->height());
    RichTextBox1->setGeometry(margin, top, std::max(width() - margin - rightMargin, 0),
                              std::max(height() - top - margin, 0));
}

void Form1::showLength() {
    Label1->setText(QStringLiteral("length: %1").arg(RichTextBox1->textLength()));
    Label1->adjustSize();
}

} // namespace blockhouse
