// The scan for block headers, held against its slow second version; also the keyword scan, cut into windows.
#include "editor/keyword_scan.h"
#include "fuzz/target.h"
#include "tests/editor/slow_block_scan.h"

using namespace blockhouse;
using fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes input(data, size);
    const auto startout = input.below(2000);
    const std::size_t cut = input.below(2000);
    const std::string text = input.rest();
    for (const HeaderKind kind : headerKinds) {
        const Entries blocks = blockPass(text, kind);
        require(blocks == listedOneByOne(text, kind), "the block list differs");
        if (!blocks.empty()) {
            const std::string& name = blocks[startout % blocks.size()].name;
            require(Findin(blocks, name) == firstEqual(blocks, name), "a name is found elsewhere");
        }
        if (startout > 0)
            require(blockNameBefore(text, kind, {static_cast<std::ptrdiff_t>(startout)}) ==
                        nameLookedUpBackwards(text, kind, startout),
                    "the enclosing block has another name");
    }

    static const KeywordScan scan({"Object", "End", "a b", "aa", "a=a", "Weapon"});
    std::vector<TextRange> whole;
    std::vector<TextRange> pieces;
    const std::size_t middle = std::min(cut, text.size());
    scan.scan(text, 0, text.size(), whole);
    scan.scan(text, 0, middle, pieces);
    scan.scan(text, middle, text.size(), pieces);
    require(whole == pieces, "two windows give other keywords than one");
    return 0;
}
