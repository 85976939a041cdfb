// Keeps the colours right through edits, undo and redo. The text engine gives inserted text style 0, whatever stands
// beside it and whatever had been deleted there.
//
// Tell it every edit before it happens. An insertion has its style only after settle(), which comes before the next
// edit and before anybody asks for a colour.
#pragma once

#include "platform/richtext/StyleHistory.h"
#include "platform/richtext/TextEngine.h"
#include "platform/text/Colour.h"

#include <optional>

namespace blockhouse {

class TextStyles;

class EditStyles {
public:
    enum class Cause { Edit, Undo, Redo };

    // The styles must outlive this object.
    EditStyles(TextEngine engine, TextStyles& styles) : engine_(engine), styles_(styles) {}

    void deleting(ByteSpan span, Cause cause);
    // Text that undo or redo brings back has its old colours. Other text has the typing colour, or without one that of
    // the character before it; the background goes on as far as the line does.
    void inserting(BytePosition at, std::ptrdiff_t length, Cause cause, std::optional<Colour> typingColour);
    // What was inserted since the last time, if anything was.
    std::optional<ByteSpan> settle();

    [[nodiscard]] bool isSettled() const { return !pending_; }

    // The document has been replaced, and nothing can be undone.
    void clear();

private:
    struct Insertion {
        BytePosition at;
        StyleRuns styles;
        std::optional<int> furtherLines; // the style of what follows the first line break, if it has one of its own
    };

    [[nodiscard]] Insertion newText(BytePosition at, std::ptrdiff_t length, std::optional<Colour> typingColour);
    void endBackgroundWithLine(ByteSpan inserted, int furtherLines);

    TextEngine engine_;
    TextStyles& styles_;
    StyleHistory history_;
    std::optional<Insertion> pending_;
};

} // namespace blockhouse
