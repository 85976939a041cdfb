#include "placement/mark_board.h"

#include <algorithm>
#include <cmath>

namespace blockhouse {

namespace {

// How far a mark's top-left corner may lie from the pointer to be hit.
constexpr double reachSideways = 35;
constexpr double reachUp = 40;
constexpr double reachDown = 45;

} // namespace

void MarkBoard::showStructures(const std::vector<ScannedStructure>& structures) {
    refill(structures.size());
    for (std::size_t i = 0; i < structures.size(); ++i) {
        marks_[i] = {structures[i].location, structures[i].colour, true};
        labels_[i] = {structures[i].entry.name, structures[i].location + labelOffset, false};
    }
    for (std::size_t i = structures.size(); i < marks_.size(); ++i) {
        marks_[i].visible = false;
        labels_[i].visible = false;
    }
}

void MarkBoard::refill(std::size_t count) {
    grow(count);
    structureCount_ = count;
    selected_.reset();
}

bool MarkBoard::select(std::size_t index) {
    if (index >= structureCount_) {
        return false;
    }
    selected_ = index;
    bool changed = false;
    for (std::size_t i = 0; i < labels_.size(); ++i) {
        changed |= showLabel(i, i == index);
    }
    return changed;
}

MarkBoard::Press MarkBoard::press(CanvasPoint pointer) {
    const std::optional<std::size_t> hit = markNear(pointer);
    return {hit, hit && select(*hit)};
}

bool MarkBoard::move(CanvasPoint pointer, MouseButtons held) {
    bool changed = false;
    if (selected_ && held == leftButton) {
        changed = place(*selected_, pointer);
    }
    const std::optional<std::size_t> hit = markNear(pointer);
    for (std::size_t i = 0; i < hit.value_or(structureCount_); ++i) {
        changed |= showLabel(i, false);
    }
    if (hit) {
        changed |= showLabel(*hit, true);
    }
    return changed;
}

bool MarkBoard::put(std::size_t index, CanvasPoint topLeft) {
    return index < structureCount_ && place(index, topLeft);
}

std::optional<MarkBoard::Drop> MarkBoard::release(CanvasPoint pointer) const {
    if (!selected_) {
        return std::nullopt;
    }
    return Drop{*selected_, pointer};
}

void MarkBoard::grow(std::size_t count) {
    marks_.resize(std::max(count, marks_.size()));
    labels_.resize(marks_.size());
}

std::optional<std::size_t> MarkBoard::markNear(CanvasPoint pointer) const {
    const double x = std::floor(pointer.x.value);
    const double y = std::floor(pointer.y.value);
    for (std::size_t i = 0; i < structureCount_; ++i) {
        const double left = marks_[i].topLeft.x.value;
        const double top = marks_[i].topLeft.y.value;
        if (x - reachSideways <= left && left <= x + reachSideways && y - reachUp <= top && top <= y + reachDown) {
            return i;
        }
    }
    return std::nullopt;
}

bool MarkBoard::place(std::size_t index, CanvasPoint topLeft) {
    Mark& mark = marks_[index];
    MarkLabel& label = labels_[index];
    const CanvasPoint labelCorner = topLeft + labelOffset;
    const bool changed = (mark.visible && mark.topLeft != topLeft) || (label.visible && label.topLeft != labelCorner);
    mark.topLeft = topLeft;
    label.topLeft = labelCorner;
    return changed;
}

bool MarkBoard::showLabel(std::size_t index, bool visible) {
    const bool changed = labels_[index].visible != visible;
    labels_[index].visible = visible;
    return changed;
}

} // namespace blockhouse
