// The name that a caret stands in or at: what is looked for with it.
#pragma once

#include "platform/text/units.h"

#include <optional>
#include <string_view>

namespace blockhouse {

// The stretch around the caret that is free of blanks, tabs, "=", ";", quotes and line ends. Nothing where that is
// empty.
[[nodiscard]] std::optional<TextRange> nameAtCaret(std::string_view text, CaretPosition caret);

} // namespace blockhouse
