#include "platform/richtext/line_ends.h"

#include <cstddef>

namespace blockhouse {

std::string_view prevailingLineEnd(std::string_view text) {
    constexpr std::size_t enough = 1000;
    std::size_t pairs = 0, returns = 0, feeds = 0;
    for (std::size_t at = text.find_first_of("\r\n"); at != text.npos && pairs + returns + feeds < enough;
         at = text.find_first_of("\r\n", at + 1)) {
        if (text[at] == '\n')
            ++feeds;
        else if (at + 1 < text.size() && text[at + 1] == '\n')
            ++pairs, ++at;
        else
            ++returns;
    }
    if (pairs >= returns && pairs >= feeds)
        return "\r\n";
    return feeds >= returns ? "\n" : "\r";
}

std::string withLineEnds(std::string_view text, std::string_view lineEnd) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' || text[i] == '\n') {
            result += lineEnd;
            if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
                ++i;
        } else {
            result += text[i];
        }
    }
    return result;
}

bool hasLineLongerThan(std::string_view text, std::size_t most) {
    for (std::size_t lineStart = 0; text.size() - lineStart > most;) {
        const std::size_t end = text.substr(lineStart, most + 1).find_last_of("\r\n");
        if (end == text.npos)
            return true;
        lineStart += end + 1;
    }
    return false;
}

} // namespace blockhouse
