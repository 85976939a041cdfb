#include "editor/keyword_scan.h"

#include <algorithm>

namespace blockhouse {

namespace {

constexpr std::uint8_t wordCharacter = 1;
constexpr std::uint8_t keywordInitial = 2;

constexpr bool isWordCharacter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

constexpr std::uint64_t anySecond = ~std::uint64_t{0};

constexpr std::uint64_t secondBit(char c) {
    return std::uint64_t{1} << (static_cast<unsigned char>(c) % 64);
}

constexpr std::size_t codeOf(char c) {
    return static_cast<unsigned char>(c);
}

bool standsAlone(std::string_view text, std::size_t start, std::size_t length) {
    const std::size_t after = start + length;
    return (start == 0 || !isWordCharacter(text[start - 1])) && (after == text.size() || !isWordCharacter(text[after]));
}

TextRange rangeOf(std::size_t start, std::size_t length) {
    return {static_cast<std::ptrdiff_t>(start), static_cast<std::ptrdiff_t>(length)};
}

// The first occurrence that stands alone and starts in [from, before), or npos.
std::size_t findPhrase(std::string_view text, std::string_view phrase, std::size_t from, std::size_t before) {
    const std::string_view reach = text.substr(0, std::min(text.size() - before, phrase.size() - 1) + before);
    std::size_t start = reach.find(phrase, from);
    while (start != std::string_view::npos && !standsAlone(text, start, phrase.size())) {
        start = reach.find(phrase, start + 1);
    }
    return start;
}

// Where a walk from left to right, begun at the start of the text, may take its next occurrence freely: the beginning
// of the overlapping occurrences that hang together up to `begin`.
std::size_t chainStart(std::string_view text, std::string_view phrase, std::size_t begin) {
    while (true) {
        const std::size_t overlapping = begin - std::min(begin, phrase.size() - 1);
        const std::size_t earlier = findPhrase(text, phrase, overlapping, begin);
        if (earlier == std::string_view::npos) {
            return begin;
        }
        begin = earlier;
    }
}

void scanPhrase(std::string_view text, std::string_view phrase, std::size_t begin, std::size_t end,
                std::vector<TextRange>& found) {
    std::size_t start = findPhrase(text, phrase, chainStart(text, phrase, begin), end);
    while (start != std::string_view::npos) {
        if (start >= begin) {
            found.push_back(rangeOf(start, phrase.size()));
        }
        const std::size_t next = start + phrase.size();
        start = next < end ? findPhrase(text, phrase, next, end) : std::string_view::npos;
    }
}

} // namespace

KeywordScan::KeywordScan(const std::vector<std::string>& words) {
    for (const std::string& word : words) {
        if (word.find_first_not_of(' ') != std::string::npos) {
            (std::all_of(word.begin(), word.end(), isWordCharacter) ? words_ : phrases_).push_back(word);
        }
    }
    for (std::vector<std::string>* list : {&words_, &phrases_}) {
        std::sort(list->begin(), list->end());
        list->erase(std::unique(list->begin(), list->end()), list->end());
    }
    for (std::size_t code = 0; code < traits_.size(); ++code) {
        traits_[code] = isWordCharacter(static_cast<char>(code)) ? wordCharacter : 0;
    }
    for (const std::string& word : words_) {
        traits_[codeOf(word.front())] |= keywordInitial;
        ++firstWith_[codeOf(word.front()) + 1];
        seconds_[codeOf(word.front())] |= word.size() > 1 ? secondBit(word[1]) : anySecond;
    }
    for (std::size_t code = 1; code < firstWith_.size(); ++code) {
        firstWith_[code] += firstWith_[code - 1];
    }
}

void KeywordScan::scan(std::string_view text, std::size_t begin, std::size_t end, std::vector<TextRange>& found) const {
    const std::size_t before = found.size();
    scanWords(text, begin, end, found);
    if (phrases_.empty()) {
        return;
    }
    for (const std::string& phrase : phrases_) {
        scanPhrase(text, phrase, begin, end, found);
    }
    std::sort(found.begin() + static_cast<std::ptrdiff_t>(before), found.end(),
              [](const TextRange& left, const TextRange& right) {
                  return left.start != right.start ? left.start < right.start : left.length < right.length;
              });
}

void KeywordScan::scanWords(std::string_view text, std::size_t begin, std::size_t end,
                            std::vector<TextRange>& found) const {
    unsigned previous = 0; // a word that began before the window is turned away by appendWordAt
    for (std::size_t i = begin; i < end; ++i) {
        const unsigned current = traits_[codeOf(text[i])];
        if ((current & ~(previous << 1) & keywordInitial) != 0) {
            appendWordAt(text, i, found);
        }
        previous = current;
    }
}

void KeywordScan::appendWordAt(std::string_view text, std::size_t start, std::vector<TextRange>& found) const {
    const std::size_t initial = codeOf(text[start]);
    if (start + 1 < text.size() && (seconds_[initial] & secondBit(text[start + 1])) == 0) {
        return;
    }
    for (std::size_t i = firstWith_[initial]; i < firstWith_[initial + 1]; ++i) {
        const std::string& word = words_[i];
        if (text.substr(start, word.size()) == word && standsAlone(text, start, word.size())) {
            found.push_back(rangeOf(start, word.size()));
            return;
        }
    }
}

} // namespace blockhouse
