// Colours: a style for every character, kept right through edits, undo and redo.
#include "platform/richtext/RichTextBox.h"

namespace blockhouse {

ColourPair RichTextBox::coloursAt(BytePosition byte) const {
    Q_ASSERT(editStyles_.isSettled());
    return styles_.coloursAt(byte);
}

Colour RichTextBox::selColor() const {
    const ByteSpan selected = engine_.selection();
    if (selected.length() > 0)
        return coloursAt(selected.first).text;
    if (const std::optional<Colour> chosen = typing_.at(selected.first))
        return *chosen;
    return selected.first > 0 ? coloursAt(selected.first - 1).text : defaultTextColour;
}

void RichTextBox::setSelColor(Colour colour) {
    const ByteSpan selected = engine_.selection();
    if (selected.length() > 0)
        styles_.recolour({&selected, 1}, colour);
    else
        typing_.choose(engine_.caret(), colour);
}

Colour RichTextBox::textColorAt(Position position) const {
    return coloursAt(index_.byteOf(position)).text;
}

Colour RichTextBox::backgroundAt(Position position) const {
    return coloursAt(index_.byteOf(position)).background;
}

void RichTextBox::setTextColor(std::span<const TextRange> ranges, Colour colour) {
    styles_.recolour(index_.spansOf(ranges), colour);
}

void RichTextBox::paintEvent(QPaintEvent* event) {
    const std::ptrdiff_t line = engine_.ask(SCI_GETFIRSTVISIBLELINE);
    const std::ptrdiff_t below = line + engine_.ask(SCI_LINESONSCREEN) + 2; // the last one may be in view in part
    const BytePosition end = engine_.ask(SCI_POSITIONFROMLINE, below);
    styles_.prepare({engine_.ask(SCI_POSITIONFROMLINE, line), end < 0 ? engine_.length() : end});
    engine_.everythingIsStyled();
    QsciScintillaBase::paintEvent(event);
}

// --- Edits ------------------------------------------------------------------------------------------------------

void RichTextBox::onModified(BytePosition position, int type, std::ptrdiff_t length) {
    using Cause = EditStyles::Cause;
    settleStyles();
    textChanged_ = true;
    const Cause cause = type & SC_PERFORMED_UNDO ? Cause::Undo : type & SC_PERFORMED_REDO ? Cause::Redo : Cause::Edit;
    if (type & SC_MOD_BEFOREDELETE) {
        const ByteSpan span{position, position + length};
        index_.deleting(span);
        styles_.editing(span);
        editStyles_.deleting(span, cause);
        styles_.textMoves(position, -length);
    } else {
        index_.inserting(position);
        styles_.editing({position, position});
        editStyles_.inserting(position, length, cause, typing_.at(position));
        styles_.textMoves(position, length);
    }
}

void RichTextBox::settleStyles() {
    if (const std::optional<ByteSpan> inserted = editStyles_.settle())
        index_.inserted(*inserted);
}

void RichTextBox::settleEdit() {
    settleStyles();
    index_.settle();
    typing_.caretIsAt(engine_.caret());
    if (textChanged_ && !composition_) {
        textChanged_ = false;
        Q_EMIT changed();
    }
}

} // namespace blockhouse
