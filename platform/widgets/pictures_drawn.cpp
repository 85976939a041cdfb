#include "platform/widgets/pictures.h"

#include <QDir>
#include <QImage>
#include <QPainter>

namespace blockhouse {
namespace {

// "name-48.png" beside "name.svg": the smallest one that is wide enough, else the widest.
QImage drawnPicture(const QString& resource, double width) {
    const QFileInfo drawing(resource);
    const QString before = drawing.completeBaseName() + QLatin1Char('-');
    int best = 0;
    for (const QString& name : drawing.dir().entryList({before + QLatin1String("*.png")})) {
        const int drawn = name.mid(before.size()).section(QLatin1Char('.'), 0, 0).toInt();
        const bool isWideEnough = drawn >= width;
        if (best == 0 || (isWideEnough ? best < width || drawn < best : drawn > best))
            best = drawn;
    }
    return QImage(drawing.dir().filePath(before + QString::number(best) + QLatin1String(".png")));
}

} // namespace

void paintPicture(const QString& resource, QPainter& painter, const QRectF& target) {
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, drawnPicture(resource, target.width() * painter.device()->devicePixelRatioF()));
}

} // namespace blockhouse
