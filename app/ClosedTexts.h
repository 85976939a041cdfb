// The texts that were closed without being saved, the last ones of all windows.
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

    // Beyond the most, the one kept longest goes.
    void keep(Closed text) {
        texts_.push_back(std::move(text));
        if (texts_.size() > most)
            texts_.pop_front();
    }

    // The one closed last, which is kept no longer.
    [[nodiscard]] std::optional<Closed> takeLast() {
        if (texts_.empty())
            return std::nullopt;
        std::optional<Closed> last(std::move(texts_.back()));
        texts_.pop_back();
        return last;
    }

private:
    std::deque<Closed> texts_;
};

} // namespace blockhouse
