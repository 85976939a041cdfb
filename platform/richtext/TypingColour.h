// The colour that the next typed text has: chosen for a caret, it holds as long as the caret stays there.
#pragma once

#include "platform/richtext/TextEngine.h"
#include "platform/text/Colour.h"

#include <optional>

namespace blockhouse {

class TypingColour {
public:
    void choose(BytePosition caret, Colour colour) { chosen_ = Choice{caret, colour}; }

    // Nothing where the text before decides.
    [[nodiscard]] std::optional<Colour> at(BytePosition caret) const {
        return chosen_ && chosen_->caret == caret ? std::optional(chosen_->colour) : std::nullopt;
    }

    // Tell it the caret after everything that may have moved it: a caret that comes back finds no colour.
    void caretIsAt(BytePosition caret) {
        if (!at(caret))
            chosen_.reset();
    }

    void forget() { chosen_.reset(); }

private:
    struct Choice {
        BytePosition caret;
        Colour colour;
    };

    std::optional<Choice> chosen_;
};

} // namespace blockhouse
