// Keys, mouse, clipboard and drops: everything that comes in is brought into the code page first.
#include "platform/richtext/key_presses.h"
#include "platform/richtext/line_ends.h"
#include "platform/richtext/RichTextBox.h"
#include "platform/text/codepage.h"
#include "platform/widgets/clipboard.h"
#include "platform/widgets/LongWork.h"

#include <QContextMenuEvent>
#include <QMimeData>

#include <algorithm>

namespace blockhouse {
namespace {

bool typesText(const QKeyEvent& event) {
    return !isCommand(event) && !event.text().isEmpty() && event.text().front().isPrint();
}

// Without the modifiers that would start a rectangular selection.
QMouseEvent plainDrag(const QMouseEvent& event) {
    return {event.type(),
            event.position(),
            event.scenePosition(),
            event.globalPosition(),
            event.button(),
            event.buttons(),
            event.modifiers() & ~(Qt::ControlModifier | Qt::AltModifier),
            event.pointingDevice()};
}

} // namespace

void RichTextBox::setUpKeys() {
    struct Key {
        int key;
        int command;
    };

    constexpr int shift = SCMOD_SHIFT << 16;
    constexpr int control = SCMOD_CTRL << 16;
    constexpr Key keys[] = {
        {SCK_LEFT, SCI_CHARLEFT},
        {SCK_LEFT | shift, SCI_CHARLEFTEXTEND},
        {SCK_LEFT | control, SCI_WORDLEFT},
        {SCK_LEFT | control | shift, SCI_WORDLEFTEXTEND},
        {SCK_RIGHT, SCI_CHARRIGHT},
        {SCK_RIGHT | shift, SCI_CHARRIGHTEXTEND},
        {SCK_RIGHT | control, SCI_WORDRIGHT},
        {SCK_RIGHT | control | shift, SCI_WORDRIGHTEXTEND},
        {SCK_UP, SCI_LINEUP},
        {SCK_UP | shift, SCI_LINEUPEXTEND},
        {SCK_UP | control, SCI_LINESCROLLUP},
        {SCK_DOWN, SCI_LINEDOWN},
        {SCK_DOWN | shift, SCI_LINEDOWNEXTEND},
        {SCK_DOWN | control, SCI_LINESCROLLDOWN},
        {SCK_HOME, SCI_HOME},
        {SCK_HOME | shift, SCI_HOMEEXTEND},
        {SCK_HOME | control, SCI_DOCUMENTSTART},
        {SCK_HOME | control | shift, SCI_DOCUMENTSTARTEXTEND},
        {SCK_END, SCI_LINEEND},
        {SCK_END | shift, SCI_LINEENDEXTEND},
        {SCK_END | control, SCI_DOCUMENTEND},
        {SCK_END | control | shift, SCI_DOCUMENTENDEXTEND},
        {SCK_PRIOR, SCI_PAGEUP},
        {SCK_PRIOR | shift, SCI_PAGEUPEXTEND},
        {SCK_NEXT, SCI_PAGEDOWN},
        {SCK_NEXT | shift, SCI_PAGEDOWNEXTEND},
        {SCK_DELETE, SCI_CLEAR},
        {SCK_DELETE | control, SCI_DELWORDRIGHT},
        {SCK_BACK, SCI_DELETEBACK},
        {SCK_BACK | shift, SCI_DELETEBACK},
        {SCK_BACK | control, SCI_DELWORDLEFT},
        {SCK_RETURN, SCI_NEWLINE},
        {SCK_RETURN | shift, SCI_NEWLINE},
        {SCK_TAB, SCI_TAB},
        {SCK_TAB | shift, SCI_BACKTAB},
        {SCK_INSERT, SCI_EDITTOGGLEOVERTYPE},
        {SCK_ESCAPE, SCI_CANCEL},
        {'A' | control, SCI_SELECTALL},
        {'Z' | control, SCI_UNDO},
        {'Z' | control | shift, SCI_REDO},
        {'Y' | control, SCI_REDO},
    };
    // The text engine's own set would, for one, duplicate a line at Ctrl+D.
    engine_.tell(SCI_CLEARALLCMDKEYS);
    for (const Key& key : keys)
        engine_.tell(SCI_ASSIGNCMDKEY, key.key, key.command);
}

// --- Keys -------------------------------------------------------------------------------------------------------

bool RichTextBox::event(QEvent* event) {
    // A key that is also a menu shortcut never comes as a key press if the menu takes it.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& press = static_cast<const QKeyEvent&>(*event);
        seenPress_.forget();
        const bool cancelled = runKeyDown(press);
        seenPress_.remember(press.key(), cancelled);
        if (cancelled) {
            event->accept();
            return true;
        }
    }
    return QsciScintillaBase::event(event);
}

bool RichTextBox::runKeyDown(const QKeyEvent& event) {
    if (const std::optional<bool> cancelled = seenPress_.take(event.key()))
        return *cancelled;
    if (!isPartOfAnotherPress(event))
        endComposition();
    return askKeyDown(event);
}

bool RichTextBox::askKeyDown(const QKeyEvent& event) {
    if (!keyDown_)
        return false;
    prepareForInput();
    const bool cancelled = keyDown_(event);
    settleEdit();
    return cancelled;
}

