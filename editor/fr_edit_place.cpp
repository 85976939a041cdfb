// The label that tells where the caret is.
#include "editor/BoxText.h"
#include "editor/fr_edit.h"
#include "editor/place_text.h"
#include "platform/widgets/controls.h"
#include "platform/widgets/qt_text.h"

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

// A text around the caret without edits in it is looked at once.
void fr_edit::showPlace() {
    if (isOpening())
        return;
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
    const LineIndex line = txt_edit->lineAt(caret);
    const std::string text = placeText(line, caret - txt_edit->lineStart(line), around_->structure, around_->text,
                                       caret.value - around_->region.range.start);
    PlaceLabel->setToolTip(documentText(text));
    elidePlace();
}

void fr_edit::elidePlace() {
    PlaceLabel->setText(
        PlaceLabel->fontMetrics().elidedText(PlaceLabel->toolTip(), Qt::ElideRight, PlaceLabel->width()));
}

} // namespace blockhouse
