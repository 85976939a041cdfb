#include "editor/color_table.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace blockhouse {

namespace {

constexpr std::string_view tableStart = "{\\colortbl";
// Anything longer is no colour; the bound keeps the sum of the three in range.
constexpr std::int64_t largestNumber = 0xFFFF;

// Cuts `text` at the first `separator` and returns what stood before it; `text` keeps what stands after it.
std::string_view takePiece(std::string_view& text, char separator) {
    const std::size_t at = text.find(separator);
    const std::string_view piece = text.substr(0, at);
    text.remove_prefix(at == std::string_view::npos ? text.size() : at + 1);
    return piece;
}

std::int64_t leadingNumber(std::string_view digits) {
    std::int64_t number = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9' || number > largestNumber) {
            break;
        }
        number = number * 10 + (c - '0');
    }
    return number;
}

Colour colourOfEntry(std::string_view entry) {
    if (entry.starts_with('\\')) {
        entry.remove_prefix(1);
    }

    struct Component {
        std::size_t nameLength;
        std::int64_t weight;
    };

    constexpr std::array<Component, 3> components{{{3, 1}, {5, 256}, {4, 65536}}}; // red, green, blue
    std::int64_t colour = 0;
    for (const Component& component : components) {
        std::string_view word = takePiece(entry, '\\');
        word.remove_prefix(std::min(word.size(), component.nameLength));
        colour += component.weight * leadingNumber(word);
    }
    return static_cast<Colour>(colour);
}

} // namespace

std::vector<Colour> readColorTable(std::string_view rtfSource) {
    std::vector<Colour> colours{0};
    const std::size_t start = rtfSource.find(tableStart);
    const std::size_t end = start == std::string_view::npos ? start : rtfSource.find('}', start);
    if (end == std::string_view::npos) {
        return colours;
    }
    std::string_view table = rtfSource.substr(start, end - start);
    takePiece(table, ';');
    while (table.find(';') != std::string_view::npos) {
        const std::string_view entry = takePiece(table, ';');
        if (!entry.empty()) {
            colours.push_back(colourOfEntry(entry));
        }
    }
    return colours;
}

} // namespace blockhouse
