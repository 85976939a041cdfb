#include "platform/richtext/CharacterIndex.h"

#include "platform/text/codepage.h"

#include <Qsci/qsciscintillabase.h>

#include <algorithm>
#include <utility>

namespace blockhouse {
namespace {

using Sci = QsciScintillaBase;

constexpr int countedCharacters = Sci::SC_LINECHARACTERINDEX_UTF32;

} // namespace

CharacterIndex::CharacterIndex(TextEngine engine) : engine_(engine) {
    engine_.tell(Sci::SCI_SETCODEPAGE, Sci::SC_CP_UTF8);
}

void CharacterIndex::count() {
    engine_.tell(Sci::SCI_ALLOCATELINECHARACTERINDEX, countedCharacters);
    counts_ = true;
}

void CharacterIndex::stopCounting() {
    if (counts_)
        engine_.tell(Sci::SCI_RELEASELINECHARACTERINDEX, countedCharacters);
    counts_ = false;
}

void CharacterIndex::textGoes() {
    stopCounting();
    stale_ = false;
}

void CharacterIndex::textReplaced(bool everyCharacterIsAscii) {
    if (!everyCharacterIsAscii)
        count();
}

std::ptrdiff_t CharacterIndex::length() const {
    if (!counts_)
        return engine_.length();
    return engine_.ask(Sci::SCI_INDEXPOSITIONFROMLINE, engine_.ask(Sci::SCI_GETLINECOUNT), countedCharacters);
}

bool CharacterIndex::everyCharacterIsOneByte() const {
    return length() == engine_.length();
}

BytePosition CharacterIndex::byteOf(CaretPosition character) const {
    const std::ptrdiff_t characters = length();
    const auto within = std::clamp<CaretPosition>(character, 0, characters);
    return characters == engine_.length() ? within.value : byteByLines(within);
}

BytePosition CharacterIndex::byteByLines(CaretPosition character) const {
    const std::ptrdiff_t line = engine_.ask(Sci::SCI_LINEFROMINDEXPOSITION, character.value, countedCharacters);
    const CaretPosition lineStart = engine_.ask(Sci::SCI_INDEXPOSITIONFROMLINE, line, countedCharacters);
    return engine_.ask(Sci::SCI_POSITIONRELATIVE, engine_.ask(Sci::SCI_POSITIONFROMLINE, line), character - lineStart);
}

CaretPosition CharacterIndex::characterOf(BytePosition byte) const {
    if (everyCharacterIsOneByte())
        return byte;
    const std::ptrdiff_t line = engine_.ask(Sci::SCI_LINEFROMPOSITION, byte);
    return engine_.ask(Sci::SCI_INDEXPOSITIONFROMLINE, line, countedCharacters) +
           engine_.ask(Sci::SCI_COUNTCHARACTERS, engine_.ask(Sci::SCI_POSITIONFROMLINE, line), byte);
}

std::vector<ByteSpan> CharacterIndex::spansOf(std::span<const TextRange> ranges) const {
    const std::ptrdiff_t characters = length();
    const bool oneByteEach = characters == engine_.length();
    const auto byteAt = [&](CaretPosition character) {
        const auto within = std::clamp<CaretPosition>(character, 0, characters);
        return oneByteEach ? within.value : byteByLines(within);
    };
    std::vector<ByteSpan> spans;
    spans.reserve(ranges.size());
    for (const TextRange& range : ranges) {
        const ByteSpan span{byteAt(range.start), byteAt(range.start + range.length)};
        if (span.first >= span.last)
            continue;
        if (!spans.empty() && span.first <= spans.back().last)
            spans.back().last = std::max(spans.back().last, span.last);
        else
            spans.push_back(span);
    }
    return spans;
}

void CharacterIndex::inserting(BytePosition at) {
    if (!counts_)
        return;
    stale_ = stale_ || engine_.isInsideLineBreak(at);
}

void CharacterIndex::inserted(ByteSpan span) {
    if (!counts_) {
        if (!codepage::isAscii(engine_.text(span)))
            count();
        return;
    }
    stale_ = stale_ || engine_.isInsideLineBreak(span.first) || engine_.isInsideLineBreak(span.last);
}

void CharacterIndex::deleting(ByteSpan span) {
    if (!counts_)
        return;
    const bool joins = span.first > 0 && engine_.ask(Sci::SCI_GETCHARAT, span.first - 1) == '\r' &&
                       engine_.ask(Sci::SCI_GETCHARAT, span.last) == '\n';
    stale_ = stale_ || joins || engine_.isInsideLineBreak(span.first) || engine_.isInsideLineBreak(span.last);
}

void CharacterIndex::settle() {
    if (!std::exchange(stale_, false))
        return;
    stopCounting();
    count();
}

} // namespace blockhouse
