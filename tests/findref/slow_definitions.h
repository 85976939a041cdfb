// The lines that define a name, found line by line in the whole text.
#pragma once

#include "platform/text/codepage.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace blockhouse {

// "<position> <line> <keyword>" for each, one a line.
inline std::string definitionsLineByLine(std::string_view text, std::string_view name) {
    std::string found;
    std::ptrdiff_t feeds = 0;
    std::ptrdiff_t returns = 0;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find_first_of("\r\n", start), text.size());
        const std::string_view line = text.substr(start, std::min(end, text.find(';', start)) - start);
        const std::size_t wordEnd = line.find_first_of(" \t=");
        const std::size_t second = wordEnd == line.npos ? line.npos : line.find_first_not_of(" \t", wordEnd);
        if (wordEnd != 0 && second != line.npos && second > wordEnd) {
            const std::size_t secondEnd = std::min(line.find_first_of(" \t=", second), line.size());
            const bool isAlone = line.find_first_not_of(" \t", secondEnd) == line.npos;
            if (isAlone && !name.empty() && codepage::equalIgnoringCase(line.substr(second, secondEnd - second), name))
                found += std::to_string(start + second + 1) + " " + std::to_string((feeds > 0 ? feeds : returns) + 1) +
                         " " + std::string(line.substr(0, wordEnd)) + "\n";
        }
        if (end < text.size()) {
            feeds += text[end] == '\n' ? 1 : 0;
            returns += text[end] == '\r' ? 1 : 0;
        }
        start = end + 1;
    }
    return found;
}

} // namespace blockhouse
