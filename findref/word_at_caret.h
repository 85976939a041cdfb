// The word a caret stands in, as the reference search takes it from an editor's text.
#pragma once

#include "platform/text/units.h"

#include <optional>
#include <string_view>

namespace blockhouse {

// The text between the nearest separators around the character left of the caret. A blank, a CR and a LF separate, a
// tab does not. Empty where the caret stands right after a separator, where no separator stands before the word, and
// where not every one of the three occurs somewhere behind it. Nothing where the caret stands at the start of the text.
[[nodiscard]] std::optional<std::string_view> wordAtCaret(std::string_view text, CaretPosition caret);

} // namespace blockhouse
