#include "platform/richtext/StyleHistory.h"

#include <utility>

namespace blockhouse {

void appendRun(StyleRuns& runs, std::uint32_t length, unsigned char style) {
    if (length == 0)
        return;
    if (!runs.empty() && runs.back().style == style)
        runs.back().length += length;
    else
        runs.push_back({length, style});
}

StyleRuns runsOf(std::span<const unsigned char> styles) {
    StyleRuns runs;
    for (const unsigned char style : styles)
        appendRun(runs, 1, style);
    return runs;
}

void StyleHistory::clear() {
    edits_.clear();
    done_ = 0;
}

void StyleHistory::inserting() {
    record({});
}

void StyleHistory::deleting(StyleRuns styles) {
    record(std::move(styles));
}

void StyleHistory::undoRemoves(StyleRuns styles) {
    if (done_ > 0)
        edits_[--done_] = std::move(styles);
}

void StyleHistory::redoRemoves(StyleRuns styles) {
    if (done_ < edits_.size())
        edits_[done_++] = std::move(styles);
}

StyleRuns StyleHistory::undoRestores() {
    return done_ > 0 ? edits_[--done_] : StyleRuns{};
}

StyleRuns StyleHistory::redoRestores() {
    return done_ < edits_.size() ? edits_[done_++] : StyleRuns{};
}

void StyleHistory::record(StyleRuns styles) {
    edits_.resize(done_);
    edits_.push_back(std::move(styles));
    ++done_;
}

} // namespace blockhouse
