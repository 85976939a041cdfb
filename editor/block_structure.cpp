#include "editor/block_structure.h"

#include "editor/HeaderKind.h"
#include "editor/structure_lines.h"

#include <algorithm>

namespace blockhouse {
namespace {

// A block that is open while the lines are walked through.
struct Open {
    std::size_t block; // its index
    int indent;
    bool isCertain; // opened by a keyword, not only by its indentation
};

// How lines are taken.
enum class Reading {
    Indented,    // deeper indented lines make a block of the line before them, if an "End" follows them
    Sloppy,      // the same, but lines of the block may stand farther left before that "End"
    KeywordOnly, // they do not
    ByPlace,     // as Indented, but an "End" closes the block that it is indented like
};

class Walk {
public:
    Walk(const std::vector<StructureLine>& lines, Reading reading) : lines_(lines), reading_(reading) {}

    BlockStructure through() && {
        for (std::size_t line = 0; line < lines_.size(); ++line) {
            if (lines_[line].kind == StructureLine::Kind::End)
                close(lines_[line]);
            else
                take(line);
        }
        while (!open_.empty())
            leaveUnclosed();
        std::sort(
            structure_.faults.begin(), structure_.faults.end(),
            [](const StructureFault& left, const StructureFault& right) { return left.word.start < right.word.start; });
        return std::move(structure_);
    }

private:
    void take(std::size_t index) {
        const StructureLine& line = lines_[index];
        if (reading_ != Reading::Sloppy)
            dropWhatWasNone(line.indent);
        mayBeOpen_ = mayBeOpen_ || (open_.empty() && line.indent == 0);
        if (!open_.empty() && line.indent == 0)
            isIndented_ = false;
        const StructureLine* next = index + 1 < lines_.size() ? &lines_[index + 1] : nullptr;
        const bool isDeeper = next && next->indent > line.indent;
        const bool certain = isCertainOpener(line, next, isDeeper);
        if (!certain && (!isDeeper || reading_ == Reading::KeywordOnly))
            return;
        if (open_.empty())
            mayBeOpen_ = false;
        if (open_.empty() && line.indent == 0)
            isIndented_ = true;
        const auto in = open_.empty() ? std::nullopt : std::optional(open_.back().block);
        open_.push_back({structure_.blocks.size(), line.indent, certain});
        structure_.blocks.push_back({line.word, std::nullopt, in});
    }

    // In an indented text a keyword opens a block if something stands in it, or its "End" right below it. In one that
    // is not, it always does.
    [[nodiscard]] bool isCertainOpener(const StructureLine& line, const StructureLine* next, bool isDeeper) const {
        if (line.kind == StructureLine::Kind::Header)
            return true;
        if (line.kind != StructureLine::Kind::Keyword)
            return false;
        const bool isFlat = !open_.empty() && line.indent <= open_.back().indent;
        const bool isEmpty = next && next->kind == StructureLine::Kind::End && next->indent == line.indent;
        return isDeeper || isFlat || isEmpty;
    }

    void close(const StructureLine& end) {
        if (reading_ == Reading::ByPlace && !open_.empty() && !closesByPlace(end))
            return structure_.faults.push_back({StructureFault::Kind::EndTooMany, end.word});
        dropWhatWasNone(end.indent + 1);
        if (open_.empty())
            return closeNothing(end);
        structure_.blocks[open_.back().block].end = end.word;
        open_.pop_back();
    }

    // False where the "End" is deeper than the last block and fits none.
    bool closesByPlace(const StructureLine& end) {
        const bool fits =
            std::any_of(open_.begin(), open_.end(), [&end](const Open& open) { return open.indent == end.indent; });
        while (fits && open_.back().indent > end.indent)
            leaveUnclosed();
        return fits || end.indent <= open_.back().indent;
    }

    // Where no block is known to be open, one of the lines before may have opened one that nothing is known of. And in
    // a text without indentation any line inside the block before may have.
    void closeNothing(const StructureLine& end) {
        if (!mayBeOpen_ && isIndented_)
            structure_.faults.push_back({StructureFault::Kind::EndTooMany, end.word});
        mayBeOpen_ = false;
    }

    void leaveUnclosed() {
        if (open_.back().isCertain)
            structure_.faults.push_back(
                {StructureFault::Kind::NeverClosed, structure_.blocks[open_.back().block].opener});
        open_.pop_back();
    }

    // What was followed by deeper lines only by mistake: the text is back at `indent`, and no "End" came.
    void dropWhatWasNone(int indent) {
        while (!open_.empty() && !open_.back().isCertain && open_.back().indent >= indent)
            drop();
    }

