// What a save writes: the text up to its last block's end.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace blockhouse {

// The text up to and including its last "end", in any case and also inside a longer word, and the one character after
// it, if there is one. The whole text if it holds no "end". A part of `text`: nothing is copied.
[[nodiscard]] std::string_view textToWrite(std::string_view text);

struct LeftOut {
    std::size_t characters; // blanks and line ends before the first and after the last one are not counted
    std::size_t firstLine;  // of the text, counted from 1

    bool operator==(const LeftOut&) const = default;
};

// What textToWrite() leaves out; nothing if that is no more than blanks and line ends.
[[nodiscard]] std::optional<LeftOut> leftOutOf(std::string_view text);

} // namespace blockhouse
