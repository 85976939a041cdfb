#include "platform/widgets/svg_icon.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace blockhouse {

void paintSvg(const QString& resource, QPainter& painter, const QRectF& target) {
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(resource).render(&painter, target);
}

// From pixmaps, so that no plug-in for SVG icons need be installed.
QIcon svgIcon(const QString& resource, std::initializer_list<int> sides) {
    QIcon icon;
    for (const int side : sides) {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paintSvg(resource, painter, QRectF(0, 0, side, side));
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace blockhouse
