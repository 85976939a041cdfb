#include "platform/richtext/UncolouredText.h"

#include "platform/richtext/line_ends.h"
#include "platform/text/codepage.h"

#include <algorithm>
#include <iterator>

namespace blockhouse {
namespace {

// Whether a paragraph ends behind the byte.
bool endsParagraph(std::string_view text, std::size_t at) {
    return text[at] == '\n' || (text[at] == '\r' && (at + 1 == text.size() || text[at + 1] != '\n'));
}

} // namespace

void UncolouredText::begin(std::shared_ptr<const ColouringRule> rule) {
    rule_ = std::move(rule);
    spans_.clear();
    if (const BytePosition length = engine_.length(); length > 0)
        spans_.push_back({0, length});
}

void UncolouredText::colour(ByteSpan span) {
    auto next = std::partition_point(spans_.begin(), spans_.end(),
                                     [&](const ByteSpan& each) { return each.last <= span.first; });
    while (next != spans_.end() && next->first < span.last) {
        const ByteSpan within = *next;
        const ByteSpan piece = pieceFor(span, within);
        writeStyles(piece);
        next->first = piece.last;
        if (within.first < piece.first)
            next = std::next(spans_.insert(next, {within.first, piece.first}));
        if (next->length() == 0)
            next = spans_.erase(next);
    }
}

// The first paragraph that is wanted, and further ones.
ByteSpan UncolouredText::pieceFor(ByteSpan wanted, ByteSpan within) const {
    const std::string_view text = engine_.text(within);
    std::size_t first = static_cast<std::size_t>(std::max<BytePosition>(wanted.first - within.first, 0));
    while (first > 0 && !endsParagraph(text, first - 1))
        --first;
    std::size_t last = std::min(first + rule_->leastPiece(), text.size());
    while (last < text.size() && !endsParagraph(text, last - 1))
        ++last;
    return {within.first + static_cast<BytePosition>(first), within.first + static_cast<BytePosition>(last)};
}

void UncolouredText::writeStyles(ByteSpan paragraphs) {
    const std::string_view utf8 = engine_.text(paragraphs);
    const std::string decoded = codepage::isAscii(utf8) ? std::string() : codepage::fromUtf8(utf8).bytes;
    const std::string_view text = decoded.empty() ? utf8 : decoded;
    std::vector<unsigned char> styles(utf8.size(), 0);
    std::size_t character = 0;
    auto at = styles.begin();
    for (const rtf::ColourRun& run : rule_->runsOf(text, paragraphs.first == 0)) {
        const std::string_view covered = text.substr(character, run.length);
        const std::size_t bytes = decoded.empty() ? covered.size() : codepage::utf8Length(covered);
        const auto end = at + static_cast<std::ptrdiff_t>(bytes);
        std::fill(at, end, static_cast<unsigned char>(numbers_.styleFor({run.text, run.background})));
        character += covered.size();
        at = end;
    }
    breakLongRuns(utf8, styles);
    engine_.writeStyles(paragraphs.first, styles);
}

// At every repaint the engine walks through the whole run that it begins to draw, however little of it is in view.
void UncolouredText::breakLongRuns(std::string_view utf8, std::span<unsigned char> styles) const {
    constexpr std::size_t longest = 4096;
    if (!hasLineLongerThan(utf8, longest))
        return;
    for (std::size_t lineStart = 0; lineStart < utf8.size();) {
        const std::size_t end = std::min(utf8.find_first_of("\r\n", lineStart), utf8.size());
        for (std::size_t block = lineStart + longest; block < end; block += 2 * longest) {
            std::size_t at = block;
            const auto isWithinCharacter = [&](std::size_t byte) { return byte < end && (utf8[byte] & 0xC0) == 0x80; };
            while (isWithinCharacter(at))
                ++at;
            for (; at < end && (at < block + longest || isWithinCharacter(at)); ++at)
                styles[at] = static_cast<unsigned char>(numbers_.twinOf(styles[at]));
        }
        lineStart = std::max(end, lineStart) + 1;
    }
}

void UncolouredText::textMoves(BytePosition at, std::ptrdiff_t length) {
    for (auto each = spans_.rbegin(); each != spans_.rend() && each->first >= at; ++each) {
        each->first += length;
        each->last += length;
    }
}

} // namespace blockhouse
