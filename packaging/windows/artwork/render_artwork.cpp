// Draws an SVG file in the sizes that it is shown in, and prints the names of the files made.
//
//   render_artwork <drawing.svg> <folder/name.svg>   makes folder/name-<width>.png
//   render_artwork <drawing.svg> <folder/name.ico>   makes that, all sizes in one
//
// A square drawing is an icon and is drawn in the sizes of icons, any other in its own size, one and a half times and
// twice that.
#include <QDataStream>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSaveFile>
#include <QSvgRenderer>

#include <cstdio>
#include <vector>

namespace {

QImage drawn(QSvgRenderer& drawing, int width) {
    const QSize own = drawing.defaultSize();
    QImage image(width, width * own.height() / own.width(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter, image.rect());
    return image;
}

QByteArray packed(const QImage& image) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    image.save(stream.device(), "PNG");
    return bytes;
}

bool write(const QString& path, const QByteArray& bytes) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return false;
    std::printf("%s\n", qPrintable(path));
    return true;
}

// The format: a header, a line of a table for each picture, the pictures.
QByteArray iconFile(const std::vector<QImage>& images) {
    QByteArray table;
    QByteArray pictures;
    QDataStream lines(&table, QIODevice::WriteOnly);
    lines.setByteOrder(QDataStream::LittleEndian);
    constexpr quint16 isIcon = 1;
    lines << quint16(0) << isIcon << quint16(images.size());
    const auto start = static_cast<qsizetype>(6 + 16 * images.size());
    for (const QImage& image : images) {
        const QByteArray bytes = packed(image);
        const auto side = static_cast<quint8>(image.width()); // 0 stands for 256
        lines << side << side << quint8(0) << quint8(0) << quint16(1) << quint16(32) << quint32(bytes.size())
              << quint32(start + pictures.size());
        pictures += bytes;
    }
    return table + pictures;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // There is no desktop here to be missed.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    QSvgRenderer drawing(arguments.value(1));
    if (arguments.size() != 3 || !drawing.isValid()) {
        std::fprintf(stderr, "usage: %s <drawing.svg> <folder/name.svg or .ico>\n", argv[0]);
        return 2;
    }
    const QSize own = drawing.defaultSize();
    std::vector<int> widths{own.width(), own.width() * 3 / 2, own.width() * 2};
    if (own.width() == own.height())
        widths = {16, 24, 32, 48, 64, 128, 256};
    const QFileInfo target(arguments.at(2));
    bool written = target.dir().mkpath(QStringLiteral("."));
    std::vector<QImage> images;
    for (const int width : widths)
        images.push_back(drawn(drawing, width));
    if (target.suffix() == QLatin1String("ico"))
        return written && write(target.filePath(), iconFile(images)) ? 0 : 1;
    for (const QImage& image : images) {
        const QString name = QStringLiteral("%1-%2.png").arg(target.completeBaseName()).arg(image.width());
        written = written && write(target.dir().filePath(name), packed(image));
    }
    return written ? 0 : 1;
}
