// An ordered list of strings counted from 1, duplicates allowed, entries kept exactly as given.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace blockhouse {

class EntryList {
public:
    [[nodiscard]] int count() const { return static_cast<int>(entries_.size()); }

    // 1-based; only for 1 <= index <= count().
    [[nodiscard]] const std::string& item(int index) const { return entries_.at(static_cast<std::size_t>(index - 1)); }

    void add(std::string entry) { entries_.push_back(std::move(entry)); }

    void clear() { entries_.clear(); }

    [[nodiscard]] auto begin() const { return entries_.begin(); }

    [[nodiscard]] auto end() const { return entries_.end(); }

    bool operator==(const EntryList&) const = default;

private:
    std::vector<std::string> entries_;
};

} // namespace blockhouse
