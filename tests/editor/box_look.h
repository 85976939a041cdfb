// What the characters of a rich-text box look like, one letter each.
#pragma once

#include "editor/keyword_table.h"
#include "platform/richtext/RichTextBox.h"

#include <string>

namespace blockhouse {

// k: keyword, h: highlighted, b: both, ".": neither, "?": any other colour.
inline std::string look(const RichTextBox& box) {
    std::string letters;
    for (RichTextBox::Position at = 0; at < box.textLength(); ++at) {
        const Colour text = box.textColorAt(at);
        const Colour background = box.backgroundAt(at);
        const bool keyword = text == KeywordColor;
        const bool highlighted = background == CommentHighlight;
        const bool known = (keyword || text == defaultTextColour) && (highlighted || background == defaultBackground);
        letters += !known ? '?' : keyword && highlighted ? 'b' : keyword ? 'k' : highlighted ? 'h' : '.';
    }
    return letters;
}

inline std::string numberedLines(int count) {
    std::string text;
    for (int line = 0; line < count; ++line)
        text += "Line " + std::to_string(line) + "\r\n";
    return text;
}

} // namespace blockhouse
