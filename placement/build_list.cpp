#include "placement/build_list.h"

#include "placement/line_end.h"
#include "placement/structure_colour.h"
#include "platform/text/FoldedSearch.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace blockhouse {

namespace {

constexpr std::string_view sideKeyword = "skirmishbuildlist ";
constexpr std::string_view structureKeyword = "structure ";
constexpr std::string_view xKeyword = "location = x:";
constexpr std::string_view yKeyword = "y:";
constexpr std::string_view endKeyword = "end";

constexpr std::size_t shortestSideName = 3;
constexpr std::size_t shortestStructureName = 6;
constexpr std::size_t shortestX = 2;
constexpr std::size_t shortestY = 0;

bool startsWord(std::string_view text, std::size_t offset) {
    return offset == 0 || std::string_view(" \t\r\n").find(text[offset - 1]) != std::string_view::npos;
}

struct NamedKeyword {
    TextPosition position;
    std::string_view name;
};

// The keywords that count, with the names after them, among those that start in [from, to].
class NamedKeywords {
public:
    NamedKeywords(std::string_view text, std::string_view keyword, std::size_t shortestName)
        : text_(text), lineEnd_(lineEndOf(text)), keyword_(keyword), shortestName_(shortestName) {}

    [[nodiscard]] std::vector<NamedKeyword> in(TextPosition from, TextPosition to) const {
        std::vector<NamedKeyword> found;
        const auto last = static_cast<std::size_t>(std::max<std::ptrdiff_t>(to.value, 0));
        const std::string_view searched = text_.substr(0, last + keyword_.needleSize() - 1);
        const std::size_t first = offsetOf(std::max(from, TextPosition{1}));
        for (std::size_t at = keyword_.find(searched, first); at != FoldedSearch::npos;
             at = keyword_.find(searched, at + 1)) {
            if (!startsWord(text_, at)) {
                continue;
            }
            const std::optional<std::string_view> name = nameAt(at + keyword_.needleSize());
            if (name && name->size() >= shortestName_) {
                found.push_back({positionOf(at), *name});
            }
        }
        return found;
    }

private:
    // Gives up at the first character that a name must not hold: every keyword ends in such a one, so that no stretch
    // of text is read for two keywords, however long the lines are.
    [[nodiscard]] std::optional<std::string_view> nameAt(std::size_t start) const {
        for (std::size_t end = start; end < text_.size(); ++end) {
            if (text_[end] == lineEnd_) {
                return text_.substr(start, end - start);
            }
            if (text_[end] == ' ' || text_[end] == '=') {
                return std::nullopt;
            }
        }
        return std::nullopt;
    }

    std::string_view text_;
    char lineEnd_;
    FoldedSearch keyword_;
    std::size_t shortestName_;
};

// The next occurrence of a needle, for positions that only grow: the text is gone through once.
class NextOccurrence {
public:
    NextOccurrence(std::string_view text, std::string_view needle) : text_(text), needle_(needle) {}

    [[nodiscard]] TextPosition atOrAfter(TextPosition position) {
        const std::size_t from = offsetOf(position);
        if (!searched_ || next_ < from) {
            next_ = needle_.find(text_, from);
            searched_ = true;
        }
        return positionOf(next_);
    }

private:
    std::string_view text_;
    FoldedSearch needle_;
    bool searched_ = false;
    std::size_t next_ = FoldedSearch::npos; // which is greater than any position
};

std::optional<float> numberIn(std::string_view text) {
    constexpr std::string_view around = " \t";
    const std::size_t first = text.find_first_not_of(around);
    if (first == std::string_view::npos) {
        return std::nullopt;
    }
    text = text.substr(first, text.find_last_not_of(around) + 1 - first);
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    // Words such as "inf" would be read as numbers.
    if (text.find_first_not_of("0123456789.+-eE") != std::string_view::npos) {
        return std::nullopt;
    }
    float number = 0;
    const char* const end = text.data() + text.size();
    const std::from_chars_result read = std::from_chars(text.data(), end, number);
    if (read.ec != std::errc() || read.ptr != end || !std::isfinite(number)) {
        return std::nullopt;
    }
    return number;
}

struct Value {
    bool ended = false;
    std::optional<float> number;
};

// The value behind a keyword. Many structures in a row may be followed by the same one: it is read only once.
class ValueBehind {
public:
    ValueBehind(std::string_view text, std::string_view keyword, std::size_t shortest, char terminator)
        : text_(text), skipped_(keyword.size() - 1), shortest_(shortest), terminator_(terminator) {}

