#include "platform/widgets/qt_text.h"

#include <QDir>

namespace blockhouse {

QString documentText(std::string_view bytes) {
    return QString::fromStdString(codepage::toUtf8(bytes));
}

codepage::Encoded documentBytes(const QString& text) {
    return codepage::fromUtf8(text.toStdString());
}

QString displayed(const std::string& path) {
    return QString::fromStdString(path);
}

std::string pathOf(const QString& text) {
    return QDir::toNativeSeparators(text).toStdString();
}

} // namespace blockhouse
