// Finds the places that the block list and the settings list jump to.
#pragma once

#include "editor/HeaderKind.h"
#include "platform/text/units.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace blockhouse {

// An entry of the settings list.
struct SettingEntry {
    std::string name;      // as in the jump list
    TextPosition itemData; // the first character of the setting's occurrence

    bool operator==(const SettingEntry&) const = default;
};

// Where the block's header line begins: the position of the line-break character before it, so that a caret put there
// stands at the line's start. The first line of the file text that holds nothing but the header keyword of the kind
// and `name`, in any case, and that has a CR or LF on either side counts. Nothing for None.
[[nodiscard]] TextPosition headerPosition(std::string_view fileText, HeaderKind kind, std::string_view name);

// Where the settings of the block whose header line the caret is put to are looked for from.
[[nodiscard]] constexpr TextPosition settingsStart(CaretPosition header) {
    return {header.value + 5};
}

// The last "end" before the next header of the kind: the header keyword directly after a CR or LF that stands at or
// after `start`. Where no such header follows, the last "end" of the whole text. For None and for skirmish build lists,
// which list no settings, the last "end" that lies wholly within the first `start` characters. Nothing if there is
// none. `start` is at least 1.
[[nodiscard]] TextPosition blockEnd(std::string_view text, HeaderKind kind, TextPosition start);

// The settings of a block: those jump-list entries, in the order of the list, that occur from `start` on and before
// the block's end. Of names equal ignoring case all are listed, but only the first has the place, the others have
// nothing. An empty entry occurs at `start` itself. One walk over the block for all of them. `text` is the text as it
// stands in the text box, `start` is at least 1.
[[nodiscard]] std::vector<SettingEntry> settingsOf(std::string_view text, HeaderKind kind, TextPosition start,
                                                   std::span<const std::string> jumps);

} // namespace blockhouse
