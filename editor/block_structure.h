// Which lines of a text open blocks and which close them: a hint, since nothing in such a file says so for certain.
//
//   opens    a header of the five kinds at the start of a line; a line that begins with a block keyword; a line that is
//            followed by a deeper indented one
//   closes   a line that holds nothing but "End", in any case
//
// Blank lines, comments and what stands behind a ";" do not count. A header closes everything before it, so a text
// falls into regions that are looked at one by one.
#pragma once

#include "editor/TextView.h"
#include "platform/text/units.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace blockhouse {

struct StructureBlock {
    TextRange opener;              // the first word of the line that opens it
    std::optional<TextRange> end;  // its "End", if it has one
    std::optional<std::size_t> in; // the index of the block around it, which comes before it
};

struct StructureFault {
    enum class Kind { NeverClosed, EndTooMany };

    Kind kind;
    TextRange word; // the opener's first word, or the "End"

    bool operator==(const StructureFault&) const = default;
};

struct BlockStructure {
    std::vector<StructureBlock> blocks; // in the order of their openers
    std::vector<StructureFault> faults; // in the order of the text; none unless the text begins with a header
};

// Of a region, whose ranges count from its start. `isWhole` says that nothing of it was left out at its end.
//
// A block is only said to be unclosed, and an "End" to be one too many, where neither taking deeper indented lines for
// blocks nor leaving them out lets all fit.
[[nodiscard]] BlockStructure blockStructure(std::string_view region, bool isWhole = true);

struct BlockRegion {
    TextRange range;
    bool isWhole; // up to the next header or the end of the text
};

// How much of a text is looked at before and behind a place.
inline constexpr std::ptrdiff_t mostOfRegion = 1 << 18;

// The region around a place: from the last header at or before its line to the next one. Where that is more than
// mostOfRegion to either side, it begins or ends there, at a line's start. Reads little more than the region.
[[nodiscard]] BlockRegion blockRegion(const TextView& text, CaretPosition place);

// The indices of the blocks around a place, outermost first: those whose lines it is on or between.
[[nodiscard]] std::vector<std::size_t> blocksAround(const BlockStructure& structure, std::string_view region,
                                                    std::ptrdiff_t place);

// The block whose first word or "End" the place is in or at the edge of.
[[nodiscard]] std::optional<std::size_t> blockAt(const BlockStructure& structure, std::ptrdiff_t place);

} // namespace blockhouse
