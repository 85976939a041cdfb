// The colours of the document's characters, kept as the text engine's styles. Where a rule gives the colours, styles
// are written only when a part of the text is about to be seen, asked for or edited; nobody can tell the difference.
#pragma once

#include "platform/richtext/StyleHistory.h"
#include "platform/richtext/StyleTable.h"
#include "platform/richtext/TextEngine.h"
#include "platform/richtext/UncolouredText.h"
#include "platform/text/ColouringRule.h"
#include "platform/text/rtf.h"

#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace blockhouse {

class TextStyles {
public:
    explicit TextStyles(TextEngine engine)
        : engine_(engine), uncoloured_(engine, {[this](ColourPair colours) { return styleFor(colours); },
                                                [this](int style) { return twinOf(style); }}) {}

    TextStyles(const TextStyles&) = delete;
    TextStyles& operator=(const TextStyles&) = delete;

    // The style for a pair of colours; one that is new is made known to the text engine.
    [[nodiscard]] int styleFor(ColourPair colours);
    // Another style that looks the same.
    [[nodiscard]] int twinOf(int style);
    [[nodiscard]] ColourPair coloursAt(BytePosition byte) const;

    // Every colour but the default ones that some text has had.
    [[nodiscard]] std::vector<Colour> colours() const { return table_.colours(); }

    [[nodiscard]] StyleRuns runsOf(ByteSpan span) const;
    // The whole document's colours, read piece by piece as they are asked for, counted in characters. The document and
    // this object must stay as they are meanwhile.
    [[nodiscard]] rtf::SourceWriter::NextRun colourRuns(bool everyCharacterIsOneByte) const;

    // The same at once: neighbours differ.
    [[nodiscard]] std::vector<rtf::ColourRun> allRuns(bool everyCharacterIsOneByte) const;

    // The spans, ordered and apart, get the text colour and keep their backgrounds.
    void recolour(std::span<const ByteSpan> spans, Colour colour);
    // Colours the whole document, whose text is `bytes`. What the runs leave over has the default colours.
    void recolourAll(std::string_view bytes, std::span<const rtf::ColourRun> runs);

    // From here on the whole document, whose text is `bytes`, has the colours that the rule gives it.
    void colourBy(std::shared_ptr<const ColouringRule> rule, std::string_view bytes);

    // The document has been replaced; its new text has style 0.
    void textReplaced();

    // These styles are about to be seen.
    void prepare(ByteSpan span) const { uncoloured_.colour(span); }

    // The span is about to be taken out, or text is to go in where an empty one is. Comes before the styles of what
    // goes are asked for.
    void editing(ByteSpan span);
    // The edit comes next: so many bytes come in, or go out (negative).
    void textMoves(BytePosition at, std::ptrdiff_t length);

private:
    int madeKnown(StyleTable::Numbered style);
    void read(BytePosition start, std::span<unsigned char> styles) const;
    void write(BytePosition start, std::span<const unsigned char> styles);

    TextEngine engine_;
    StyleTable table_;
    BytePosition plainFrom_ = 0; // from here on every character is known to have style 0
    mutable UncolouredText uncoloured_;
};

} // namespace blockhouse
