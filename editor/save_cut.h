// What a save writes: the text up to its last block's end.
#pragma once

#include <string_view>

namespace blockhouse {

// The text up to and including its last "end", in any case and also inside a longer word, and the one character after
// it, if there is one. The whole text if it holds no "end". A part of `text`: nothing is copied.
[[nodiscard]] std::string_view textToWrite(std::string_view text);

} // namespace blockhouse
