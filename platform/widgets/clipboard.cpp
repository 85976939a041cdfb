#include "platform/widgets/clipboard.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
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

QString clipboardIsSilent() {
    return QCoreApplication::translate("clipboard",
                                       "The program that holds the clipboard does not answer. The text is as it was.");
}

namespace {

class PasteFilter : public QObject {
public:
    PasteFilter(QLineEdit& line, std::function<void()> failed)
        : QObject(&line), line_(line), failed_(std::move(failed)) {
        line.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress || !static_cast<QKeyEvent*>(event)->matches(QKeySequence::Paste))
            return QObject::eventFilter(watched, event);
        if (const std::optional<QString> text = clipboardText())
            line_.insert(*text);
        else
            failed_();
        return true;
    }

private:
    QLineEdit& line_;
    std::function<void()> failed_;
};

} // namespace

void pasteWithin(QLineEdit& line, std::function<void()> failed) {
    new PasteFilter(line, std::move(failed)); // the line's own
}

bool putOnClipboard(const QString& text) {
    QClipboard& clipboard = *QGuiApplication::clipboard();
    clipboard.setText(text);
    return clipboard.ownsClipboard() || clipboardText() == text;
}

} // namespace blockhouse
