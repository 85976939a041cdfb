#include "placement/Canvas.h"

#include "platform/widgets/controls.h"
#include "platform/widgets/fonts.h"
#include "platform/widgets/qt_text.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPaintEvent>
#include <QStyleOptionFrame>

#include <algorithm>
#include <cmath>

namespace blockhouse {
namespace {

constexpr int border = pixelsOf(30);
constexpr int side = toPixels(canvasSide).value + 2 * border;

// The marks' colours are fixed, so the ground they are told from is too.
constexpr QColor ground(240, 240, 240);
constexpr QColor outline(128, 128, 128);
constexpr QColor labelColour(0, 0, 0);

double exactPixels(Twips twips) {
    return twips.value / twipsPerPixel;
}

QPointF placeOf(CanvasPoint point) {
    return {border + exactPixels(toTwips(point.x)), border + exactPixels(toTwips(point.y))};
}

CanvasPoint pointAt(QPointF place) {
    return {toCanvasUnits(Twips{(place.x() - border) * twipsPerPixel}),
            toCanvasUnits(Twips{(place.y() - border) * twipsPerPixel})};
}

QColor toQColor(Colour colour) {
    return {colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF};
}

MouseButtons heldIn(Qt::MouseButtons buttons) {
    int value = 0;
    value += buttons.testFlag(Qt::LeftButton) ? leftButton.value : 0;
    value += buttons.testFlag(Qt::RightButton) ? rightButton.value : 0;
    value += buttons.testFlag(Qt::MiddleButton) ? middleButton.value : 0;
    return {value};
}

// On whole dots of the screen, whatever its scale: edges in between would be blurred.
double onDots(double place, double scale) {
    return std::round(place * scale) / scale;
}

} // namespace

Canvas::Canvas(const MarkBoard& board, QWidget* parent) : QWidget(parent), board_(board), labelFont_(arial(6)) {
    setFixedSize(side, side);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void Canvas::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), ground);
    painter.setClipRect(rect().adjusted(border, border, -border, -border));
    // Marks of a file can lie anywhere: far outside, they are not worth a call.
    for (const Mark& mark : board_.marks())
        if (mark.visible)
            paintMark(painter, mark);
    painter.setFont(labelFont_);
    for (const MarkLabel& label : board_.labels())
        if (label.visible)
            paintLabel(painter, label);
    painter.setClipping(false);
    QStyleOptionFrame frame;
    frame.initFrom(this);
    frame.lineWidth = border;
    frame.state |= QStyle::State_Sunken;
    style()->drawPrimitive(QStyle::PE_Frame, &frame, &painter, this);
}

void Canvas::paintMark(QPainter& painter, const Mark& mark) const {
    const QPointF place = placeOf(mark.topLeft);
    const double scale = devicePixelRatioF();
    const QRectF area(onDots(place.x(), scale), onDots(place.y(), scale), exactPixels(markWidth),
                      exactPixels(markHeight));
    if (!area.intersects(rect()))
        return;
    painter.fillRect(area, outline);
    const double line = 1;
    painter.fillRect(area.adjusted(line, line, -line, -line), toQColor(mark.colour));
}

// Moved inside where the canvas's edge would cut it off.
void Canvas::paintLabel(QPainter& painter, const MarkLabel& label) const {
    const QString name = documentText(label.name);
    const QFontMetricsF metrics(labelFont_, this);
    const QSizeF size(metrics.horizontalAdvance(name) + 2, metrics.height());
    const QPointF wanted = placeOf(label.topLeft);
    const double most = side - border;
    const double scale = devicePixelRatioF();
    const double left = onDots(std::max<double>(border, std::min(wanted.x(), most - size.width())), scale);
    const double top = onDots(std::max<double>(border, std::min(wanted.y(), most - size.height())), scale);
    const QRectF area(QPointF(left, top), size);
    const auto draw = [&](QColor colour, QPointF offset) {
        painter.setPen(colour);
        painter.drawText(area.translated(offset), Qt::AlignCenter | Qt::TextSingleLine, name);
    };
    // A rim of the ground's colour: readable over marks, and the marks stay recognisable under it.
    for (const double right : {-1.0, 0.0, 1.0})
        for (const double down : {-1.0, 0.0, 1.0})
            draw(ground, {right, down});
    draw(labelColour, {});
}

void Canvas::mousePressEvent(QMouseEvent* event) {
    Q_EMIT pressed(pointAt(event->position()));
}

// The second press of two quick ones is a press like any other.
void Canvas::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

void Canvas::mouseMoveEvent(QMouseEvent* event) {
    Q_EMIT moved(pointAt(event->position()), heldIn(event->buttons()));
}

void Canvas::mouseReleaseEvent(QMouseEvent* event) {
    Q_EMIT released(pointAt(event->position()));
}

} // namespace blockhouse
