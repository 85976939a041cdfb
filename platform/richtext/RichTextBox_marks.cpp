// Marks in the text that are no colours of it: the text engine's indicators.
#include "platform/richtext/RichTextBox.h"

#include <algorithm>

namespace blockhouse {
namespace {

constexpr Colour pairColour = rgb(60, 120, 216);
constexpr Colour faultColour = rgb(214, 40, 40);

constexpr int indicatorOf(RichTextBox::Mark mark) {
    return QsciScintillaBase::INDIC_CONTAINER + static_cast<int>(mark);
}

} // namespace

void RichTextBox::setUpMarks() {
    engine_.tell(SCI_INDICSETSTYLE, indicatorOf(Mark::Pair), INDIC_STRAIGHTBOX);
    engine_.tell(SCI_INDICSETFORE, indicatorOf(Mark::Pair), pairColour);
    engine_.tell(SCI_INDICSETUNDER, indicatorOf(Mark::Pair), 1);
    engine_.tell(SCI_INDICSETSTYLE, indicatorOf(Mark::Fault), INDIC_SQUIGGLE);
    engine_.tell(SCI_INDICSETFORE, indicatorOf(Mark::Fault), faultColour);
}

// A mark that is set anew counts as a change of the looks, and whoever sets marks does so when the looks have changed.
void RichTextBox::setMarks(Mark mark, std::span<const TextRange> ranges) {
    const std::vector<ByteSpan> spans = index_.spansOf(ranges);
    const auto isSet = [&](ByteSpan span) {
        return engine_.ask(SCI_INDICATORVALUEAT, indicatorOf(mark), span.first) != 0 &&
               engine_.ask(SCI_INDICATORSTART, indicatorOf(mark), span.first) == span.first &&
               engine_.ask(SCI_INDICATOREND, indicatorOf(mark), span.first) == span.last;
    };
    std::vector<ByteSpan>& before = marked_[static_cast<std::size_t>(mark)];
    if (before == spans && std::all_of(spans.begin(), spans.end(), isSet))
        return;
    before = spans;
    engine_.tell(SCI_SETINDICATORCURRENT, indicatorOf(mark));
    engine_.tell(SCI_INDICATORCLEARRANGE, 0, engine_.length());
    for (const ByteSpan& span : spans)
        engine_.tell(SCI_INDICATORFILLRANGE, span.first, span.length());
}

bool RichTextBox::isMarked(Mark mark, Position position) const {
    return engine_.ask(SCI_INDICATORVALUEAT, indicatorOf(mark), index_.byteOf(position)) != 0;
}

} // namespace blockhouse
