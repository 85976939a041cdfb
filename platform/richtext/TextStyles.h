// The colours of the document's characters, kept as the text engine's styles.
#pragma once

#include "platform/richtext/StyleHistory.h"
#include "platform/richtext/StyleTable.h"
#include "platform/richtext/TextEngine.h"
#include "platform/text/rtf.h"

#include <span>
#include <string_view>
#include <vector>

namespace blockhouse {

class TextStyles {
public:
    explicit TextStyles(TextEngine engine) : engine_(engine) {}

    // The style for a pair of colours; one that is new is made known to the text engine.
    [[nodiscard]] int styleFor(ColourPair colours);
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

    // The document has been replaced; its new text has style 0.
    void textReplaced() { plainFrom_ = 0; }

    // An edit begins.
    void textMoves();

private:
    void read(BytePosition start, std::span<unsigned char> styles) const;
    void write(BytePosition start, std::span<const unsigned char> styles);

    TextEngine engine_;
    StyleTable table_;
    BytePosition plainFrom_ = 0; // from here on every character is known to have style 0
};

} // namespace blockhouse
