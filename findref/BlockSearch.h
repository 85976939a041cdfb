// Looks for a text in the blocks of a file, each by itself: what crosses the boundary between two is not found.
#pragma once

#include "platform/text/FoldedSearch.h"
#include "platform/text/units.h"

#include <functional>
#include <string_view>

namespace blockhouse {

class BlockSearch {
public:
    static constexpr std::size_t blockSize = 1024;

    // Ignores case in the documents' code page. An empty text is found nowhere.
    explicit BlockSearch(std::string_view what) : what_(what) {}

    // Takes a hit; false to get no more.
    using OnHit = std::function<bool(TextPosition)>;

    // `bytes` are any number of whole blocks, only the file's last one may be shorter, and `offset` is where in the
    // file they begin. Every occurrence counts, overlapping ones included, in their order. False when stopped.
    bool search(std::string_view bytes, std::size_t offset, const OnHit& onHit) const;

    // Of the text looked for.
    [[nodiscard]] std::size_t length() const { return what_.needleSize(); }

private:
    FoldedSearch what_;
};

} // namespace blockhouse
