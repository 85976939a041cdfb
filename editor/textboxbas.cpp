#include "editor/textboxbas.h"

#include "editor/color_table.h"
#include "editor/comment_pass.h"
#include "editor/keyword_scan.h"
#include "platform/richtext/RichTextBox.h"
#include "platform/widgets/window_lock.h"
#include "platform/widgets/yield.h"

#include <QPointer>

#include <algorithm>
#include <optional>

namespace blockhouse {
namespace {

std::vector<Colour> colorTable{0};

// Locking no window at all takes no lock.
QWidget* toLock(bool noLock, QWidget* form) {
    return noLock ? nullptr : form;
}

// Index of the colour in ColorTable(); 0 counts as not present.
int colourIndex(Colour colour) {
    const auto found = std::find(colorTable.begin(), colorTable.end(), colour);
    return found == colorTable.end() ? 0 : static_cast<int>(found - colorTable.begin());
}

// The control lists a colour in its source only once some character has had it.
std::optional<CaretPosition> colourOneDelimiter(RichTextBox& box, Colour colour, std::string_view delimiter) {
    const CaretPosition position = box.find(delimiter, 0);
    if (position < 0)
        return std::nullopt;
    box.setSelStart(position);
    box.setSelLength(1);
    box.setSelColor(colour);
    return position;
}

void takeColourBack(RichTextBox& box, Colour colour, std::string_view delimiter, CaretPosition start) {
    for (CaretPosition at = box.find(delimiter, start); at >= 0; at = box.find(delimiter, at + 1)) {
        const bool wasColoured = box.selColor() == colour;
        box.setSelColor(defaultTextColour);
        if (wasColoured)
            return;
    }
}

} // namespace

void ColorKeywords(QWidget* Form, RichTextBox& Box, Colour Color, const std::vector<std::string>& Words, bool NoLock) {
    constexpr std::size_t slice = 1 << 18;
    const WindowUpdateLock lock(toLock(NoLock, Form));
    const QPointer<RichTextBox> box(&Box);
    const CaretPosition selStart = Box.selStart();
    const std::int32_t firstVisible = GetFirstVisibleLine(Box);

    const KeywordScan scan(Words);
    std::optional<std::string> decoded;
    QObject context;
    QObject::connect(&Box, &RichTextBox::changed, &context, [&decoded] { decoded.reset(); });
    // Anything may have been typed since the last slice.
    const auto currentText = [&]() -> std::string_view {
        if (const auto ascii = Box.asciiText())
            return *ascii;
        if (!decoded)
            decoded = Box.text();
        return *decoded;
    };
    std::vector<TextRange> found;
    for (std::size_t at = 0; at < currentText().size(); at += slice) {
        const std::string_view text = currentText();
        found.clear();
        scan.scan(text, at, std::min(at + slice, text.size()), found);
        Box.setTextColor(found, Color);
        yield();
        if (!box)
            return;
    }

    Box.setSelStart(selStart);
    ScrollToLine(Form, Box, firstVisible, true);
}

void HighlightFromChar(QWidget* Form, RichTextBox& Box, Colour Color, char Delimiter, bool NoLock) {
    const std::string_view delimiter(&Delimiter, 1);
    if (!Box.contains(Delimiter))
        return;
    const std::int32_t firstVisible = GetFirstVisibleLine(Box);
    const WindowUpdateLock lock(toLock(NoLock, Form));
    ReadColorTable(Box);
    std::optional<CaretPosition> coloured;
    if (colourIndex(Color) == 0) {
        coloured = colourOneDelimiter(Box, Color, delimiter);
        if (!coloured)
            return;
        ReadColorTable(Box);
    }
    const Hourglass hourglass;
    const int index = colourIndex(Color);
    Box.editRtfLines([&](std::string_view lines) { return highlightFromDelimiter(lines, Delimiter, index); });
    if (coloured)
        takeColourBack(Box, Color, delimiter, *coloured);
    Box.setSelStart(0);
    ScrollToLine(Form, Box, firstVisible, true);
}

void ReadColorTable(const RichTextBox& Box) {
    colorTable = readColorTable(Box.rtfHeader());
}

const std::vector<Colour>& ColorTable() {
    return colorTable;
}

void ScrollToLine(QWidget* Form, RichTextBox& Box, std::int32_t Line, bool NoLock) {
    using Step = RichTextBox::ScrollStep;
    const WindowUpdateLock lock(toLock(NoLock, Form));
    const auto lineCount = static_cast<std::int32_t>(Box.lineCount());
    const auto scrolled = [&](Step step) {
        Box.scroll(step);
        return GetFirstVisibleLine(Box);
    };
    std::int32_t first = GetFirstVisibleLine(Box);
    std::int32_t previous = 0;
    if (Line < first) {
        do {
            first = scrolled(Step::PageUp);
        } while (first >= Line && first != 0 && first != lineCount);
    } else {
        while (first <= Line) {
            first = scrolled(Step::PageDown);
            if (first == 0 || first == lineCount || first == previous)
                break;
            previous = first;
        }
    }
    while (first != Line) {
        first = scrolled(Line > first ? Step::LineDown : Step::LineUp);
        if (first == 0 || first == lineCount || first == previous)
            break;
        previous = first;
    }
}

std::int32_t GetCurrentLine(const RichTextBox& Box) {
    return static_cast<std::int32_t>(Box.currentLine());
}

std::int32_t GetFirstVisibleLine(const RichTextBox& Box) {
    return static_cast<std::int32_t>(Box.firstVisibleLine());
}

void ScrollLines(RichTextBox& Box, std::int32_t Chars, std::int32_t Lines) {
    Box.scrollLines(Chars, Lines);
}

} // namespace blockhouse
