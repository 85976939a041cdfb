// The line ends of a text: CR LF, a lone CR or a lone LF.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace blockhouse {

// The kind that most of the first lines end with; CR LF where there is none.
[[nodiscard]] std::string_view prevailingLineEnd(std::string_view text);

// The text with every line end replaced.
[[nodiscard]] std::string withLineEnds(std::string_view text, std::string_view lineEnd);

// In bytes, line ends apart. Looks at little of a text of short lines.
[[nodiscard]] bool hasLineLongerThan(std::string_view text, std::size_t most);

} // namespace blockhouse
