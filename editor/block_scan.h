// Finds the headers of a file's blocks: a block keyword, a blank, and the block's name up to the end of the line.
#pragma once

#include "platform/text/units.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace blockhouse {

// Kinds of block are numbered from 1: object, weapon, special power, FX list, skirmish build list.
inline constexpr int blockKinds = 5;

// The header keyword of kind k, matched in any case, is headerKeywords[k - 1]; the blank is part of the match.
inline constexpr std::array<std::string_view, blockKinds> headerKeywords{"object ", "weapon ", "specialpower ",
                                                                         "fxlist ", "skirmishbuildlist "};

// The keyword that blockNameBefore looks for, in the same order. That of special powers is another one.
inline constexpr std::array<std::string_view, blockKinds> enclosingKeywords{"object ", "weapon ", "superweapon ",
                                                                            "fxlist ", "skirmishbuildlist "};

// An entry of the block list.
struct BlockEntry {
    std::string name; // case kept
    std::int32_t itemData = 0;

    bool operator==(const BlockEntry&) const = default;
};

// The blocks of the kind `pass` (1 to blockKinds; nothing for any other number), sorted by their lowered names; equal
// ones keep the order of the file. Item data is `pass` for the first of names that differ only in case, 0 for the rest.
//
// A header counts if its name holds neither a blank nor "=" and is longer than the kind's minimum, and, for kinds 1
// and 5, if a blank, tab, CR, LF or the start of the text stands before the keyword. The name runs up to the next CR;
// where none follows in the whole text, up to the next LF or the end of the text.
//
// Linear but for the sort; the text is not copied.
[[nodiscard]] std::vector<BlockEntry> blockPass(std::string_view fileText, int pass);

// 0-based index of the first entry equal to `what` ignoring case, or -1. The entries must be in blockPass's order.
[[nodiscard]] int Findin(const std::vector<BlockEntry>& blocks, std::string_view what);

// The name of the block that encloses a place in the file: the rest of the line after the last LF that the kind's
// enclosing keyword follows directly, both wholly within the first `startout` + 30 characters. Nothing if there is no
// such place, if `startout` is less than 1, or if `blockKind` is not 1 to blockKinds. Lines end as in blockPass.
[[nodiscard]] std::optional<std::string> blockNameBefore(std::string_view fileText, int blockKind,
                                                         TextPosition startout);

} // namespace blockhouse
