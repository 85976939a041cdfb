// A selection may begin between a CR and its LF, but a caret must not stand there. So a selection start that is set
// there is remembered until the length follows: it holds as long as the caret stays where it was put instead.
#pragma once

#include "platform/richtext/TextEngine.h"
#include "platform/text/units.h"

#include <optional>

namespace blockhouse {

class RequestedStart {
public:
    void remember(CaretPosition character, BytePosition caret) { request_ = Request{character, caret}; }

    // The character that was asked for, or nothing where that is the caret's own place.
    [[nodiscard]] std::optional<CaretPosition> whileCaretIsAt(BytePosition caret) const {
        return request_ && request_->caret == caret ? std::optional(request_->character) : std::nullopt;
    }

    void forget() { request_.reset(); }

private:
    struct Request {
        CaretPosition character;
        BytePosition caret;
    };

    std::optional<Request> request_;
};

} // namespace blockhouse
