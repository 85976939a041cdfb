// Finds a text without regard to case in the documents' code page, at the speed of memory: neither side is copied.
#pragma once

#include <string_view>
#include <vector>

namespace blockhouse {

class FoldedSearch {
public:
    // An empty needle is found nowhere.
    explicit FoldedSearch(std::string_view needle);

    // 0-based offset of the first occurrence that lies wholly in [from, haystack.size()), or npos.
    [[nodiscard]] std::size_t find(std::string_view haystack, std::size_t from = 0) const;
    // 0-based offset of the last occurrence that lies wholly in the haystack, or npos.
    [[nodiscard]] std::size_t findLast(std::string_view haystack) const;

    [[nodiscard]] std::size_t needleSize() const { return needle_.size(); }

    static constexpr std::size_t npos = std::string_view::npos;

private:
    [[nodiscard]] bool matchesAt(const char* text) const;

    // The byte and its other-case twin (the same byte twice when it has none).
    struct Variants {
        char lower;
        char upper;
    };

    std::vector<Variants> needle_;
};

} // namespace blockhouse
