#include "shell/artwork.h"

#include "platform/widgets/pictures.h"

namespace blockhouse {

QIcon documentPicture() {
    static const QIcon icon = pictureIcon(QStringLiteral(":/shell/artwork/document.svg"), {16, 24, 32, 48});
    return icon;
}

QIcon applicationIcon() {
    static const QIcon icon = pictureIcon(QStringLiteral(":/packaging/blockhouse.svg"), {16, 24, 32, 48, 64, 128, 256});
    return icon;
}

void paintSplashPicture(QPainter& painter, const QRectF& target) {
    paintPicture(QStringLiteral(":/shell/artwork/splash.svg"), painter, target);
}

} // namespace blockhouse
