#include "editor/name_search.h"

#include "platform/text/codepage.h"
#include "platform/text/FoldedSearch.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cstdint>
#include <unordered_map>

namespace blockhouse {

namespace {

// Names are told apart by a number made of five bits of each of their first three lowered characters. Few places of
// an ordinary text have the number of one of the names.
constexpr std::size_t prefixSize = 3;
constexpr unsigned codeBits = 5;
constexpr std::size_t prefixes = std::size_t{1} << (prefixSize * codeBits);

class CharacterCodes {
public:
    CharacterCodes() {
        for (std::size_t byte = 0; byte < codes_.size(); ++byte) {
            const auto lowered = static_cast<unsigned char>(codepage::lowered(static_cast<char>(byte)));
            codes_[byte] = lowered % (1U << codeBits);
        }
    }

    // The prefix one character further on.
    [[nodiscard]] std::uint32_t next(std::uint32_t prefix, char c) const {
        return (prefix << codeBits | codes_[static_cast<unsigned char>(c)]) % prefixes;
    }

    [[nodiscard]] std::uint32_t prefixOf(std::string_view text) const {
        std::uint32_t prefix = 0;
        for (const char c : text.substr(0, prefixSize)) {
            prefix = next(prefix, c);
        }
        return prefix;
    }

private:
    std::array<std::uint8_t, 256> codes_{};
};

// The names that have not been found yet.
class Wanted {
public:
    void add(std::string_view name, std::uint32_t prefix, TextPosition& found) {
        names_[prefix].push_back({name, &found});
        prefixes_.set(prefix);
        ++left_;
    }

    [[nodiscard]] bool empty() const { return left_ == 0; }

    [[nodiscard]] bool mayBeginWith(std::uint32_t prefix) const { return prefixes_[prefix]; }

    // Those names of the prefix that `text` has at the offset are found there.
    void takeAt(std::size_t offset, std::string_view text, std::uint32_t prefix) {
        std::vector<Name>& sharing = names_[prefix];
        left_ -= std::erase_if(sharing, [&](const Name& wanted) {
            const bool here = codepage::equalIgnoringCase(text.substr(offset, wanted.name.size()), wanted.name);
            if (here) {
                *wanted.found = positionOf(offset);
            }
            return here;
        });
        prefixes_.set(prefix, !sharing.empty());
    }

private:
    struct Name {
        std::string_view name;
        TextPosition* found;
    };

    std::unordered_map<std::uint32_t, std::vector<Name>> names_;
    std::bitset<prefixes> prefixes_;
    std::size_t left_ = 0;
};

TextPosition firstOfShortName(std::string_view text, std::string_view name, TextPosition start, TextPosition end) {
    if (name.empty()) {
        return start;
    }
    const std::string_view reach = text.substr(0, std::min(text.size(), offsetOf(end) + name.size() - 1));
    const std::size_t at = FoldedSearch(name).find(reach, offsetOf(start));
    return positionOf(at);
}

void findAll(Wanted& wanted, const CharacterCodes& codes, std::string_view text, TextPosition start, TextPosition end) {
    const std::size_t last = std::min(text.size(), offsetOf(end) + prefixSize - 1);
    std::uint32_t prefix = codes.prefixOf(text.substr(std::min(offsetOf(start), text.size()), prefixSize - 1));
    for (std::size_t i = offsetOf(start) + prefixSize - 1; i < last; ++i) {
        prefix = codes.next(prefix, text[i]);
        if (wanted.mayBeginWith(prefix)) {
            wanted.takeAt(i - (prefixSize - 1), text, prefix);
            if (wanted.empty()) {
                return;
            }
        }
    }
}

} // namespace

std::vector<TextPosition> firstOccurrences(std::string_view text, std::span<const std::string> names,
                                           TextPosition start, TextPosition end) {
    std::vector<TextPosition> found(names.size());
    if (start >= end) {
        return found;
    }
    const CharacterCodes codes;
    Wanted wanted;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i].size() < prefixSize) {
            found[i] = firstOfShortName(text, names[i], start, end);
        } else {
            wanted.add(names[i], codes.prefixOf(names[i]), found[i]);
        }
    }
    if (!wanted.empty()) {
        findAll(wanted, codes, text, start, end);
    }
    return found;
}

} // namespace blockhouse