    // A keyword at notFound is taken as standing one character before the text.
    [[nodiscard]] const Value& at(TextPosition keyword) {
        if (readAt_ != keyword) {
            readAt_ = keyword;
            value_ = read(static_cast<std::size_t>(keyword.value) + skipped_);
        }
        return value_;
    }

private:
    [[nodiscard]] Value read(std::size_t start) const {
        const std::size_t end = text_.find(terminator_, start + shortest_);
        if (end == std::string_view::npos) {
            return {};
        }
        return {true, numberIn(text_.substr(start, end - start))};
    }

    std::string_view text_;
    std::size_t skipped_;
    std::size_t shortest_;
    char terminator_;
    std::optional<TextPosition> readAt_;
    Value value_;
};

class StructureScan {
public:
    explicit StructureScan(std::string_view text)
        : end_(text, endKeyword), xKeyword_(text, xKeyword), yKeyword_(text, yKeyword),
          x_(text, xKeyword, shortestX, ' '), y_(text, yKeyword, shortestY, lineEndOf(text)) {}

    // In ascending order of position.
    void add(const NamedKeyword& structure) {
        const TextPosition end = end_.atOrAfter(structure.position);
        const TextPosition atX = xKeyword_.atOrAfter(structure.position);
        const TextPosition atY = yKeyword_.atOrAfter(structure.position);
        std::string name(structure.name);
        if (atX > end || atY > end) {
            fail(ScanFailure::Kind::LocationNotFound, structure);
            return;
        }
        const Value& x = x_.at(atX);
        const Value& y = y_.at(atY);
        if (!x.ended || !y.ended) {
            fail(ScanFailure::Kind::NoValueEnd, structure);
        } else if (!x.number || !y.number) {
            fail(ScanFailure::Kind::NoNumber, structure);
        } else {
            const Colour colour = Getcolord(name);
            scan_.structures.push_back({{std::move(name), atX}, {{*x.number}, {*y.number}}, colour});
        }
    }

    [[nodiscard]] BuildListScan result() && { return std::move(scan_); }

private:
    void fail(ScanFailure::Kind kind, const NamedKeyword& structure) {
        scan_.failures.push_back({kind, std::string(structure.name), structure.position});
    }

    NextOccurrence end_;
    NextOccurrence xKeyword_;
    NextOccurrence yKeyword_;
    ValueBehind x_;
    ValueBehind y_;
    BuildListScan scan_;
};

} // namespace

std::string ScanFailure::message() const {
    switch (kind) {
    case Kind::NoNumber:
        return "13";
    case Kind::NoValueEnd:
        return "5";
    case Kind::LocationNotFound:
        break;
    }
    return "Could not find location for " + name + ":Skipping";
}

std::string unreadableStructures(std::string_view text, const std::vector<ScanFailure>& failures) {
    constexpr std::size_t most = 5;
    const char lineEnd = lineEndOf(text);
    std::string told = "The location cannot be read of ";
    std::size_t line = 1;
    std::size_t counted = 0;
    for (std::size_t i = 0; i < std::min(failures.size(), most); ++i) {
        const std::size_t at = offsetOf(failures[i].position);
        line += static_cast<std::size_t>(std::count(text.begin() + static_cast<std::ptrdiff_t>(counted),
                                                    text.begin() + static_cast<std::ptrdiff_t>(at), lineEnd));
        counted = at;
        told += (i == 0 ? "" : ", ") + failures[i].name + " (line " + std::to_string(line) + ")";
    }
    if (failures.size() > most)
        told += " and " + std::to_string(failures.size() - most) + " more";
    return told;
}

std::vector<SideEntry> sidesOf(std::string_view text) {
    std::vector<SideEntry> sides;
    const NamedKeywords headers(text, sideKeyword, shortestSideName);
    for (const NamedKeyword& header : headers.in({1}, positionOf(text.size()))) {
        sides.push_back({std::string(header.name), header.position});
    }
    return sides;
}

SearchRange searchRangeOf(const std::vector<SideEntry>& sides, std::size_t side, std::string_view text) {
    const bool last = side + 1 == sides.size();
    return {sides[side].position,
            last ? TextPosition{static_cast<std::ptrdiff_t>(text.size())} : sides[side + 1].position};
}

BuildListScan structuresOf(std::string_view text, TextPosition startSearch, TextPosition endSearch) {
    StructureScan scan(text);
    const NamedKeywords structures(text, structureKeyword, shortestStructureName);
    for (const NamedKeyword& structure : structures.in(startSearch, endSearch)) {
        scan.add(structure);
    }
    return std::move(scan).result();
}

} // namespace blockhouse
