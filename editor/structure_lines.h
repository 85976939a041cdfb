// The lines of a text that tell its block structure; see block_structure.h.
#pragma once

#include "platform/text/units.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace blockhouse {

// Neither blank nor a comment only.
struct StructureLine {
    enum class Kind { Header, Keyword, End, Other };

    Kind kind;
    int indent;     // in columns
    TextRange word; // the first one of the line
};

[[nodiscard]] std::vector<StructureLine> structureLines(std::string_view text);

// Offsets of lines near a place.
struct HeadersAround {
    std::optional<std::size_t> before; // of the last header at or before the place's line
    std::optional<std::size_t> behind; // of the first one after it
    std::size_t firstLine;             // of the first whole line
    std::size_t lastLine;              // of the last line, which may not be whole
};

// `isStart` says that the text begins at the start of a line.
[[nodiscard]] HeadersAround headersAround(std::string_view text, std::size_t place, bool isStart);

} // namespace blockhouse
