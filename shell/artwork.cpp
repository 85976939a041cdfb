#include "shell/artwork.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

// Resources of a static library are dropped by the linker unless asked for, and the macro wants global scope.
static void keepResources() {
    Q_INIT_RESOURCE(shell);
}

namespace blockhouse {
namespace {

void paintPicture(const QString& resource, QPainter& painter, const QRectF& target) {
    keepResources();
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(resource).render(&painter, target);
}

// From pixmaps, so that no plug-in for SVG icons need be installed.
QIcon iconOf(const QString& resource, std::initializer_list<int> sides) {
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

} // namespace

QIcon documentPicture() {
    static const QIcon icon = iconOf(QStringLiteral(":/shell/document.svg"), {16, 24, 32, 48});
    return icon;
}

QIcon applicationIcon() {
    static const QIcon icon = iconOf(QStringLiteral(":/shell/application.svg"), {16, 24, 32, 48, 64, 128, 256});
    return icon;
}

void paintSplashPicture(QPainter& painter, const QRectF& target) {
    paintPicture(QStringLiteral(":/shell/splash.svg"), painter, target);
}

} // namespace blockhouse
