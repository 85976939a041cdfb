#include "platform/widgets/PictureBox.h"

#include "platform/text/Colour.h"
#include "platform/text/units.h"

#include <QPainter>
#include <QPaintEvent>

namespace blockhouse {
namespace {

QColor shown(int colour) {
    return {redOf(colour), greenOf(colour), blueOf(colour)};
}

} // namespace

PictureBox::PictureBox(QWidget* parent) : QWidget(parent) {}

double PictureBox::widthInTwips() const {
    return toTwips(Pixels{width()}).value;
}

double PictureBox::heightInTwips() const {
    return toTwips(Pixels{height()}).value;
}

void PictureBox::Line(double x1, double y1, double x2, double y2, int colour) {
    const QRectF rectangle(QPointF(x1, y1) / twipsPerPixel, QPointF(x2, y2) / twipsPerPixel);
    QPainter(&drawing()).fillRect(rectangle.normalized(), shown(colour));
    update();
}

void PictureBox::Print(const QString& text, int colour) {
    QPainter painter(&drawing());
    painter.setFont(font());
    painter.setPen(shown(colour));
    painter.drawText(QPointF(currentX_ / twipsPerPixel, currentY_ / twipsPerPixel + painter.fontMetrics().ascent()),
                     text);
    update();
}

void PictureBox::Cls() {
    drawing_ = QPixmap();
    update();
}

void PictureBox::Refresh() {
    repaint();
}

void PictureBox::paintEvent(QPaintEvent*) {
    if (!drawing_.isNull())
        QPainter(this).drawPixmap(0, 0, drawing_);
}

void PictureBox::resizeEvent(QResizeEvent*) {
    if (!drawing_.isNull())
        fitDrawing();
}

QPixmap& PictureBox::drawing() {
    fitDrawing();
    return drawing_;
}

void PictureBox::fitDrawing() {
    const QSize dots = (QSizeF(size()) * devicePixelRatioF()).toSize();
    if (drawing_.size() == dots)
        return;
    QPixmap fresh(dots);
    fresh.setDevicePixelRatio(devicePixelRatioF());
    fresh.fill(Qt::transparent);
    if (!drawing_.isNull())
        QPainter(&fresh).drawPixmap(0, 0, drawing_);
    drawing_ = fresh;
}

} // namespace blockhouse
