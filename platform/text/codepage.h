// The documents' code page, Windows-1252: every byte is one character and back. The five bytes it leaves
// unassigned (0x81 0x8D 0x8F 0x90 0x9D) stand for the control characters of the same number.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace blockhouse::codepage {

[[nodiscard]] char32_t codePointOf(char byte);
// Empty for a character that the code page lacks.
[[nodiscard]] std::optional<char> byteOf(char32_t codePoint);

[[nodiscard]] bool isAscii(std::string_view bytes);

[[nodiscard]] std::string toUtf8(std::string_view bytes);
// The length of toUtf8().
[[nodiscard]] std::size_t utf8Length(std::string_view bytes);

struct Encoded {
    std::string bytes;
    bool lossy = false; // some character was not in the code page and became "?"
};

// Malformed UTF-8 counts as characters that the code page lacks: one "?" for each unusable byte or broken sequence.
[[nodiscard]] Encoded fromUtf8(std::string_view utf8);

// The code page's own lower case: "É" and "é" are the same letter.
[[nodiscard]] char lowered(char byte);
[[nodiscard]] std::string lowered(std::string_view bytes);

// Both sides lowered.
[[nodiscard]] bool equalIgnoringCase(std::string_view left, std::string_view right);
// Byte by byte after lowering: the order of sorted lists.
[[nodiscard]] bool lessIgnoringCase(std::string_view left, std::string_view right);

} // namespace blockhouse::codepage
