// What the text engine's undo history does not keep: the styles of the text that undo and redo bring back.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace blockhouse {

struct StyleRun {
    std::uint32_t length = 0;
    unsigned char style = 0;

    bool operator==(const StyleRun&) const = default;
};

using StyleRuns = std::vector<StyleRun>;

// Adds `length` more bytes of `style`, lengthening the last run where it can.
void appendRun(StyleRuns& runs, std::uint32_t length, unsigned char style);
[[nodiscard]] StyleRuns runsOf(std::span<const unsigned char> styles);

// One record per single edit of the text engine, in its order. Tell every edit before it happens.
class StyleHistory {
public:
    void clear();

    // The user's own edits; what had been undone before can no longer be redone.
    void inserting();
    void deleting(StyleRuns styles);

    // Undo or redo takes out text: keeps the styles for when it comes back.
    void undoRemoves(StyleRuns styles);
    void redoRemoves(StyleRuns styles);
    // Undo or redo brings back text that has these styles.
    [[nodiscard]] StyleRuns undoRestores();
    [[nodiscard]] StyleRuns redoRestores();

private:
    void record(StyleRuns styles);

    std::vector<StyleRuns> edits_; // the styles of the text that the edit inserted or deleted
    std::size_t done_ = 0;         // edits before this one are done, the others undone
};

} // namespace blockhouse
