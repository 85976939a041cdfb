// Text from input methods and dead keys: it is shown in the document while it is composed, and stays once committed.
#include "platform/richtext/line_ends.h"
#include "platform/richtext/RichTextBox.h"
#include "platform/text/codepage.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>

#include <algorithm>

namespace blockhouse {
namespace {

QString decoded(std::string_view bytes) {
    return QString::fromStdString(codepage::toUtf8(bytes));
}

} // namespace

// An event may commit one composition and begin the next, but the text engine would forget the second.
void RichTextBox::inputMethodEvent(QInputMethodEvent* event) {
    if (!event->commitString().isEmpty() || event->preeditString().isEmpty())
        commit(*event);
    if (!event->preeditString().isEmpty())
        compose(*event);
    event->accept();
}

// Nothing to commit ends a composition without leaving its text.
void RichTextBox::commit(const QInputMethodEvent& event) {
    const QString& text = event.commitString();
    if (!composition_ && !text.isEmpty() && !acceptsText(text))
        return;
    QInputMethodEvent encoded;
    encoded.setCommitString(QString::fromStdString(withLineEnds(encodedForInsertion(text), lineEnd_)));
    replaceComposition(encoded);
    composition_.reset();
    settleEdit();
}

void RichTextBox::compose(const QInputMethodEvent& event) {
    if (!composition_) {
        if (!acceptsText(event.preeditString()))
            return;
        composition_ = Composition{engine_.selection().first, selColor()};
    }
    QInputMethodEvent shown(event.preeditString(), event.attributes());
    replaceComposition(shown);
    settleEdit();
}

bool RichTextBox::acceptsText(const QString& text) {
    const bool cancelled = askKeyDown(QKeyEvent(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, text));
    if (!cancelled)
        prepareForInput();
    return !cancelled;
}

// The text engine takes out what it showed last, and the caret has been moving in that.
void RichTextBox::replaceComposition(QInputMethodEvent& event) {
    if (composition_)
        typing_.choose(composition_->at, composition_->colour);
    QsciScintillaBase::inputMethodEvent(&event);
}

void RichTextBox::endComposition() {
    if (!composition_)
        return;
    if (QGuiApplication::focusObject() == this)
        QGuiApplication::inputMethod()->commit();
    // Input methods commit at once if they do at all.
    if (composition_)
        commit({});
}

QVariant RichTextBox::inputMethodQuery(Qt::InputMethodQuery query) const {
    // Only what is near the caret: the whole text may be a hundred megabytes.
    constexpr std::ptrdiff_t reach = 1024;
    const Position caret = this->caret();
    const Position first = std::max<Position>(caret - reach, 0);
    const auto inReach = [&](BytePosition byte) {
        return static_cast<int>(std::clamp<std::ptrdiff_t>(index_.characterOf(byte) - first, 0, 2 * reach));
    };
    switch (query) {
    case Qt::ImSurroundingText:
        return decoded(textAt(first, 2 * reach));
    case Qt::ImCursorPosition:
        return static_cast<int>(caret - first);
    case Qt::ImAnchorPosition:
        return inReach(engine_.ask(SCI_GETANCHOR));
    case Qt::ImCurrentSelection:
        return decoded(textAt(selStart(), std::min(selLength(), 2 * reach)));
    case Qt::ImTextBeforeCursor:
        return decoded(textAt(first, caret - first));
    case Qt::ImTextAfterCursor:
        return decoded(textAt(caret, reach));
    default:
        return QsciScintillaBase::inputMethodQuery(query);
    }
}

} // namespace blockhouse
