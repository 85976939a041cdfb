// The block-wise search, held against one that reads each block alone; the bytes come in pieces of some whole blocks.
#include "findref/BlockSearch.h"
#include "fuzz/target.h"
#include "tests/findref/slow_search.h"

using namespace blockhouse;
using fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes input(data, size);
    const std::size_t piece = (1 + input.below(3)) * BlockSearch::blockSize;
    const std::size_t stretch = 1 + input.below(8);
    const std::string what = input.text();
    std::string bytes;
    // Inputs are shorter than a few blocks: the same stretch over and over makes them cross boundaries.
    const std::string once = input.rest();
    for (std::size_t copies = 0; copies < stretch * 8; ++copies)
        bytes += once;

    const BlockSearch search(what);
    std::string hits;
    for (std::size_t at = 0; at < bytes.size(); at += piece)
        search.search(std::string_view(bytes).substr(at, piece), at, [&](TextPosition position) {
            hits += "x :" + std::to_string(position.value) + "\n";
            return true;
        });
    require(hits == (what.empty() ? "" : hitsBlockByBlock("x", bytes, what)), "other hits are found");

    const FoldedSearch folded(what);
    const std::size_t from = what.size() % (once.size() + 1);
    const std::string lowered = codepage::lowered(once);
    const std::string wanted = codepage::lowered(what);
    require(folded.find(once, from) == (what.empty() ? std::string::npos : lowered.find(wanted, from)),
            "the first occurrence is elsewhere");
    require(folded.findLast(once) == (what.empty() ? std::string::npos : lowered.rfind(wanted)),
            "the last occurrence is elsewhere");
    return 0;
}
