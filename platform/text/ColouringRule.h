// Which colours a text has as long as nobody gives it others.
#pragma once

#include "platform/text/Colour.h"
#include "platform/text/rtf.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace blockhouse {

// Paragraphs are coloured each by itself, so that any of them can be coloured first. Texts are bytes of the code page;
// a paragraph ends behind a CR LF, a lone CR or a lone LF.
class ColouringRule {
public:
    virtual ~ColouringRule() = default;

    // Of whole paragraphs, one after the other, at the text's start or further on. The runs leave what follows them in
    // the default colours.
    [[nodiscard]] virtual std::vector<rtf::ColourRun> runsOf(std::string_view paragraphs, bool beginText) const = 0;

    // So many bytes at a time are worth while.
    [[nodiscard]] virtual std::size_t leastPiece() const { return std::size_t{1} << 14; }

    // Pairs that name every colour the rule gives this text, the default ones apart, in the order of its colour table.
    [[nodiscard]] virtual std::vector<ColourPair> coloursOf(std::string_view text) const = 0;
};

} // namespace blockhouse
