// A key press that may be a menu shortcut is offered before it is sent, and again when no menu takes it. What the
// first offer decided holds for the second, so that the key-down hook sees every press once.
#pragma once

#include <optional>
#include <utility>

namespace blockhouse {

class SeenPress {
public:
    void remember(int key, bool cancelled) { seen_ = Seen{key, cancelled}; }

    // Whether this press was cancelled; nothing if it has not been seen. The answer is given once: keys repeat.
    [[nodiscard]] std::optional<bool> take(int key) {
        const auto seen = std::exchange(seen_, std::nullopt);
        return seen && seen->key == key ? std::optional(seen->cancelled) : std::nullopt;
    }

    void forget() { seen_.reset(); }

private:
    struct Seen {
        int key;
        bool cancelled;
    };

    std::optional<Seen> seen_;
};

} // namespace blockhouse
