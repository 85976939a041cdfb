#include "platform/text/codepage.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace blockhouse::codepage {

namespace {

constexpr unsigned char firstSpecial = 0x80;
constexpr unsigned char afterLastSpecial = 0xA0;

// Bytes 0x80 to 0x9F, the only ones whose code point is not the byte itself.
constexpr std::array<char16_t, 32> specials = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

constexpr unsigned char loweredCode(unsigned char code) {
    const bool asciiCapital = code >= 'A' && code <= 'Z';
    const bool accentedCapital = code >= 0xC0 && code <= 0xDE && code != 0xD7;
    if (asciiCapital || accentedCapital)
        return static_cast<unsigned char>(code + 0x20);
    switch (code) {
    case 0x8A: // S with caron
    case 0x8C: // OE
    case 0x8E: // Z with caron
        return static_cast<unsigned char>(code + 0x10);
    case 0x9F: // Y with diaeresis
        return 0xFF;
    default:
        return code;
    }
}

constexpr std::array<char, 256> makeLowerTable() {
    std::array<char, 256> table{};
    for (std::size_t code = 0; code < table.size(); ++code)
        table[code] = static_cast<char>(loweredCode(static_cast<unsigned char>(code)));
    return table;
}

constexpr std::array<char, 256> lowerTable = makeLowerTable();

constexpr unsigned char codeOf(char byte) {
    return static_cast<unsigned char>(byte);
}

constexpr bool isAsciiByte(char byte) {
    return codeOf(byte) < 0x80;
}

// Most texts are ASCII nearly throughout, so its stretches are copied in bulk.
std::size_t asciiPrefix(std::string_view bytes) {
    constexpr std::uint64_t highBits = 0x8080808080808080U;
    std::size_t length = 0;
    for (std::uint64_t word = 0; bytes.size() - length >= sizeof word; length += sizeof word) {
        std::memcpy(&word, bytes.data() + length, sizeof word);
        if ((word & highBits) != 0)
            break;
    }
    while (length < bytes.size() && isAsciiByte(bytes[length]))
        ++length;
    return length;
}

void appendUtf8(std::string& out, char32_t codePoint) {
    const auto append = [&out](char32_t unit) { out.push_back(static_cast<char>(unit)); };
    if (codePoint < 0x80) {
        append(codePoint);
    } else if (codePoint < 0x800) {
        append(0xC0 | (codePoint >> 6));
        append(0x80 | (codePoint & 0x3F));
    } else {
        append(0xE0 | (codePoint >> 12));
        append(0x80 | ((codePoint >> 6) & 0x3F));
        append(0x80 | (codePoint & 0x3F));
    }
}

constexpr char32_t noCodePoint = 0xFFFFFFFF;

struct Decoded {
    char32_t codePoint = noCodePoint;
    std::size_t length = 1;
};

// The first character of `utf8`, which is not empty and begins with a byte beyond ASCII.
Decoded decodeOne(std::string_view utf8) {
    const unsigned lead = codeOf(utf8.front());
    const bool usable = lead >= 0xC2 && lead <= 0xF4;
    if (!usable)
        return {};
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t codePoint = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if (i == utf8.size() || (codeOf(utf8[i]) & 0xC0) != 0x80)
            return {noCodePoint, i};
        codePoint = (codePoint << 6) | (codeOf(utf8[i]) & 0x3FU);
    }
    // An overlong form could smuggle in a character that a check of the bytes did not see.
    constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
    return {codePoint < smallest[length] ? noCodePoint : codePoint, length};
}

} // namespace

char32_t codePointOf(char byte) {
    const unsigned char code = codeOf(byte);
    return code >= firstSpecial && code < afterLastSpecial ? specials[code - firstSpecial] : code;
}

std::optional<char> byteOf(char32_t codePoint) {
    if (codePoint < firstSpecial || (codePoint >= afterLastSpecial && codePoint <= 0xFF))
        return static_cast<char>(codePoint);
    const auto special = std::find(specials.begin(), specials.end(), codePoint);
    if (special == specials.end())
        return std::nullopt;
    return static_cast<char>(firstSpecial + (special - specials.begin()));
}

bool isAscii(std::string_view bytes) {
    return asciiPrefix(bytes) == bytes.size();
}

std::size_t utf8Length(std::string_view bytes) {
    std::size_t length = 0;
    for (const char byte : bytes)
        length += static_cast<unsigned char>(byte) < 0x80 ? 1U : codePointOf(byte) < 0x800 ? 2U : 3U;
    return length;
}

std::string toUtf8(std::string_view bytes) {
    std::string utf8;
    const std::size_t beyondAscii = bytes.size() - asciiPrefix(bytes);
    utf8.reserve(bytes.size() + (beyondAscii == 0 ? 0 : bytes.size() / 16));
    while (!bytes.empty()) {
        const std::size_t plain = asciiPrefix(bytes);
        utf8.append(bytes.substr(0, plain));
        bytes.remove_prefix(plain);
        for (; !bytes.empty() && !isAsciiByte(bytes.front()); bytes.remove_prefix(1))
            appendUtf8(utf8, codePointOf(bytes.front()));
    }
    return utf8;
}

Encoded fromUtf8(std::string_view utf8) {
    Encoded encoded;
    encoded.bytes.reserve(utf8.size());
    while (!utf8.empty()) {
        const std::size_t plain = asciiPrefix(utf8);
        encoded.bytes.append(utf8.substr(0, plain));
        utf8.remove_prefix(plain);
        while (!utf8.empty() && !isAsciiByte(utf8.front())) {
            const Decoded decoded = decodeOne(utf8);
            const std::optional<char> byte = byteOf(decoded.codePoint);
            encoded.lossy = encoded.lossy || !byte;
            encoded.bytes.push_back(byte.value_or('?'));
            utf8.remove_prefix(decoded.length);
        }
    }
    return encoded;
}

char lowered(char byte) {
    return lowerTable[codeOf(byte)];
}

std::string lowered(std::string_view bytes) {
    std::string result(bytes);
    for (char& byte : result)
        byte = lowered(byte);
    return result;
}

bool equalIgnoringCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return lowered(a) == lowered(b); });
}

bool lessIgnoringCase(std::string_view left, std::string_view right) {
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                        [](char a, char b) { return codeOf(lowered(a)) < codeOf(lowered(b)); });
}

} // namespace blockhouse::codepage
