#include "platform/widgets/clipboard.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QMimeData>

namespace blockhouse {

// The toolkit tells silence from emptiness by nothing but the time it waited. It would wait anew for each format of
// text it tries, so the formats are asked for first.
std::optional<QString> clipboardText() {
    constexpr qint64 answered = 1000; // milliseconds; the toolkit gives up after five times as long
    QElapsedTimer waited;
    waited.start();
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    const QString text = data != nullptr && !data->formats().isEmpty() ? data->text() : QString();
    if (text.isEmpty() && waited.elapsed() > answered)
        return std::nullopt;
    return text;
}

bool putOnClipboard(const QString& text) {
    QClipboard& clipboard = *QGuiApplication::clipboard();
    clipboard.setText(text);
    return clipboard.ownsClipboard() || clipboardText() == text;
}

} // namespace blockhouse
