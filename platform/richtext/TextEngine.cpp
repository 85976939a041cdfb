#include "platform/richtext/TextEngine.h"

#include <Qsci/qsciscintillabase.h>

#include <algorithm>
#include <array>

namespace blockhouse {

using Sci = QsciScintillaBase;

// The widget's own calls pass everything through `long`, which is too short for a pointer on some systems.
TextEngine::TextEngine(const QsciScintillaBase& widget)
    : widget_(&widget),
      function_(reinterpret_cast<Function>(widget.SendScintillaPtrResult(Sci::SCI_GETDIRECTFUNCTION))),
      engine_(reinterpret_cast<std::intptr_t>(widget.SendScintillaPtrResult(Sci::SCI_GETDIRECTPOINTER))) {}

std::ptrdiff_t TextEngine::ask(unsigned message, std::ptrdiff_t first, std::ptrdiff_t second) const {
    return function_(engine_, message, static_cast<std::uintptr_t>(first), second);
}

std::ptrdiff_t TextEngine::tell(unsigned message, std::ptrdiff_t first, std::ptrdiff_t second) {
    return function_(engine_, message, static_cast<std::uintptr_t>(first), second);
}

std::ptrdiff_t TextEngine::tell(unsigned message, std::string_view bytes) {
    return function_(engine_, message, bytes.size(), reinterpret_cast<std::intptr_t>(bytes.data()));
}

void TextEngine::setFont(std::ptrdiff_t style, const char* family) {
    tell(Sci::SCI_STYLESETFONT, style, reinterpret_cast<std::intptr_t>(family));
}

void TextEngine::setRepresentation(const char* character, const char* shown) {
    tell(Sci::SCI_SETREPRESENTATION, reinterpret_cast<std::intptr_t>(character),
         reinterpret_cast<std::intptr_t>(shown));
}

BytePosition TextEngine::length() const {
    return ask(Sci::SCI_GETLENGTH);
}

std::string_view TextEngine::text(ByteSpan span) const {
    if (span.length() <= 0)
        return {};
    const std::intptr_t bytes = ask(Sci::SCI_GETRANGEPOINTER, span.first, span.length());
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the engine answers every message with an integer.
    return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(span.length())};
}

bool TextEngine::isInsideLineBreak(BytePosition at) const {
    return at > 0 && ask(Sci::SCI_GETCHARAT, at) == '\n' && ask(Sci::SCI_GETCHARAT, at - 1) == '\r';
}

ByteSpan TextEngine::selection() const {
    return {ask(Sci::SCI_GETSELECTIONSTART), ask(Sci::SCI_GETSELECTIONEND)};
}

BytePosition TextEngine::caret() const {
    return ask(Sci::SCI_GETCURRENTPOS);
}

void TextEngine::putCaret(BytePosition at) {
    tell(Sci::SCI_SETEMPTYSELECTION, at);
}

void TextEngine::readStyles(BytePosition start, std::span<unsigned char> styles) const {
    constexpr std::size_t most = 4096;
    std::array<char, 2 * most + 2> pairs; // character and style in turn, and two NULs at the end
    for (std::size_t done = 0; done < styles.size();) {
        const std::size_t size = std::min(styles.size() - done, most);
        const auto first = static_cast<long>(start + static_cast<BytePosition>(done));
        widget_->SendScintilla(Sci::SCI_GETSTYLEDTEXT, first, first + static_cast<long>(size), pairs.data());
        for (std::size_t i = 0; i < size; ++i)
            styles[done + i] = static_cast<unsigned char>(pairs[2 * i + 1]);
        done += size;
    }
}

void TextEngine::writeStyles(BytePosition start, std::span<const unsigned char> styles) {
    if (styles.empty())
        return;
    tell(Sci::SCI_STARTSTYLING, start);
    tell(Sci::SCI_SETSTYLINGEX, {reinterpret_cast<const char*>(styles.data()), styles.size()});
}

void TextEngine::everythingIsStyled() {
    if (const BytePosition end = length(); ask(Sci::SCI_GETENDSTYLED) != end)
        tell(Sci::SCI_STARTSTYLING, end);
}

void TextEngine::fillStyle(ByteSpan span, int style) {
    tell(Sci::SCI_STARTSTYLING, span.first);
    tell(Sci::SCI_SETSTYLING, span.length(), style);
}

} // namespace blockhouse
