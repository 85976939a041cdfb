// Helps while the user types: block keywords get their canonical spelling, comments their colour, Tab inserts a tab.
//
// The rules know no text box. They are told of a key press before the box acts on it, look at the text through a small
// view, and answer with what is to be done to the box. They read no further than the word, the line or the comment at
// the caret reaches, however long the text is; only Enter after a comment whose ";" has been deleted looks further
// back, up to the ";" before that.
#pragma once

#include "editor/TextView.h"
#include "platform/text/Colour.h"
#include "platform/text/units.h"

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

namespace blockhouse {

inline constexpr Colour TypedTextColor = rgb(0, 0, 0);
inline constexpr Colour TypedKeywordColor = rgb(0, 0, 255);
inline constexpr Colour TypedCommentColor = rgb(0, 128, 0);

// Semicolon is the key press that types ";", whatever key that is; Arrow is any of the four arrow keys.
enum class Key { Tab, Semicolon, Enter, Arrow, Backspace, Space, Other };

// --- What is done to the text box, each as the box's call of the same name ------------------------------------------

// Colours the selection, or without one what is typed next.
struct SetSelColor {
    Colour colour;

    bool operator==(const SetSelColor&) const = default;
};

// Selection, caret and typing colour stay as they are. The range may be empty.
struct SetTextColor {
    TextRange range;
    Colour colour;

    bool operator==(const SetTextColor&) const = default;
};

// Empties the selection.
struct SetSelStart {
    CaretPosition caret;

    bool operator==(const SetSelStart&) const = default;
};

// The range, empty or not, becomes `text` in that colour; the caret ends after it, with nothing selected, and types on
// in that colour. One undo step.
struct SetText {
    TextRange range;
    std::string text;
    Colour colour;

    bool operator==(const SetText&) const = default;
};

using TextBoxAction = std::variant<SetSelColor, SetTextColor, SetSelStart, SetText>;

struct KeyAnswer {
    std::vector<TextBoxAction> actions; // in the order in which they are carried out
    bool cancelKey = false;             // the box does nothing more for the key
};

class TypingAssistance {
public:
    // To be called for every key press, before the box acts on it; `text` is the text before the key press. The caret
    // is the selection's start; an empty selection has length 0.
    //
    // A line ends with CR LF, a lone CR or a lone LF, and the colour of a line's rest covers its CR but not its LF.
    [[nodiscard]] KeyAnswer keyPressed(Key key, TextRange selection, const TextView& text);

    // True from ";" on until Enter or an arrow key.
    [[nodiscard]] bool Commentmode() const { return commentMode_; }

    // The caret at the last ";" key.
    [[nodiscard]] CaretPosition Commentstart() const { return commentStart_; }

private:
    bool commentMode_ = false;
    CaretPosition commentStart_;
};

} // namespace blockhouse
