// The texts closed last without being saved, from all windows.
#pragma once

#include "editor/ClosedText.h"
#include "placement/UnsavedDrops.h"

#include <deque>
#include <optional>
#include <utility>
#include <variant>

namespace blockhouse {

class ClosedTexts {
public:
    using Closed = std::variant<ClosedText, UnsavedDrops>;

    static constexpr std::size_t most = 20;

    // When there are more than `most`, removes and returns the oldest.
    std::optional<Closed> keep(Closed text) {
        texts_.push_back(std::move(text));
        if (texts_.size() <= most)
            return std::nullopt;
        std::optional<Closed> gone(std::move(texts_.front()));
        texts_.pop_front();
        return gone;
    }

    // Removes and returns the one closed last.
    [[nodiscard]] std::optional<Closed> takeLast() {
        if (texts_.empty())
            return std::nullopt;
        std::optional<Closed> last(std::move(texts_.back()));
        texts_.pop_back();
        return last;
    }

    // Null when there is none.
    [[nodiscard]] const Closed* last() const { return texts_.empty() ? nullptr : &texts_.back(); }

    [[nodiscard]] std::size_t count() const { return texts_.size(); }

private:
    std::deque<Closed> texts_;
};

} // namespace blockhouse
