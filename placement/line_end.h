// What ends a line of an AI data file.
#pragma once

#include <string_view>

namespace blockhouse {

// CR, whether or not a LF follows it; LF only in a text that holds no CR at all.
[[nodiscard]] inline char lineEndOf(std::string_view text) {
    return text.find('\r') == std::string_view::npos ? '\n' : '\r';
}

} // namespace blockhouse
