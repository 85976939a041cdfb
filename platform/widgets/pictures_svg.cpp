#include "platform/widgets/pictures.h"

#include <QPainter>
#include <QSvgRenderer>

namespace blockhouse {

void paintPicture(const QString& resource, QPainter& painter, const QRectF& target) {
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(resource).render(&painter, target);
}

} // namespace blockhouse
