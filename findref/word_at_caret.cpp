#include "findref/word_at_caret.h"

#include <algorithm>

namespace blockhouse {

std::optional<std::string_view> wordAtCaret(std::string_view text, CaretPosition caret) {
    constexpr std::string_view separators = "\r \n";
    constexpr std::string_view none;
    if (caret.value < 1 || text.empty())
        return std::nullopt;
    const std::size_t left = std::min(static_cast<std::size_t>(caret.value), text.size()) - 1;
    const std::size_t before = text.find_last_of(separators, left);
    std::size_t end = text.npos;
    for (const char separator : separators) {
        const std::size_t at = text.find(separator, left);
        if (at == text.npos)
            return none;
        end = std::min(end, at);
    }
    if (before == text.npos || end <= before)
        return none;
    return text.substr(before + 1, end - before - 1);
}

} // namespace blockhouse
