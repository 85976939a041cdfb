// Characters of the text to bytes of the text engine's document and back.
#pragma once

#include "platform/richtext/TextEngine.h"
#include "platform/text/units.h"

#include <span>
#include <vector>

namespace blockhouse {

// As long as every character is one byte there is nothing to count. Otherwise the text engine counts the characters of
// every line, which takes time and memory when it begins. It miscounts them after an edit that takes a CR LF apart or
// puts one together. So every edit is told before it happens, an insertion also after it has happened, and settle()
// comes before the next question.
class CharacterIndex {
public:
    explicit CharacterIndex(TextEngine engine);

    // In characters.
    [[nodiscard]] std::ptrdiff_t length() const;
    [[nodiscard]] bool everyCharacterIsOneByte() const;
    // A place outside the text means its nearer end.
    [[nodiscard]] BytePosition byteOf(CaretPosition character) const;
    [[nodiscard]] CaretPosition characterOf(BytePosition byte) const;
    // The ranges are ordered by their start and may overlap; the spans are apart, and none is empty.
    [[nodiscard]] std::vector<ByteSpan> spansOf(std::span<const TextRange> ranges) const;

    // The document is about to be replaced, or has been; nothing is asked in between.
    void textGoes();
    void textReplaced(bool everyCharacterIsAscii);

    void inserting(BytePosition at);
    void inserted(ByteSpan span);
    void deleting(ByteSpan span);
    void settle();

private:
    [[nodiscard]] BytePosition byteByLines(CaretPosition character) const;

    void count();
    void stopCounting();

    TextEngine engine_;
    bool counts_ = false; // else every character is one byte
    bool stale_ = false;
};

} // namespace blockhouse
