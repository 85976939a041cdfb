// A text as rules look at it, wherever it is kept.
#pragma once

#include <cstddef>
#include <string>

namespace blockhouse {

// One character per byte. Positions count from 0.
class TextView {
public:
    virtual ~TextView() = default;

    [[nodiscard]] virtual std::ptrdiff_t length() const = 0;
    // The characters of [start, start + length), which lies within the text.
    [[nodiscard]] virtual std::string textAt(std::ptrdiff_t start, std::ptrdiff_t length) const = 0;
};

} // namespace blockhouse
