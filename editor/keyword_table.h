// What a freshly opened document is coloured by: the block keywords and the two colours.
#pragma once

#include "platform/text/Colour.h"

#include <string>
#include <vector>

namespace blockhouse {

inline constexpr Colour KeywordColor = rgb(0, 0, 128);         // text of every keyword
inline constexpr Colour CommentHighlight = rgb(255, 255, 192); // background of every comment
inline constexpr char CommentDelimiter = ';';

// The block keywords, spelled as they are matched: letter for letter, case included.
[[nodiscard]] std::vector<std::string> KeywordList();

} // namespace blockhouse
