#include "shell/DrawProgress.h"

#include "platform/text/Colour.h"
#include "platform/text/units.h"
#include "platform/widgets/yield.h"
#include "shell/Percent.h"

#include <QFontMetricsF>
#include <QMetaObject>
#include <QSizeF>
#include <QVariant>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace blockhouse {
namespace {

constexpr Colour white = rgb(255, 255, 255);
constexpr Colour blue = rgb(0, 0, 255);
constexpr Colour black = rgb(0, 0, 0);

void set(QObject& box, const char* member, const QVariant& value) {
    // Setting an unknown member would add it to the object.
    if (box.property(member).isValid())
        box.setProperty(member, value);
}

std::optional<double> measure(const QObject& box, const char* member) {
    bool isNumber = false;
    const double value = box.property(member).toDouble(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

template <typename... Arguments>
void call(QObject& box, const char* signature, const char* method, Arguments... arguments) {
    if (box.metaObject()->indexOfMethod(signature) >= 0)
        QMetaObject::invokeMethod(&box, method, Qt::DirectConnection, arguments...);
}

void fillFromCorner(QObject& box, double right, double bottom, Colour colour) {
    call(box, "Line(double,double,double,double,int)", "Line", Q_ARG(double, 0.0), Q_ARG(double, 0.0),
         Q_ARG(double, right), Q_ARG(double, bottom), Q_ARG(int, colour));
}

void print(QObject& box, const QString& text, double x, double y, Colour colour) {
    set(box, "CurrentX", x);
    set(box, "Currenty", y);
    call(box, "Print(QString,int)", "Print", Q_ARG(QString, text), Q_ARG(int, colour));
}

// In twips; for an object that is no widget, the room that the bar's text position allows for.
QSizeF textSize(const QObject& box, const QString& text) {
    const auto* widget = qobject_cast<const QWidget*>(&box);
    if (!widget)
        return {200, 250};
    const QFontMetricsF metrics(widget->font());
    return QSizeF(metrics.horizontalAdvance(text), metrics.height()) * twipsPerPixel;
}

// `bar` is where the blue ends.
void printLabel(QObject& box, double width, double height, double bar, const QString& label) {
    const QSizeF size = textSize(box, label);
    if (size.height() > height)
        return;
    const double x = (width - size.width()) / 2;
    const double y = (height - size.height()) / 2;
    const bool isOnBlue = bar >= x + size.width();
    const bool isOnBoth = bar > x && !isOnBlue;
    if (isOnBoth) { // black with a white rim
        for (const auto& [right, down] : {std::pair(-1, 0), std::pair(1, 0), std::pair(0, -1), std::pair(0, 1)})
            print(box, label, x + right * twipsPerPixel, y + down * twipsPerPixel, white);
    }
    print(box, label, x, y, isOnBlue ? white : black);
}

double filledWidth(double width, double value, double maximum) {
    const double fill = maximum == 0 ? 0 : width * (value / maximum);
    constexpr double farOutside = 1e9; // far beyond any box, and still a number of pixels
    return std::isnan(fill) ? 0 : std::clamp(fill, -farOutside, farOutside);
}

} // namespace

void DrawProgress(QObject& box, double value, double maximum) {
    set(box, "AutoRedraw", true);
    set(box, "FillStyle", 0);
    set(box, "DrawStyle", 0);
    const std::optional<double> width = measure(box, "Width");
    const std::optional<double> height = measure(box, "Height");
    if (width && height) {
        constexpr double shortOfShare = 10;
        const double bar = filledWidth(*width, value, maximum) - shortOfShare;
        fillFromCorner(box, *width, *height, white);
        fillFromCorner(box, bar, *height, blue);
        printLabel(box, *width, *height, bar, QString::number(Percent(value, maximum, 100)) + QLatin1Char('%'));
    }
    if (width)
        set(box, "CurrentX", *width / 2 - 100);
    if (height)
        set(box, "Currenty", *height / 2 - 125);
    call(box, "Refresh()", "Refresh");
    yield();
}

} // namespace blockhouse
