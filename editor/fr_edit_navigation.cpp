// Jumping to a block and to a setting inside it.
#include "editor/BlockListModel.h"
#include "editor/EditorHost.h"
#include "editor/fr_edit.h"
#include "editor/navigation.h"
#include "editor/textboxbas.h"
#include "platform/text/codepage.h"

#include <QSignalBlocker>
#include <QTimer>

namespace blockhouse {

// A list announces a choice twice if it changes the selected entry, and once if it was selected already.
void fr_edit::onBlockSelected() {
    chooseBlock();
    blockJustChosen_ = true;
    QTimer::singleShot(0, this, [this] { blockJustChosen_ = false; });
}

void fr_edit::onBlockActivated() {
    if (!blockJustChosen_)
        chooseBlock();
}

void fr_edit::chooseBlock() {
    const int index = List1->currentIndex();
    if (index < 0)
        return;
    const BlockEntry& block = blocks_->blocks()[static_cast<std::size_t>(index)];
    txt_edit->setSelStart(caretAfter(headerPosition(Filetext, block.itemData, block.name)));
    Makekeywords(settingsStart(txt_edit->selStart()));
    scrollCaretLineToTop();
}

void fr_edit::Makekeywords(TextPosition i) {
    // Filling the list selects its first entry for a moment, which nobody has chosen.
    const QSignalBlocker unheard(Combo1);
    Combo1->clear();
    const std::optional<std::string_view> ascii = txt_edit->asciiText();
    const std::string decoded = ascii ? std::string() : txt_edit->text();
    const std::string_view text = ascii.value_or(decoded);
    if (text.empty())
        return;
    const int kind = List1->currentData().toInt();
    for (const SettingEntry& setting : settingsOf(text, kind, i, host_.jumps()))
        Combo1->addItem(QString::fromStdString(codepage::toUtf8(setting.name)),
                        static_cast<qlonglong>(setting.itemData.value));
    Combo1->setCurrentIndex(-1);
}

int fr_edit::FindinCombo(std::string_view what) const {
    for (int index = 0; index < Combo1->count(); ++index) {
        const std::string name = codepage::fromUtf8(Combo1->itemText(index).toStdString()).bytes;
        if (codepage::equalIgnoringCase(name, what))
            return index;
    }
    return -1;
}

void fr_edit::chooseSetting() {
    if (Combo1->currentIndex() < 0)
        return;
    // A position that edits have left beyond the text's end means that end.
    txt_edit->setSelStart(caretAfter(TextPosition{Combo1->currentData().toLongLong()}));
    scrollCaretLineToTop();
}

void fr_edit::showFound(TextRange found) {
    txt_edit->setSelStart(found.start);
    txt_edit->setSelLength(found.length);
    txt_edit->scrollIntoView(found.start, found.start + found.length);
    // Not at an edge of the view, where a line may be cut and what leads to the place is not seen.
    constexpr std::int32_t linesAbove = 4;
    ScrollLines(*txt_edit, 0, GetCurrentLine(*txt_edit) - linesAbove - GetFirstVisibleLine(*txt_edit));
}

void fr_edit::scrollCaretLineToTop() {
    ScrollLines(*txt_edit, 0, GetCurrentLine(*txt_edit) - GetFirstVisibleLine(*txt_edit));
}

} // namespace blockhouse
