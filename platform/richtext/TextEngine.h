// The messages of the text engine that the rich-text box is built on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

class QsciScintillaBase;

namespace blockhouse {

// Number of bytes before a place in the engine's document, which is UTF-8.
using BytePosition = std::ptrdiff_t;

struct ByteSpan {
    BytePosition first;
    BytePosition last; // not included

    [[nodiscard]] std::ptrdiff_t length() const { return last - first; }

    bool operator==(const ByteSpan&) const = default;
};

// A handle: copies of it talk to the same engine, whose widget must outlive them. A constant one can only ask.
class TextEngine {
public:
    explicit TextEngine(const QsciScintillaBase& widget);

    // For messages that change neither the document nor what is seen of it.
    [[nodiscard]] std::ptrdiff_t ask(unsigned message, std::ptrdiff_t first = 0, std::ptrdiff_t second = 0) const;
    // For all others.
    std::ptrdiff_t tell(unsigned message, std::ptrdiff_t first = 0, std::ptrdiff_t second = 0);
    // The message's parameters are the length and the bytes.
    std::ptrdiff_t tell(unsigned message, std::string_view bytes);

    void setFont(std::ptrdiff_t style, const char* family);
    // How a character that has no look of its own is shown. Both are UTF-8.
    void setRepresentation(const char* character, const char* shown);

    [[nodiscard]] BytePosition length() const;
    // Uncopied; valid until the next change.
    [[nodiscard]] std::string_view text(ByteSpan span) const;
    // The place between a CR and its LF.
    [[nodiscard]] bool isInsideLineBreak(BytePosition at) const;

    [[nodiscard]] ByteSpan selection() const;
    [[nodiscard]] BytePosition caret() const;
    void putCaret(BytePosition at);

    // The styles of the bytes from `start` on, as many as there is room for.
    void readStyles(BytePosition start, std::span<unsigned char> styles) const;
    void writeStyles(BytePosition start, std::span<const unsigned char> styles);
    void fillStyle(ByteSpan span, int style);
    // The engine need not ask for styles: it would do so at every repaint, and look at every character in view again.
    void everythingIsStyled();

private:
    using Function = std::intptr_t (*)(std::intptr_t, unsigned, std::uintptr_t, std::intptr_t);

    const QsciScintillaBase* widget_;
    Function function_;
    std::intptr_t engine_;
};

} // namespace blockhouse
