// The parts of the document whose colours a rule gives and whose styles have not been written yet.
#pragma once

#include "platform/richtext/TextEngine.h"
#include "platform/text/ColouringRule.h"

#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace blockhouse {

class UncolouredText {
public:
    struct StyleNumbers {
        std::function<int(ColourPair)> styleFor;
        std::function<int(int)> twinOf; // looks the same
    };

    UncolouredText(TextEngine engine, StyleNumbers numbers) : engine_(engine), numbers_(std::move(numbers)) {}

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
    void breakLongRuns(std::string_view utf8, std::span<unsigned char> styles) const;

    TextEngine engine_;
    StyleNumbers numbers_;
    std::shared_ptr<const ColouringRule> rule_;
    std::vector<ByteSpan> spans_; // ordered, apart, none empty; each begins and ends where a paragraph does
};

} // namespace blockhouse
