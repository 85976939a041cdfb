#include "findref/name_at_caret.h"

#include <algorithm>

namespace blockhouse {

std::optional<TextRange> nameAtCaret(std::string_view text, CaretPosition caret) {
    constexpr std::string_view separators = " \t=;\"\r\n";
    const std::size_t at = std::min(static_cast<std::size_t>(std::max<std::ptrdiff_t>(caret.value, 0)), text.size());
    const std::size_t before = text.substr(0, at).find_last_of(separators);
    const std::size_t start = before == text.npos ? 0 : before + 1;
    const std::size_t end = std::min(text.find_first_of(separators, at), text.size());
    if (start == end)
        return std::nullopt;
    return TextRange{static_cast<std::ptrdiff_t>(start), static_cast<std::ptrdiff_t>(end - start)};
}

} // namespace blockhouse
