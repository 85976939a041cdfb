#include "platform/widgets/pictures.h"

#include <QPainter>
#include <QPixmap>

namespace blockhouse {

// From pixmaps, so that no plug-in for SVG icons need be installed.
QIcon pictureIcon(const QString& resource, std::initializer_list<int> sides) {
    QIcon icon;
    for (const int side : sides) {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paintPicture(resource, painter, QRectF(0, 0, side, side));
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

// The white ring keeps the dot apart from any picture and any background.
QIcon withDot(const QIcon& picture) {
    QIcon dotted;
    for (const int side : {16, 24, 32, 48, 64}) {
        QPixmap pixmap = picture.pixmap(QSize(side, side), 1.0);
        if (pixmap.isNull()) {
            pixmap = QPixmap(side, side);
            pixmap.fill(Qt::transparent);
        }
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        const double radius = pixmap.width() * 0.25;
        painter.setPen(QPen(Qt::white, pixmap.width() / 16.0));
        painter.setBrush(QColor(214, 40, 40));
        painter.drawEllipse(QPointF(pixmap.width() - radius - 0.5, pixmap.height() - radius - 0.5), radius, radius);
        painter.end();
        dotted.addPixmap(pixmap);
    }
    return dotted;
}

} // namespace blockhouse
