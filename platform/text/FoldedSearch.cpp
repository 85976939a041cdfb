#include "platform/text/FoldedSearch.h"

#include "platform/text/codepage.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace blockhouse {

namespace {

constexpr std::size_t blockSize = 64;

// Tells whether a byte may be a given needle byte. Setting the bits in which the two cases differ makes both the
// same value; for the one letter whose cases differ in two bits it lets a few other bytes through as well, which the
// comparison of the whole needle then turns away.
struct Filter {
    unsigned char caseBits;
    unsigned char value;

    Filter(char lower, char upper)
        : caseBits(static_cast<unsigned char>(lower ^ upper)), value(static_cast<unsigned char>(lower | upper)) {}

    [[nodiscard]] bool lets(char byte) const { return (static_cast<unsigned char>(byte) | caseBits) == value; }
};

// The places of a needle of which both ends fit.
class Candidates {
public:
    Candidates(Filter first, Filter last, std::size_t distance) : first_(first), last_(last), distance_(distance) {}

    [[nodiscard]] bool at(const char* text) const { return first_.lets(text[0]) && last_.lets(text[distance_]); }

    // Marks the candidates among the `blockSize` places from `text` on; true when there is one. Written without a
    // branch, over a constant count, so that the compiler makes vector instructions of it.
    bool mark(const char* text) {
        const char* const end = text + distance_;
        for (std::size_t i = 0; i < blockSize; ++i) {
            const bool firstFits = first_.lets(text[i]);
            const bool lastFits = last_.lets(end[i]);
            marks_[i] = static_cast<unsigned char>(firstFits & lastFits);
        }
        std::array<std::uint64_t, blockSize / sizeof(std::uint64_t)> words;
        std::memcpy(words.data(), marks_.data(), blockSize);
        std::uint64_t any = 0;
        for (const std::uint64_t word : words)
            any |= word;
        return any != 0;
    }

    // Only after mark().
    [[nodiscard]] bool marked(std::size_t place) const { return marks_[place] != 0; }

private:
    Filter first_;
    Filter last_;
    std::size_t distance_;
    std::array<unsigned char, blockSize> marks_{};
};

// The other case of a lower-case letter, the byte itself when it has none.
char upperOf(char lower) {
    static const std::array<char, 256> table = [] {
        std::array<char, 256> made{};
        for (std::size_t code = 0; code < made.size(); ++code)
            made[code] = static_cast<char>(code);
        for (std::size_t code = 0; code < made.size(); ++code) {
            const char byte = static_cast<char>(code);
            if (codepage::lowered(byte) != byte)
                made[static_cast<unsigned char>(codepage::lowered(byte))] = byte;
        }
        return made;
    }();
    return table[static_cast<unsigned char>(lower)];
}

} // namespace

FoldedSearch::FoldedSearch(std::string_view needle) {
    needle_.reserve(needle.size());
    for (const char byte : needle) {
        const char lower = codepage::lowered(byte);
        needle_.push_back({lower, upperOf(lower)});
    }
}

bool FoldedSearch::matchesAt(const char* text) const {
    return std::all_of(needle_.begin(), needle_.end(), [&text](const Variants& variants) {
        const char byte = *text++;
        return byte == variants.lower || byte == variants.upper;
    });
}

std::size_t FoldedSearch::find(std::string_view haystack, std::size_t from) const {
    if (needle_.empty() || from > haystack.size() || haystack.size() - from < needle_.size())
        return npos;
    const Variants& first = needle_.front();
    const Variants& last = needle_.back();
    Candidates candidates({first.lower, first.upper}, {last.lower, last.upper}, needle_.size() - 1);
    const char* const text = haystack.data();
    const std::size_t places = haystack.size() - needle_.size() + 1;

    std::size_t place = from;
    for (; places - place >= blockSize; place += blockSize) {
        if (!candidates.mark(text + place))
            continue;
        for (std::size_t i = 0; i < blockSize; ++i) {
            if (candidates.marked(i) && matchesAt(text + place + i))
                return place + i;
        }
    }
    for (; place < places; ++place) {
        if (candidates.at(text + place) && matchesAt(text + place))
            return place;
    }
    return npos;
}

std::size_t FoldedSearch::findLast(std::string_view haystack) const {
    if (needle_.empty() || haystack.size() < needle_.size())
        return npos;
    const Variants& first = needle_.front();
    const Variants& last = needle_.back();
    Candidates candidates({first.lower, first.upper}, {last.lower, last.upper}, needle_.size() - 1);
    const char* const text = haystack.data();

    std::size_t places = haystack.size() - needle_.size() + 1;
    for (; places >= blockSize; places -= blockSize) {
        const std::size_t start = places - blockSize;
        if (!candidates.mark(text + start))
            continue;
        for (std::size_t i = blockSize; i-- > 0;) {
            if (candidates.marked(i) && matchesAt(text + start + i))
                return start + i;
        }
    }
    while (places-- > 0) {
        if (candidates.at(text + places) && matchesAt(text + places))
            return places;
    }
    return npos;
}

} // namespace blockhouse
