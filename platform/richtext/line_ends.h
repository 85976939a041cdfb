// The line ends of a text: CR LF, a lone CR or a lone LF.
#pragma once

#include <string>
#include <string_view>

namespace blockhouse {

// The kind that most of the first lines end with; CR LF where there is none.
[[nodiscard]] std::string_view prevailingLineEnd(std::string_view text);

// The text with every line end replaced.
[[nodiscard]] std::string withLineEnds(std::string_view text, std::string_view lineEnd);

} // namespace blockhouse
