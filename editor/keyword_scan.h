// Finds every whole-word occurrence of any of a set of words in one walk over the text.
#pragma once

#include "platform/text/units.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace blockhouse {

// An occurrence is exact, case included, and no word character (A-Z a-z 0-9 _) stands directly before or after it.
// Occurrences of one word do not overlap: they are taken from left to right. Those of different words may.
class KeywordScan {
public:
    // Words are matched untrimmed. A word of nothing but blanks is ignored, a repeated one counts once.
    explicit KeywordScan(const std::vector<std::string>& words);

    // Appends the occurrences that start in [begin, end) of `text`, sorted by start, then by length. The window only
    // says which occurrences are wanted: it may cut through one, and scanning neighbouring windows gives exactly what
    // scanning them as one gives. Requires begin <= end <= text.size().
    //
    // Linear in the window for words of word characters. A word that holds any other character costs a search of its
    // own, and if it can overlap itself also a look back over the occurrences that hang together before the window.
    void scan(std::string_view text, std::size_t begin, std::size_t end, std::vector<TextRange>& found) const;

private:
    void scanWords(std::string_view text, std::size_t begin, std::size_t end, std::vector<TextRange>& found) const;
    void appendWordAt(std::string_view text, std::size_t start, std::vector<TextRange>& found) const;

    std::vector<std::string> words_;   // of word characters only, sorted
    std::vector<std::string> phrases_; // with some other character among them
    // words_[firstWith_[c]] up to words_[firstWith_[c + 1]] begin with the character c.
    std::array<std::size_t, 257> firstWith_{};
    std::array<std::uint8_t, 256> traits_{};
    // By a word's first character: which second ones may follow it, as bits numbered by their code modulo 64.
    std::array<std::uint64_t, 256> seconds_{};
};

} // namespace blockhouse
