// The words and bytes of RTF that the reader knows.
#pragma once

#include "platform/text/codepage.h"

#include <array>
#include <string_view>
#include <utility>

namespace blockhouse::rtf {

// Bytes that mean something beyond themselves in every destination.
constexpr std::array<bool, 256> makeStops() {
    std::array<bool, 256> table{};
    for (const char stop : {'\\', '{', '}', '\r', '\n'})
        table[static_cast<unsigned char>(stop)] = true;
    return table;
}

inline constexpr std::array<bool, 256> stops = makeStops();

inline bool isStop(char byte) {
    return stops[static_cast<unsigned char>(byte)];
}

inline bool isLetter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

inline bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

inline int hexValue(char byte) {
    if (isDigit(byte))
        return byte - '0';
    const char lower = codepage::lowered(byte);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// Words that stand for one character of the code page.
inline constexpr std::array<std::pair<std::string_view, char>, 11> namedCharacters = {{
    {"tab", '\t'},
    {"cell", '\t'},
    {"bullet", '\x95'},
    {"emdash", '\x97'},
    {"endash", '\x96'},
    {"emspace", ' '},
    {"enspace", ' '},
    {"lquote", '\x91'},
    {"rquote", '\x92'},
    {"ldblquote", '\x93'},
    {"rdblquote", '\x94'},
}};

// Destinations whose content is not part of the text although they are not marked as ignorable.
inline constexpr std::array<std::string_view, 15> hiddenDestinations = {
    "fonttbl", "stylesheet", "info",    "pict",    "object",  "header",   "headerl", "headerr",
    "headerf", "footer",     "footerl", "footerr", "footerf", "footnote", "filetbl",
};

} // namespace blockhouse::rtf
