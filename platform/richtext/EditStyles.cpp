#include "platform/richtext/EditStyles.h"

#include "platform/richtext/TextStyles.h"

#include <Qsci/qsciscintillabase.h>

#include <utility>

namespace blockhouse {
namespace {

bool isLineBreak(std::ptrdiff_t character) {
    return character == '\r' || character == '\n';
}

} // namespace

void EditStyles::deleting(ByteSpan span, Cause cause) {
    StyleRuns runs = styles_.runsOf(span);
    switch (cause) {
    case Cause::Undo:
        return history_.undoRemoves(std::move(runs));
    case Cause::Redo:
        return history_.redoRemoves(std::move(runs));
    case Cause::Edit:
        return history_.deleting(std::move(runs));
    }
}

void EditStyles::inserting(BytePosition at, std::ptrdiff_t length, Cause cause, std::optional<Colour> typingColour) {
    switch (cause) {
    case Cause::Undo:
        pending_ = Insertion{at, history_.undoRestores(), {}};
        return;
    case Cause::Redo:
        pending_ = Insertion{at, history_.redoRestores(), {}};
        return;
    case Cause::Edit:
        history_.inserting();
        pending_ = newText(at, length, typingColour);
        return;
    }
}

EditStyles::Insertion EditStyles::newText(BytePosition at, std::ptrdiff_t length, std::optional<Colour> typingColour) {
    const bool continuesLine = at > 0 && !isLineBreak(engine_.ask(QsciScintillaBase::SCI_GETCHARAT, at - 1));
    const ColourPair before = at > 0 ? styles_.coloursAt(at - 1) : ColourPair{};
    const Colour text = typingColour.value_or(before.text);
    const int firstLine = styles_.styleFor({text, continuesLine ? before.background : defaultBackground});
    const int furtherLines = styles_.styleFor({text, defaultBackground});
    return {at, {{static_cast<std::uint32_t>(length), static_cast<unsigned char>(firstLine)}}, furtherLines};
}

std::optional<ByteSpan> EditStyles::settle() {
    if (!pending_)
        return std::nullopt;
    const Insertion inserted = *std::exchange(pending_, std::nullopt);
    ByteSpan span{inserted.at, inserted.at};
    for (const StyleRun& run : inserted.styles) {
        engine_.fillStyle({span.last, span.last + run.length}, run.style);
        span.last += run.length;
    }
    if (inserted.furtherLines)
        endBackgroundWithLine(span, *inserted.furtherLines);
    return span;
}

void EditStyles::endBackgroundWithLine(ByteSpan inserted, int furtherLines) {
    const std::string_view text = engine_.text(inserted);
    const std::size_t lineBreak = text.find_first_of("\r\n");
    if (lineBreak != text.npos)
        engine_.fillStyle({inserted.first + static_cast<BytePosition>(lineBreak), inserted.last}, furtherLines);
}

void EditStyles::clear() {
    history_.clear();
    pending_.reset();
}

} // namespace blockhouse
