// The scans of the AI data file, held against their slow second version; and a drop changes one stretch of the text.
#include "fuzz/target.h"
#include "placement/location_line.h"
#include "tests/placement/slow_build_list.h"

using namespace blockhouse;
using fuzz::require;

namespace {

void requireLocalDrop(const std::string& before, TextPosition position, CanvasPoint point) {
    std::string after = before;
    const auto line = replaceLocation(after, position, point);
    if (!line) {
        require(after == before, "a drop that was refused has changed the text");
        return;
    }
    const auto start = static_cast<std::size_t>(position.value) - 1;
    const char lineEnd = before.find('\r') == std::string::npos ? '\n' : '\r';
    const std::size_t end = std::min(before.find(lineEnd, start), before.size());
    require(after == before.substr(0, start) + line->after + before.substr(end),
            "a drop has changed more than its line");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes input(data, size);
    const CanvasPoint point{{static_cast<float>(input.below(65536)) / 50 - 100},
                            {static_cast<float>(input.below(65536)) / 50 - 100}};
    const std::string text = input.rest();
    const SlowScan slow(text);
    const std::vector<SideEntry> sides = sidesOf(text);
    require(shown(sides) == slow.sides(), "there are other sides");
    for (std::size_t side = 0; side < sides.size(); ++side) {
        const SearchRange range = searchRangeOf(sides, side, text);
        const long next = side + 1 < sides.size() ? sides[side + 1].position.value : static_cast<long>(text.size());
        const BuildListScan scan = structuresOf(text, range.startSearch, range.endSearch);
        require(shown(scan) == slow.structures(sides[side].position.value, next), "there are other structures");
        for (const ScannedStructure& structure : scan.structures)
            requireLocalDrop(text, structure.entry.position, point);
    }
    return 0;
}
