// Jumping to a block and to a setting inside it.
#include "editor/BlockListModel.h"
#include "editor/EditorHost.h"
#include "editor/find_rules.h"
#include "editor/fr_edit.h"
#include "editor/navigation.h"
#include "editor/textboxbas.h"
#include "platform/text/codepage.h"
#include "platform/text/shown_entry.h"

namespace blockhouse {
namespace {

// An entry of the settings list has the setting's place as its item data, and beside it the name that it is found by,
// which may be another one than is shown.
constexpr int nameRole = Qt::UserRole + 1;

void addSetting(DropDownList& list, const SettingEntry& setting) {
    list.addItem(QString::fromStdString(shownEntry(setting.name)), static_cast<qlonglong>(setting.itemData.value));
    list.setItemData(list.count() - 1, QByteArray::fromStdString(setting.name), nameRole);
}

} // namespace

void fr_edit::chooseBlock(int index) {
    const BlockEntry& block = blocks_->blocks()[static_cast<std::size_t>(index)];
    txt_edit->setSelStart(caretAfter(headerPosition(Filetext, block.kind, block.name)));
    Makekeywords(settingsStart(txt_edit->selStart()));
    scrollCaretLineToTop();
    txt_edit->scrollSideways(txt_edit->selStart(), txt_edit->selStart());
}

void fr_edit::Makekeywords(TextPosition i) {
    const std::optional<std::string_view> ascii = txt_edit->asciiText();
    const std::string decoded = ascii ? std::string() : txt_edit->text();
    const std::string_view text = ascii.value_or(decoded);
    const int block = List1->currentIndex();
    const HeaderKind kind = block < 0 ? HeaderKind::None : blocks_->blocks()[static_cast<std::size_t>(block)].kind;
    std::vector<SettingEntry> settings;
    if (!text.empty())
        settings = settingsOf(text, kind, i, host_.jumps());
    Combo1->fill([&] {
        Combo1->clear();
        for (const SettingEntry& setting : settings)
            addSetting(*Combo1, setting);
    });
}

int fr_edit::FindinCombo(std::string_view what) const {
    for (int index = 0; index < Combo1->count(); ++index) {
        if (codepage::equalIgnoringCase(Combo1->itemData(index, nameRole).toByteArray().toStdString(), what))
            return index;
    }
    return -1;
}

void fr_edit::chooseSetting(int index) {
    // A position that edits have left beyond the text's end means that end.
    const TextPosition place{Combo1->itemData(index).toLongLong()};
    txt_edit->setSelStart(caretAfter(place));
    scrollCaretLineToTop();
    const TextRange setting = rangeAt(place, Combo1->itemData(index, nameRole).toByteArray().size());
    txt_edit->scrollSideways(setting.start, setting.start + setting.length);
}

void fr_edit::showFound(TextPosition position, std::string_view text) {
    txt_edit->endComposition();
    const std::optional<std::string_view> ascii = txt_edit->asciiText();
    const std::string decoded = ascii ? std::string() : txt_edit->text();
    const auto start = nearestOccurrence(ascii.value_or(decoded), text, position.value - 1);
    if (!start)
        return;
    const CaretPosition end = *start + text.size();
    txt_edit->setSelStart(*start);
    txt_edit->setSelLength(end - *start);
    txt_edit->scrollIntoView(*start, end);
    // Not at an edge of the view, where a line may be cut and what leads to the place is not seen.
    constexpr std::int32_t linesAbove = 4;
    ScrollLines(*txt_edit, 0, GetCurrentLine(*txt_edit) - linesAbove - GetFirstVisibleLine(*txt_edit));
    txt_edit->scrollSideways(*start, end);
}

void fr_edit::scrollCaretLineToTop() {
    ScrollLines(*txt_edit, 0, GetCurrentLine(*txt_edit) - GetFirstVisibleLine(*txt_edit));
}

} // namespace blockhouse