    // It was no block. Whatever was taken to be inside it is closed, and is inside the one around it.
    void drop() {
        const std::size_t gone = open_.back().block;
        open_.pop_back();
        mayBeOpen_ = mayBeOpen_ || open_.empty();
        const std::optional<std::size_t> around = structure_.blocks[gone].in;
        structure_.blocks.erase(structure_.blocks.begin() + static_cast<std::ptrdiff_t>(gone));
        for (std::size_t block = gone; block < structure_.blocks.size(); ++block) {
            std::optional<std::size_t>& in = structure_.blocks[block].in;
            if (in == gone)
                in = around;
            else if (in && *in > gone)
                --*in;
        }
    }

    const std::vector<StructureLine>& lines_;
    const Reading reading_;
    BlockStructure structure_;
    std::vector<Open> open_;
    bool mayBeOpen_ = false; // since no block is known to be open a line at the left edge may have opened one
    bool isIndented_ = true; // what stands in the block at the left edge, the one open now or the last one
};

bool haveEqualFaults(const BlockStructure& left, const BlockStructure& right) {
    const auto unclosed = [](const BlockStructure& structure) {
        return std::count_if(structure.faults.begin(), structure.faults.end(), [](const StructureFault& fault) {
            return fault.kind == StructureFault::Kind::NeverClosed;
        });
    };
    return left.faults.size() == right.faults.size() && unclosed(left) == unclosed(right);
}

} // namespace

BlockStructure blockStructure(std::string_view region, bool isWhole) {
    const std::vector<StructureLine> lines = structureLines(region);
    BlockStructure indented = Walk(lines, Reading::Indented).through();
    if (indented.faults.empty())
        return indented;
    const bool isJudged = isWhole && !lines.empty() && lines.front().kind == StructureLine::Kind::Header;
    if (!isJudged) {
        indented.faults.clear();
        return indented;
    }
    for (const Reading reading : {Reading::Sloppy, Reading::KeywordOnly})
        if (BlockStructure other = Walk(lines, reading).through(); other.faults.empty())
            return other;
    // Something is wrong; where, the indentation tells.
    BlockStructure byPlace = Walk(lines, Reading::ByPlace).through();
    return haveEqualFaults(byPlace, indented) ? byPlace : indented;
}

BlockRegion blockRegion(const TextView& text, CaretPosition place) {
    const std::ptrdiff_t length = text.length();
    const std::ptrdiff_t at = std::clamp<std::ptrdiff_t>(place.value, 0, length);
    for (std::ptrdiff_t reach = 1 << 14;; reach *= 4) {
        reach = std::min(reach, mostOfRegion);
        const std::ptrdiff_t from = std::max<std::ptrdiff_t>(at - reach, 0);
        const std::ptrdiff_t to = std::min(at + reach, length);
        const std::string around = text.textAt(from, to - from);
        const HeadersAround headers = headersAround(around, static_cast<std::size_t>(at - from), from == 0);
        const bool isBegun = headers.before.has_value() || from == 0;
        const bool isEnded = headers.behind.has_value() || to == length;
        if ((!isBegun || !isEnded) && reach < mostOfRegion)
            continue;
        const auto begin = static_cast<std::ptrdiff_t>(headers.before.value_or(headers.firstLine));
        const auto end =
            static_cast<std::ptrdiff_t>(headers.behind.value_or(isEnded ? around.size() : headers.lastLine));
        return {{from + begin, std::max(end - begin, std::ptrdiff_t{0})}, isEnded};
    }
}

std::vector<std::size_t> blocksAround(const BlockStructure& structure, std::string_view region, std::ptrdiff_t place) {
    const auto lineStart = [region](std::ptrdiff_t at) {
        const std::size_t before =
            at == 0 ? region.npos : region.find_last_of("\r\n", static_cast<std::size_t>(at) - 1);
        return before == region.npos ? 0 : static_cast<std::ptrdiff_t>(before) + 1;
    };
    std::vector<std::size_t> around;
    for (std::size_t index = 0; index < structure.blocks.size(); ++index) {
        const StructureBlock& block = structure.blocks[index];
        const bool isBegun = lineStart(block.opener.start) <= place;
        const bool isEnded = block.end && lineStart(place) > block.end->start;
        // One that is never closed ends with the block around it.
        const bool isInside = !block.in || (!around.empty() && std::count(around.begin(), around.end(), *block.in) > 0);
        if (isBegun && !isEnded && isInside)
            around.push_back(index);
    }
    return around;
}

std::optional<std::size_t> blockAt(const BlockStructure& structure, std::ptrdiff_t place) {
    const auto holds = [place](TextRange word) { return place >= word.start && place <= word.start + word.length; };
    for (std::size_t index = 0; index < structure.blocks.size(); ++index) {
        const StructureBlock& block = structure.blocks[index];
        if (holds(block.opener) || (block.end && holds(*block.end)))
            return index;
    }
    return std::nullopt;
}

} // namespace blockhouse
