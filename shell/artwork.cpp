#include "shell/artwork.h"

#include "platform/widgets/svg_icon.h"

#include <qglobal.h>

// Resources of a static library are dropped by the linker unless asked for, and the macro wants global scope.
static void keepResources() {
    Q_INIT_RESOURCE(shell);
}

namespace blockhouse {

QIcon documentPicture() {
    keepResources();
    static const QIcon icon = svgIcon(QStringLiteral(":/shell/document.svg"), {16, 24, 32, 48});
    return icon;
}

QIcon applicationIcon() {
    keepResources();
    static const QIcon icon = svgIcon(QStringLiteral(":/shell/application.svg"), {16, 24, 32, 48, 64, 128, 256});
    return icon;
}

void paintSplashPicture(QPainter& painter, const QRectF& target) {
    keepResources();
    paintSvg(QStringLiteral(":/shell/splash.svg"), painter, target);
}

} // namespace blockhouse
