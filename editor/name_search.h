// Finds many names in one walk over the text, which costs about the same however many they are.
#pragma once

#include "platform/text/units.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace blockhouse {

// For each name the first occurrence, in any case and also inside a longer word, that starts at or after `start` and
// before `end`; it may reach beyond `end`. Nothing where there is none. The empty name occurs everywhere. The walk ends
// with the last name found. `start` is at least 1.
[[nodiscard]] std::vector<TextPosition> firstOccurrences(std::string_view text, std::span<const std::string> names,
                                                         TextPosition start, TextPosition end);

} // namespace blockhouse
