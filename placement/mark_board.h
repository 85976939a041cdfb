// What lies on the placement canvas and how it answers the mouse: a mark and a name label for each structure of the
// chosen side, the selected structure, and the drag. It paints nothing; the canvas paints from it.
//
// Marks and labels are pools that only grow: entry i of the structure list has mark i and label i, and what lies
// beyond the list takes no part in the mouse handling.
#pragma once

#include "placement/build_list.h"
#include "placement/canvas_units.h"
#include "platform/text/Colour.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace blockhouse {

struct Mark {
    CanvasPoint topLeft;
    Colour colour = 0;
    bool visible = false;
};

struct MarkLabel {
    std::string name;
    CanvasPoint topLeft = labelOffset;
    bool visible = false;
};

// The mouse buttons held, added up.
struct MouseButtons {
    int value = 0;

    bool operator==(const MouseButtons&) const = default;
};

inline constexpr MouseButtons noButton{0};
inline constexpr MouseButtons leftButton{1};
inline constexpr MouseButtons rightButton{2};
inline constexpr MouseButtons middleButton{4};

class MarkBoard {
public:
    // Not every hit changes what is seen: the label may be shown already.
    struct Press {
        std::optional<std::size_t> hit; // which is now the selected one
        bool changed = false;
    };

    // The structure `index` is to be written to `point`.
    struct Drop {
        std::size_t index = 0;
        CanvasPoint point;

        bool operator==(const Drop&) const = default;
    };

    MarkBoard() { grow(1); }

    // A side was chosen: shows its structures' marks and hides all others, and every label. Nothing is selected.
    void showStructures(const std::vector<ScannedStructure>& structures);
    // The list was read anew and has `count` entries. Marks and labels stay as they are, new ones are hidden. Nothing
    // is selected, until select().
    void refill(std::size_t count);

    // Those that follow tell whether anything that is seen has changed.

    // Shows the label of an entry and hides all others. An index beyond the list changes nothing.
    [[nodiscard]] bool select(std::size_t index);
    // Any button: selects the first mark near the pointer. Where there is none the selection stays.
    [[nodiscard]] Press press(CanvasPoint pointer);
    // While the left button alone is held the selected mark goes to the pointer, wherever the press was. Then shows
    // the label of the first mark near the pointer and hides those of the marks before it, or of all.
    [[nodiscard]] bool move(CanvasPoint pointer, MouseButtons held);
    // A drop was taken back, or done again: the mark stands there. An index beyond the list changes nothing.
    [[nodiscard]] bool put(std::size_t index, CanvasPoint topLeft);
    // Any button, moved or not; nothing when nothing is selected.
    [[nodiscard]] std::optional<Drop> release(CanvasPoint pointer) const;

    // The whole pools, of one size.
    [[nodiscard]] const std::vector<Mark>& marks() const { return marks_; }

    [[nodiscard]] const std::vector<MarkLabel>& labels() const { return labels_; }

    [[nodiscard]] std::optional<std::size_t> selected() const { return selected_; }

private:
    void grow(std::size_t count);
    [[nodiscard]] std::optional<std::size_t> markNear(CanvasPoint pointer) const;
    bool place(std::size_t index, CanvasPoint topLeft);
    bool showLabel(std::size_t index, bool visible);

    std::vector<Mark> marks_;
    std::vector<MarkLabel> labels_;
    std::size_t structureCount_ = 0;
    std::optional<std::size_t> selected_;
};

} // namespace blockhouse
