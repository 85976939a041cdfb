// Finds the headers of a file's blocks: a block keyword, a blank, and the block's name up to the end of the line.
#pragma once

#include "editor/HeaderKind.h"
#include "platform/text/units.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace blockhouse {

// An entry of the block list.
struct BlockEntry {
    std::string name; // case kept
    HeaderKind kind = HeaderKind::None;

    bool operator==(const BlockEntry&) const = default;
};

// The blocks of a kind (of None: nothing), sorted by their lowered names; equal ones keep the order of the file. Of
// names that differ only in case the first has the kind, the rest have None.
//
// A header counts if its name holds neither a blank nor "=" and is longer than the kind's minimum, and, for objects and
// skirmish build lists, if a blank, tab, CR, LF or the start of the text stands before the keyword. The name runs up to
// the next CR; where none follows in the whole text, up to the next LF or the end of the text.
//
// Linear but for the sort; the text is not copied.
[[nodiscard]] std::vector<BlockEntry> blockPass(std::string_view fileText, HeaderKind kind);

// 0-based index of the first entry equal to `what` ignoring case, or -1. The entries must be in blockPass's order.
[[nodiscard]] int Findin(const std::vector<BlockEntry>& blocks, std::string_view what);

// The name of the block that encloses a place in the file: the rest of the line after the last LF that the kind's
// enclosing keyword follows directly, both wholly within the first `startout` + 30 characters. Nothing if there is no
// such place, if `startout` is not found(), or if the kind is None. Lines end as in blockPass.
[[nodiscard]] std::optional<std::string> blockNameBefore(std::string_view fileText, HeaderKind kind,
                                                         TextPosition startout);

} // namespace blockhouse
