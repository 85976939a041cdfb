#include "findref/BlockSearch.h"

namespace blockhouse {

bool BlockSearch::search(std::string_view bytes, std::size_t offset, const OnHit& onHit) const {
    if (length() > blockSize)
        return true;
    std::size_t at = what_.find(bytes);
    while (at != FoldedSearch::npos) {
        const std::size_t nextBlock = at / blockSize * blockSize + blockSize;
        const bool crosses = at + length() > nextBlock;
        if (!crosses && !onHit(positionOf(offset + at)))
            return false;
        // What begins further on in the same block crosses its end as well.
        at = what_.find(bytes, crosses ? nextBlock : at + 1);
    }
    return true;
}

} // namespace blockhouse
