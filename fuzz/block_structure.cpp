// The structure of any text hangs together: blocks lie inside one another, and regions do not depend on where one asks.
#include "editor/block_structure.h"

#include "fuzz/target.h"

#include <algorithm>
#include <string>

using namespace blockhouse;
using fuzz::require;

namespace {

class Text : public TextView {
public:
    explicit Text(const std::string& bytes) : bytes_(bytes) {}

    [[nodiscard]] std::ptrdiff_t length() const override { return static_cast<std::ptrdiff_t>(bytes_.size()); }

    [[nodiscard]] std::string textAt(std::ptrdiff_t start, std::ptrdiff_t length) const override {
        return bytes_.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(length));
    }

private:
    const std::string& bytes_;
};

void requireNested(const BlockStructure& structure, std::string_view region) {
    std::ptrdiff_t before = -1;
    for (std::size_t index = 0; index < structure.blocks.size(); ++index) {
        const StructureBlock& block = structure.blocks[index];
        require(block.opener.start > before && block.opener.length > 0, "openers are not in order");
        before = block.opener.start;
        require(!block.end || block.end->start > block.opener.start, "a block ends before it begins");
        require(!block.in || *block.in < index, "a block is inside a later one");
        if (block.in && structure.blocks[*block.in].end)
            require(block.opener.start < structure.blocks[*block.in].end->start &&
                        (!block.end || block.end->start < structure.blocks[*block.in].end->start),
                    "a block reaches out of the one around it");
        const auto around = blocksAround(structure, region, block.opener.start);
        require(!around.empty() && around.back() == index, "a block is not around its own opener");
    }
    for (const StructureFault& fault : structure.faults)
        require(fault.word.start >= 0 &&
                    fault.word.start + fault.word.length <= static_cast<std::ptrdiff_t>(region.size()),
                "a fault lies outside the text");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto end = static_cast<std::ptrdiff_t>(text.size());
    for (std::ptrdiff_t at = 0; at < end;) {
        const BlockRegion region = blockRegion(Text(text), at);
        require(region.isWhole && region.range.length > 0, "a region is empty");
        for (const std::ptrdiff_t place : {at + region.range.length / 2, at + region.range.length - 1})
            require(blockRegion(Text(text), place).range == region.range, "a region depends on the place asked about");
        const std::string part =
            text.substr(static_cast<std::size_t>(region.range.start), static_cast<std::size_t>(region.range.length));
        const BlockStructure structure = blockStructure(part);
        requireNested(structure, part);
        const std::string more = part + "\n\n  ; End\n";
        const BlockStructure same = blockStructure(more);
        require(same.faults == structure.faults && same.blocks.size() == structure.blocks.size(),
                "blank lines and comments change the structure");
        at += region.range.length;
    }
    return 0;
}
