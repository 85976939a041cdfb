// The parts of the document whose colours a rule gives and whose styles have not been written yet.
#pragma once

#include "platform/richtext/TextEngine.h"
#include "platform/text/ColouringRule.h"

#include <functional>
#include <memory>
#include <vector>

namespace blockhouse {

class UncolouredText {
public:
    using StyleFor = std::function<int(ColourPair)>;

    UncolouredText(TextEngine engine, StyleFor styleFor) : engine_(engine), styleFor_(std::move(styleFor)) {}

    // The whole document is uncoloured.
    void begin(std::shared_ptr<const ColouringRule> rule);

    // Nothing is.
    void clear() { spans_.clear(); }

    // Writes the styles of every uncoloured paragraph that has a byte in `span`, and perhaps of more.
    void colour(ByteSpan span);

    // An edit moves what lies behind it: so many bytes come in, or go out (negative). It is no edit of uncoloured text.
    void textMoves(BytePosition at, std::ptrdiff_t length);

private:
    [[nodiscard]] ByteSpan pieceFor(ByteSpan wanted, ByteSpan within) const;
    void writeStyles(ByteSpan paragraphs);

    TextEngine engine_;
    StyleFor styleFor_;
    std::shared_ptr<const ColouringRule> rule_;
    std::vector<ByteSpan> spans_; // ordered, apart, none empty; each begins and ends where a paragraph does
};

} // namespace blockhouse
