#include "editor/typing_assistance.h"

#include "platform/text/codepage.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace blockhouse {

namespace {

// What is looked for is mostly near: small pieces first.
constexpr std::ptrdiff_t firstPiece = 256;
constexpr std::ptrdiff_t largestPiece = 1 << 16;

struct Spelling {
    std::string_view typed; // lowered
    std::string_view written;
};

constexpr std::array<Spelling, 12> spellings{{
    {"end", "End"},
    {"conditionstate", "ConditionState"},
    {"armorset", "ArmorSet"},
    {"weaponset", "WeaponSet"},
    {"body", "Body"},
    {"behavior", "Behavior"},
    {"attackareadecal", "AttackAreaDecal"},
    {"targetingreticledecal", "TargetIngreticleDecal"},
    {"object", "Object"},
    {"defaultconditionstate", "DefaultConditionState"},
    {"unitspecificsounds", "UnitSpecificSounds"},
    {"turret", "Turret"},
}};

constexpr std::size_t longestKeyword =
    std::max_element(spellings.begin(), spellings.end(), [](const Spelling& left, const Spelling& right) {
        return left.typed.size() < right.typed.size();
    })->typed.size();

constexpr TextRange between(std::ptrdiff_t start, std::ptrdiff_t end) {
    return {start, end - start};
}

// The last character before `end` that is one of `wanted`, or -1.
std::ptrdiff_t findBackwards(const TextView& text, std::ptrdiff_t end, std::string_view wanted) {
    for (std::ptrdiff_t piece = firstPiece; end > 0; piece = std::min(2 * piece, largestPiece)) {
        const std::ptrdiff_t start = std::max<std::ptrdiff_t>(end - piece, 0);
        const std::size_t found = text.textAt(start, end - start).find_last_of(wanted);
        if (found != std::string::npos) {
            return start + static_cast<std::ptrdiff_t>(found);
        }
        end = start;
    }
    return -1;
}

// The first line-break character at or after `start`, or the text's length.
std::ptrdiff_t findLineBreak(const TextView& text, std::ptrdiff_t start) {
    const std::ptrdiff_t length = text.length();
    for (std::ptrdiff_t piece = firstPiece; start < length; piece = std::min(2 * piece, largestPiece)) {
        const std::ptrdiff_t end = std::min(start + piece, length);
        const std::size_t found = text.textAt(start, end - start).find_first_of("\r\n");
        if (found != std::string::npos) {
            return start + static_cast<std::ptrdiff_t>(found);
        }
        start = end;
    }
    return length;
}

bool characterIs(const TextView& text, std::ptrdiff_t position, char character) {
    return position >= 0 && position < text.length() && text.textAt(position, 1).front() == character;
}

// From `start` to the end of its line.
TextRange restOfLine(const TextView& text, std::ptrdiff_t start) {
    // Between CR and LF the next line has begun already: its LF ends nothing.
    const bool insideLineBreak = characterIs(text, start - 1, '\r') && characterIs(text, start, '\n');
    const std::ptrdiff_t lineBreak = findLineBreak(text, insideLineBreak ? start + 1 : start);
    return between(start, characterIs(text, lineBreak, '\r') ? lineBreak + 1 : lineBreak);
}

const Spelling* spellingOf(std::string_view word) {
    const std::string lowered = codepage::lowered(word);
    const auto* const found = std::find_if(spellings.begin(), spellings.end(),
                                           [&](const Spelling& spelling) { return spelling.typed == lowered; });
    return found == spellings.end() ? nullptr : found;
}

TextRange wordBefore(CaretPosition caret, bool commentEnded, const TextView& text) {
    const std::ptrdiff_t comment = commentEnded ? findBackwards(text, caret.value, ";") : -1;
    return between(comment >= 0 ? comment : findBackwards(text, caret.value, " \t\r\n") + 1, caret.value);
}

// Only the colours change: an undo step that brings back the same text would be in the user's way.
void recolour(TextRange range, Colour colour, std::vector<TextBoxAction>& actions) {
    actions.emplace_back(SetTextColor{range, colour});
    actions.emplace_back(SetSelStart{{range.start + range.length}});
    actions.emplace_back(SetSelColor{colour});
}

void finishWord(CaretPosition caret, bool commentEnded, const TextView& text, std::vector<TextBoxAction>& actions) {
    const TextRange range = wordBefore(caret, commentEnded, text);
    if (range.length > 0 && characterIs(text, range.start, ';')) {
        recolour(range, TypedCommentColor, actions);
        return;
    }
    if (static_cast<std::size_t>(range.length) > longestKeyword) {
        return;
    }
    const std::string word = text.textAt(range.start, range.length);
    const Spelling* const spelling = spellingOf(word);
    if (spelling == nullptr) {
        return;
    }
    if (word == spelling->written) {
        recolour(range, TypedKeywordColor, actions);
    } else {
        actions.emplace_back(SetText{range, std::string(spelling->written), TypedKeywordColor});
    }
}

// Coming back from a selection empties it, so that these two leave the caret alone.
void colourComment(CaretPosition commentStart, CaretPosition caret, const TextView& text,
                   std::vector<TextBoxAction>& actions) {
    const std::ptrdiff_t start = std::min(commentStart.value, text.length());
    actions.emplace_back(SetTextColor{restOfLine(text, start), TypedCommentColor});
    actions.emplace_back(SetSelStart{caret});
    actions.emplace_back(SetSelColor{TypedTextColor});
}

void uncolourComment(CaretPosition caret, const TextView& text, std::vector<TextBoxAction>& actions) {
    actions.emplace_back(SetTextColor{restOfLine(text, caret.value), TypedTextColor});
    actions.emplace_back(SetSelStart{caret});
}

} // namespace

KeyAnswer TypingAssistance::keyPressed(Key key, TextRange selection, const TextView& text) {
    const CaretPosition caret{selection.start};
    KeyAnswer answer;
    answer.actions.emplace_back(SetSelColor{TypedTextColor});
    switch (key) {
    case Key::Tab:
        answer.actions.emplace_back(SetText{selection, "\t", TypedTextColor});
        answer.cancelKey = true;
        break;
    case Key::Semicolon:
        commentMode_ = true;
        commentStart_ = caret;
        break;
    case Key::Enter:
        finishWord(caret, std::exchange(commentMode_, false), text, answer.actions);
        break;
    case Key::Space:
        if (!commentMode_) {
            finishWord(caret, false, text, answer.actions);
        }
        break;
    case Key::Arrow:
        if (std::exchange(commentMode_, false)) {
            colourComment(commentStart_, caret, text, answer.actions);
        }
        break;
    case Key::Backspace:
        if (characterIs(text, caret.value - 1, ';')) {
            uncolourComment(caret, text, answer.actions);
        }
        break;
    case Key::Other:
        break;
    }
    return answer;
}

} // namespace blockhouse
