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

// The names of the headers, one after the other. The text itself is too large for the processor's caches to look a name
// up in it over and over.
struct FoundNames {
    std::string names;
    std::vector<std::size_t> ends; // of each
};

FoundNames headerNames(std::string_view text, HeaderKind kind) {
    const PassRule rule = passRule(kind);
    const FoldedSearch keyword(headerKeyword(kind)); // of None: found nowhere
    const HeaderNames names(text);

    FoundNames found;
    for (std::size_t at = keyword.find(text); at != FoldedSearch::npos; at = keyword.find(text, at + 1)) {
        if (rule.onlyAtLineStart && !atLineStart(text, at)) {
            continue;
        }
        const std::optional<std::string_view> name = names.plainNameAt(at + keyword.needleSize());
        if (name && name->size() > rule.longerThan) {
            found.names += *name;
            found.ends.push_back(found.names.size());
        }
    }
    return found;
}

struct SortedName {
    std::uint64_t leading; // in the order of the first eight lowered bytes, so that few names need be compared
    std::string_view lowered;
};

std::uint64_t leadingBytes(std::string_view name) {
    std::uint64_t bytes = 0;
    for (std::size_t i = 0; i < sizeof bytes; ++i) {
        bytes = bytes << 8 | (i < name.size() ? static_cast<unsigned char>(name[i]) : 0U);
    }
    return bytes;
}

// In linear time: by each byte, from the last to the first. Equal ones keep their order.
void sortByLeadingBytes(std::vector<SortedName>& names) {
    std::vector<SortedName> sorted(names.size());
    for (int shift = 0; shift < 64; shift += 8) {
        std::array<std::size_t, 257> starts{};
        const auto byteOf = [shift](const SortedName& entry) {
            return static_cast<std::size_t>(entry.leading >> shift & 0xFF);
        };
        for (const SortedName& entry : names) {
            ++starts[byteOf(entry) + 1];
        }
        if (std::find(starts.begin(), starts.end(), names.size()) != starts.end()) {
            continue; // all have the same byte
        }
        std::partial_sum(starts.begin(), starts.end(), starts.begin());
        for (const SortedName& entry : names) {
            sorted[starts[byteOf(entry)]++] = entry;
        }
        names.swap(sorted);
    }
}

// By the lowered names; equal ones keep their order.
void sortByName(std::vector<SortedName>& names) {
    sortByLeadingBytes(names);
    for (auto group = names.begin(); group != names.end();) {
        const auto end = std::find_if(group, names.end(),
                                      [group](const SortedName& entry) { return entry.leading != group->leading; });
        if (end - group > 1) {
            std::stable_sort(group, end, [](const SortedName& left, const SortedName& right) {
                return left.lowered < right.lowered;
            });
        }
        group = end;
    }
}

} // namespace

std::vector<BlockEntry> blockPass(std::string_view fileText, HeaderKind kind) {
    const FoundNames found = headerNames(fileText, kind);
    const std::string lowered = codepage::lowered(found.names);
    std::vector<SortedName> sorted;
    sorted.reserve(found.ends.size());
    std::size_t start = 0;
    for (const std::size_t end : found.ends) {
        const std::string_view name = std::string_view(lowered).substr(start, end - start);
        sorted.push_back({leadingBytes(name), name});
        start = end;
    }
    sortByName(sorted);

    std::vector<BlockEntry> blocks;
    blocks.reserve(sorted.size());
    std::optional<std::string_view> previous;
    for (const SortedName& entry : sorted) {
        const auto at = static_cast<std::size_t>(entry.lowered.data() - lowered.data());
        blocks.push_back(
            {found.names.substr(at, entry.lowered.size()), entry.lowered == previous ? HeaderKind::None : kind});
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
