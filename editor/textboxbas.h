// Colouring and positioning of a rich-text box's content. Positions and lines count from 0. `Form` is the window
// that owns the box; a pass called with NoLock false keeps it from repainting while it works.
#pragma once

#include "editor/keyword_scan.h"
#include "platform/text/Colour.h"
#include "platform/text/units.h"

#include <QObject>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class QWidget;

namespace blockhouse {

class RichTextBox;

// ColorKeywords() in pieces, so that events can be served between them. The box must outlive the pass; its text may
// change meanwhile.
class KeywordPass {
public:
    KeywordPass(RichTextBox& Box, Colour Color, const std::vector<std::string>& Words);

    // Colours the next stretch of the text. False when all of it is done.
    [[nodiscard]] bool colourNext();
    // Empties the selection and puts its start and the first visible line back where they were at the beginning.
    void restoreView(QWidget* Form);

private:
    [[nodiscard]] std::string_view currentText();

    RichTextBox& box_;
    const Colour colour_;
    const KeywordScan scan_;
    const CaretPosition selStart_;
    const std::int32_t firstVisible_;
    std::size_t at_ = 0;
    std::optional<std::string> decoded_; // the text of the box, if it is not at hand in one piece
    QObject textIsOld_;                  // context of the connection that drops decoded_
    std::vector<TextRange> found_;
};

// Gives every whole-word, case-sensitive occurrence of each of Words the text colour Color. The selection is emptied,
// its start and the first visible line stay. Serves events; when the window is closed meanwhile, the rest keeps its
// colours.
void ColorKeywords(QWidget* Form, RichTextBox& Box, Colour Color, const std::vector<std::string>& Words, bool NoLock);

// Gives the tail of every line, from its first Delimiter outside double quotes on, the background Color. Leaves the
// caret at the start of the text, unless the text holds no Delimiter: then nothing at all is touched.
void HighlightFromChar(QWidget* Form, RichTextBox& Box, Colour Color, char Delimiter, bool NoLock);

// Rebuilds ColorTable() from the box's Rich Text Format source.
void ReadColorTable(const RichTextBox& Box);
// Item 0 is 0; item k is the colour with index k. Kept until the next ReadColorTable().
[[nodiscard]] const std::vector<Colour>& ColorTable();

// Scrolls until Line is the first visible line, or as near as the content allows.
void ScrollToLine(QWidget* Form, RichTextBox& Box, std::int32_t Line, bool NoLock);
[[nodiscard]] std::int32_t GetCurrentLine(const RichTextBox& Box);
[[nodiscard]] std::int32_t GetFirstVisibleLine(const RichTextBox& Box);
void ScrollLines(RichTextBox& Box, std::int32_t Chars, std::int32_t Lines);

} // namespace blockhouse
