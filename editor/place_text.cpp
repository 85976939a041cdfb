#include "editor/place_text.h"

#include "editor/keyword_table.h"

namespace blockhouse {
namespace {

std::string_view openingLine(std::string_view region, TextRange opener) {
    std::string_view line = region.substr(static_cast<std::size_t>(opener.start));
    line = line.substr(0, line.find_first_of("\r\n"));
    line = line.substr(0, line.find(CommentDelimiter));
    return line.substr(0, line.find_last_not_of(" \t") + 1);
}

} // namespace

std::string placeText(LineIndex line, std::ptrdiff_t column, const BlockStructure& structure, std::string_view region,
                      std::ptrdiff_t place) {
    std::string text = "Ln " + std::to_string(line.value + 1) + ", Col " + std::to_string(column + 1);
    std::string_view before = "  ";
    for (const std::size_t block : blocksAround(structure, region, place)) {
        text.append(before).append(openingLine(region, structure.blocks[block].opener));
        before = " > ";
    }
    return text;
}

} // namespace blockhouse