void RichTextBox::keyPressEvent(QKeyEvent* event) {
    if (runKeyDown(*event)) {
        event->accept();
        return;
    }
    prepareForInput();
    if (actOnClipboardKey(*event)) {
        event->accept();
    } else {
        if (!isReadOnly() && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
            startUndoStep();
        const std::string typed = typesText(*event) ? encodedForInsertion(event->text()) : std::string();
        QKeyEvent encoded(event->type(), event->key(), event->modifiers(), QString::fromStdString(typed),
                          event->isAutoRepeat());
        QsciScintillaBase::keyPressEvent(&encoded);
        // The windows around may have something to close.
        event->setAccepted(encoded.isAccepted() && event->key() != Qt::Key_Escape);
    }
    settleEdit();
}

void RichTextBox::keyReleaseEvent(QKeyEvent* event) {
    seenPress_.forget();
    QsciScintillaBase::keyReleaseEvent(event);
}

// Without it the text engine takes back all that was typed in a row, however many lines that are.
void RichTextBox::startUndoStep() {
    engine_.tell(SCI_BEGINUNDOACTION);
    engine_.tell(SCI_ENDUNDOACTION);
}

bool RichTextBox::actOnClipboardKey(const QKeyEvent& event) {
    if (event.matches(QKeySequence::Copy))
        copy();
    else if (event.matches(QKeySequence::Cut))
        cut();
    else if (event.matches(QKeySequence::Paste))
        paste();
    else
        return false;
    return true;
}

void RichTextBox::prepareForInput() {
    const ByteSpan selected = engine_.selection();
    if (selected.length() > 0)
        typing_.choose(selected.first, selColor());
    else if (engine_.isInsideLineBreak(selected.first))
        engine_.putCaret(selected.first - 1);
}

// --- Mouse ------------------------------------------------------------------------------------------------------

void RichTextBox::mousePressEvent(QMouseEvent* event) {
    endComposition();
    Q_EMIT mouseDown(event->button(), event->position().toPoint());
    if (event->button() == Qt::RightButton)
        return;
    QMouseEvent plain = plainDrag(*event);
    QsciScintillaBase::mousePressEvent(&plain);
    settleEdit();
}

void RichTextBox::mouseMoveEvent(QMouseEvent* event) {
    QMouseEvent plain = plainDrag(*event);
    // Text dragged away is taken out before this returns; meanwhile the window may have been closed.
    if (stillOpenAfter(*this, [&] { QsciScintillaBase::mouseMoveEvent(&plain); }))
        settleEdit();
}

void RichTextBox::mouseReleaseEvent(QMouseEvent* event) {
    QMouseEvent plain = plainDrag(*event);
    QsciScintillaBase::mouseReleaseEvent(&plain);
    settleEdit();
}

// The owner shows its menu at mouseDown; the text engine has none.
void RichTextBox::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard)
        Q_EMIT menuKeyPressed(viewport()->mapToGlobal(characterRect(caret()).bottomLeft()));
    event->accept();
}

// --- Editing, clipboard and drops -------------------------------------------------------------------------------

void RichTextBox::undo() {
    endComposition();
    engine_.tell(SCI_UNDO);
    settleEdit();
}

void RichTextBox::redo() {
    endComposition();
    engine_.tell(SCI_REDO);
    settleEdit();
}

void RichTextBox::copy() {
    static_cast<void>(putSelectionOnClipboard());
}

void RichTextBox::cut() {
    if (putSelectionOnClipboard())
        setSelText({});
}

bool RichTextBox::putSelectionOnClipboard() {
    endComposition();
    const bool isThere = putOnClipboard(QString::fromStdString(codepage::toUtf8(selText())));
    if (!isThere)
        Q_EMIT clipboardFailed();
    return isThere;
}

void RichTextBox::paste() {
    endComposition();
    const std::optional<QString> text = clipboardText();
    if (!text) {
        Q_EMIT clipboardFailed();
        return;
    }
    prepareForInput();
    insertOverSelection(withLineEnds(encodedForInsertion(*text), lineEnd_));
    engine_.tell(SCI_SCROLLCARET);
    settleEdit();
}

std::string RichTextBox::encodedForInsertion(const QString& text) const {
    const codepage::Encoded encoded = codepage::fromUtf8(text.toStdString());
    if (encoded.lossy)
        Q_EMIT charactersReplaced();
    return codepage::toUtf8(encoded.bytes);
}

void RichTextBox::dropEvent(QDropEvent* event) {
    endComposition();
    QsciScintillaBase::dropEvent(event);
    settleEdit();
}

bool RichTextBox::canInsertFromMimeData(const QMimeData* source) const {
    return source->hasText();
}

QByteArray RichTextBox::fromMimeData(const QMimeData* source, bool& rectangular) const {
    rectangular = false;
    return QByteArray::fromStdString(withLineEnds(encodedForInsertion(source->text()), lineEnd_));
}

QMimeData* RichTextBox::toMimeData(const QByteArray& text, bool) const {
    auto* plainText = new QMimeData;
    plainText->setText(QString::fromUtf8(text));
    return plainText;
}

} // namespace blockhouse
