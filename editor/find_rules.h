// What the find panel looks for and steps through, and what its "Replace All" replaces.
#pragma once

#include "platform/text/units.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace blockhouse {

// The text to find; a whole word is one that a blank follows, so the blank is added. Empty, and so found nowhere, for
// an empty `text`.
[[nodiscard]] std::string searchString(std::string_view text, bool wholeWord);

// Every place that stepping through `document` from its start finds, in order, without the added blank. Each search
// goes on right after the place before, so that the places do not overlap. Ignores case.
[[nodiscard]] std::vector<TextRange> replaceableRanges(std::string_view document, std::string_view text,
                                                       bool wholeWord);

// The places of replaceableRanges(), kept to step from one to another and to say which of how many a place is.
class Occurrences {
public:
    Occurrences(std::string_view document, std::string_view text, bool wholeWord);

    struct Step {
        CaretPosition start;
        std::size_t number = 0; // counted from 1
        bool wentRound = false; // an end of the document lies on the way

        bool operator==(const Step&) const = default;
    };

    // The first place at or behind `from`, or else the first of all. Nothing where there is no place.
    [[nodiscard]] std::optional<Step> next(CaretPosition from) const;
    // The last place that starts before `from`, or else the last of all.
    [[nodiscard]] std::optional<Step> previous(CaretPosition from) const;

    [[nodiscard]] std::size_t count() const { return starts_.size(); }

    // How many places start at or before `start`: the number of the place that starts there.
    [[nodiscard]] std::size_t numberAt(CaretPosition start) const;

private:
    // Half the size of a position: a letter that is looked for can have millions of places.
    std::vector<std::uint32_t> starts_;
};

// Where `text` stands in `document`, ignoring case, nearest to `from`; the earlier of two that are as near. Places may
// overlap. Nothing where it stands nowhere.
[[nodiscard]] std::optional<CaretPosition> nearestOccurrence(std::string_view document, std::string_view text,
                                                             CaretPosition from);

} // namespace blockhouse
