#include "editor/block_scan.h"

#include "platform/text/codepage.h"
#include "platform/text/FoldedSearch.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>

namespace blockhouse {

namespace {

struct PassRule {
    bool onlyAtLineStart; // or after a blank or a tab
    std::size_t longerThan;
};

constexpr PassRule passRule(HeaderKind kind) {
    switch (kind) {
    case HeaderKind::Object:
        return {true, 5};
    case HeaderKind::Weapon:
        return {false, 7};
    case HeaderKind::SkirmishBuildList:
        return {true, 2};
    case HeaderKind::SpecialPower:
    case HeaderKind::FXList:
        return {false, 5};
    case HeaderKind::None:
        break;
    }
    return {};
}

// How far past a position the header of the block that holds it is looked for.
constexpr std::size_t lookAhead = 30;

class HeaderNames {
public:
    explicit HeaderNames(std::string_view text) : text_(text), lastReturn_(text.rfind('\r')) {}

    // The whole rest of the header line.
    [[nodiscard]] std::string_view nameAt(std::size_t start) const {
        return text_.substr(start, text_.find(lineEndAfter(start), start) - start);
    }

    // The same if it is free of blanks and "=", else nothing. Gives up at the first of them: every occurrence of a
    // keyword ends in a blank, so no stretch of text is read for two of them, however long the lines are.
    [[nodiscard]] std::optional<std::string_view> plainNameAt(std::size_t start) const {
        const char lineEnd = lineEndAfter(start);
        std::size_t end = start;
        while (end < text_.size() && text_[end] != lineEnd) {
            if (text_[end] == ' ' || text_[end] == '=') {
                return std::nullopt;
            }
            ++end;
        }
        return text_.substr(start, end - start);
    }

private:
    [[nodiscard]] char lineEndAfter(std::size_t position) const {
        return lastReturn_ != std::string_view::npos && position <= lastReturn_ ? '\r' : '\n';
    }

    std::string_view text_;
    std::size_t lastReturn_;
};

bool atLineStart(std::string_view text, std::size_t position) {
    return position == 0 || std::string_view(" \t\r\n").find(text[position - 1]) != std::string_view::npos;
}

std::vector<std::string_view> headerNames(std::string_view text, HeaderKind kind) {
    const PassRule rule = passRule(kind);
    const FoldedSearch keyword(headerKeyword(kind)); // of None: found nowhere
    const HeaderNames names(text);

    std::vector<std::string_view> found;
    for (std::size_t at = keyword.find(text); at != FoldedSearch::npos; at = keyword.find(text, at + 1)) {
        if (rule.onlyAtLineStart && !atLineStart(text, at)) {
            continue;
        }
        const std::optional<std::string_view> name = names.plainNameAt(at + keyword.needleSize());
        if (name && name->size() > rule.longerThan) {
            found.push_back(*name);
        }
    }
    return found;
}

// The lowered names one after the other: one piece of memory instead of one a name.
std::string loweredTogether(const std::vector<std::string_view>& names) {
    std::size_t size = 0;
    for (const std::string_view name : names) {
        size += name.size();
    }
    std::string lowered;
    lowered.reserve(size);
    for (const std::string_view name : names) {
        lowered += codepage::lowered(name);
    }
    return lowered;
}

// A number that is in the order of the first eight bytes, so that few names need be compared.
std::uint64_t leadingBytes(std::string_view name) {
    std::uint64_t bytes = 0;
    for (std::size_t i = 0; i < sizeof bytes; ++i) {
        bytes = bytes << 8 | (i < name.size() ? static_cast<unsigned char>(name[i]) : 0U);
    }
    return bytes;
}

struct Key {
    std::uint64_t leading;
    std::uint32_t index; // of the name
};

// By the leading bytes, in linear time: by each byte, from the last to the first. Equal keys keep their order.
void sortByLeadingBytes(std::vector<Key>& keys) {
    std::vector<Key> sorted(keys.size());
    for (int shift = 0; shift < 64; shift += 8) {
        std::array<std::size_t, 257> starts{};
        const auto byteOf = [shift](const Key& key) { return static_cast<std::size_t>(key.leading >> shift & 0xFF); };
        for (const Key& key : keys) {
            ++starts[byteOf(key) + 1];
        }
        if (std::find(starts.begin(), starts.end(), keys.size()) != starts.end()) {
            continue; // all have the same byte
        }
        std::partial_sum(starts.begin(), starts.end(), starts.begin());
        for (const Key& key : keys) {
            sorted[starts[byteOf(key)]++] = key;
        }
        keys.swap(sorted);
    }
}

struct SortedName {
    std::string_view lowered;
    std::string_view name;
};

// Equal names keep their order.
std::vector<SortedName> sortedByLowered(const std::vector<std::string_view>& names, std::string_view lowered) {
    std::vector<Key> keys;
    std::vector<std::string_view> loweredNames;
    keys.reserve(names.size());
    loweredNames.reserve(names.size());
    for (const std::string_view name : names) {
        loweredNames.push_back(lowered.substr(0, name.size()));
        keys.push_back({leadingBytes(loweredNames.back()), static_cast<std::uint32_t>(keys.size())});
        lowered.remove_prefix(name.size());
    }
    sortByLeadingBytes(keys);
    for (auto group = keys.begin(); group != keys.end();) {
        const auto end =
            std::find_if(group, keys.end(), [group](const Key& key) { return key.leading != group->leading; });
        std::stable_sort(group, end, [&](const Key& left, const Key& right) {
            return loweredNames[left.index] < loweredNames[right.index];
        });
        group = end;
    }
    std::vector<SortedName> sorted;
    sorted.reserve(names.size());
    for (const Key& key : keys) {
        sorted.push_back({loweredNames[key.index], names[key.index]});
    }
    return sorted;
}

} // namespace

std::vector<BlockEntry> blockPass(std::string_view fileText, HeaderKind kind) {
    std::vector<BlockEntry> blocks;
    const std::vector<std::string_view> names = headerNames(fileText, kind);
    const std::string lowered = loweredTogether(names);
    blocks.reserve(names.size());
    std::optional<std::string_view> previous;
    for (const SortedName& entry : sortedByLowered(names, lowered)) {
        blocks.push_back({std::string(entry.name), entry.lowered == previous ? HeaderKind::None : kind});
        previous = entry.lowered;
    }
    return blocks;
}

int Findin(const std::vector<BlockEntry>& blocks, std::string_view what) {
    const auto found =
        std::lower_bound(blocks.begin(), blocks.end(), what, [](const BlockEntry& entry, std::string_view name) {
            return codepage::lessIgnoringCase(entry.name, name);
        });
    if (found == blocks.end() || !codepage::equalIgnoringCase(found->name, what)) {
        return -1;
    }
    return static_cast<int>(found - blocks.begin());
}

std::optional<std::string> blockNameBefore(std::string_view fileText, HeaderKind kind, TextPosition startout) {
    if (kind == HeaderKind::None || !startout.found()) {
        return std::nullopt;
    }
    const FoldedSearch header("\n" + std::string(enclosingKeyword(kind)));
    const std::size_t at = header.findLast(fileText.substr(0, static_cast<std::size_t>(startout.value) + lookAhead));
    if (at == FoldedSearch::npos) {
        return std::nullopt;
    }
    return std::string(HeaderNames(fileText).nameAt(at + header.needleSize()));
}

} // namespace blockhouse
