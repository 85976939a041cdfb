// Where the caret is in the structure of the text: the label that tells it, and the marks of a block's two ends.
#include "editor/BoxText.h"
#include "editor/fr_edit.h"
#include "editor/place_text.h"
#include "platform/widgets/controls.h"
#include "platform/widgets/qt_text.h"

#include <algorithm>

namespace blockhouse {

void fr_edit::makePlaceLabel() {
    PlaceLabel = named(new QLabel(this), "PlaceLabel", tr("Where the caret is"));
    PlaceLabel->setTextFormat(Qt::PlainText);
    PlaceLabel->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    connect(txt_edit, &RichTextBox::changed, this, [this] { around_.reset(); });
    connect(txt_edit, &RichTextBox::looksDifferent, this, &fr_edit::showPlace);
}

// What the toolbar's buttons leave free.
void fr_edit::placeLabel() {
    constexpr int gap = 8;
    const int left = Toolbar1->sizeHint().width() + gap;
    PlaceLabel->setGeometry(left, 0, std::max(width() - gap - left, 0), Combo1->y());
    elidePlace();
}

// The structure is worked out again only after an edit, or when the caret has left the region.
const fr_edit::Around& fr_edit::aroundCaret() {
    const CaretPosition caret = txt_edit->caret();
    const auto isInside = [caret](const BlockRegion& region) {
        return caret.value >= region.range.start && caret.value < region.range.start + region.range.length;
    };
    if (!around_ || !isInside(around_->region)) {
        const BlockRegion region = blockRegion(BoxText(*txt_edit), caret);
        std::string text = txt_edit->textAt(region.range.start, region.range.length);
        BlockStructure structure = blockStructure(text, region.isWhole);
        around_.emplace(Around{region, std::move(text), std::move(structure)});
    }
    return *around_;
}

void fr_edit::showPlace() {
    if (isOpening())
        return;
    const CaretPosition caret = txt_edit->caret();
    const Around& around = aroundCaret();
    const std::ptrdiff_t place = caret.value - around.region.range.start;
    const LineIndex line = txt_edit->lineAt(caret);
    const std::string text = placeText(line, caret - txt_edit->lineStart(line), around.structure, around.text, place);
    PlaceLabel->setToolTip(documentText(text));
    elidePlace();
    markPair(around, blockAt(around.structure, place));
}

void fr_edit::markPair(const Around& around, std::optional<std::size_t> block) {
    std::vector<TextRange> words;
    if (block) {
        const StructureBlock& pair = around.structure.blocks[*block];
        for (const std::optional<TextRange>& word : {std::optional(pair.opener), pair.end})
            if (word)
                words.push_back({around.region.range.start + word->start, word->length});
    }
    txt_edit->setMarks(RichTextBox::Mark::Pair, words);
}

// From one end of a block to the other; from inside it to its opener.
void fr_edit::goToOtherEnd() {
    txt_edit->endComposition();
    if (isOpening())
        return;
    const Around& around = aroundCaret();
    const std::ptrdiff_t place = txt_edit->caret().value - around.region.range.start;
    std::optional<std::size_t> block = blockAt(around.structure, place);
    if (const std::vector<std::size_t> outer = blocksAround(around.structure, around.text, place);
        !block && !outer.empty())
        block = outer.back();
    if (!block)
        return;
    const StructureBlock& pair = around.structure.blocks[*block];
    const bool isAtOpener = place >= pair.opener.start && place <= pair.opener.start + pair.opener.length;
    const TextRange other = isAtOpener ? pair.end.value_or(pair.opener) : pair.opener;
    const CaretPosition to = around.region.range.start + other.start;
    txt_edit->setSelStart(to);
    txt_edit->scrollIntoView(to, to + other.length);
    txt_edit->scrollSideways(to, to + other.length);
}

void fr_edit::elidePlace() {
    PlaceLabel->setText(
        PlaceLabel->fontMetrics().elidedText(PlaceLabel->toolTip(), Qt::ElideRight, PlaceLabel->width()));
}

} // namespace blockhouse
