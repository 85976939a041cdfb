#include "placement/DropHistory.h"

#include <utility>

namespace blockhouse {

void DropHistory::add(DroppedStructure drop) {
    if (saved_ && *saved_ > done_)
        saved_.reset();
    drops_.resize(done_);
    drops_.push_back(std::move(drop));
    done_ = drops_.size();
}

std::optional<DroppedStructure> DropHistory::undo(std::string& text) {
    if (done_ == 0)
        return std::nullopt;
    const DroppedStructure& drop = drops_[--done_];
    text.replace(drop.line.start, drop.line.after.size(), drop.line.before);
    return drop;
}

std::optional<DroppedStructure> DropHistory::redo(std::string& text) {
    if (done_ == drops_.size())
        return std::nullopt;
    const DroppedStructure& drop = drops_[done_++];
    text.replace(drop.line.start, drop.line.before.size(), drop.line.after);
    return drop;
}

void DropHistory::clear() {
    *this = {};
}

} // namespace blockhouse
