// The drops of a file that is open in the placement editor, to be taken back and done again.
#pragma once

#include "placement/canvas_units.h"
#include "placement/location_line.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace blockhouse {

struct DroppedStructure {
    int side = -1;             // its place in the list of sides; -1 when none was chosen
    std::size_t structure = 0; // and in that side's structures
    std::string name;
    CanvasPoint markBefore;
    CanvasPoint markAfter;
    ReplacedLine line;
};

class DropHistory {
public:
    // A drop that has been written into the text. What was taken back can no longer be done again.
    void add(DroppedStructure drop);

    // Changes the text, which must be as the last call left it. Nothing when there is no drop to take back, or to do
    // again.
    [[nodiscard]] std::optional<DroppedStructure> undo(std::string& text);
    [[nodiscard]] std::optional<DroppedStructure> redo(std::string& text);

    // Forgets every drop; the text is another one, and its file holds it.
    void clear();

    // The file holds the text as it is now.
    void saved() { saved_ = done_; }

    [[nodiscard]] bool isSaved() const { return saved_ == done_; }

private:
    std::vector<DroppedStructure> drops_;
    std::size_t done_ = 0;                  // of drops_; those behind them were taken back
    std::optional<std::size_t> saved_ = 0U; // done_ as it was; nothing when no undo or redo leads there any more
};

} // namespace blockhouse
