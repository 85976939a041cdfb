// What stays of an editor window that was closed with text that its file does not hold.
#pragma once

#include "platform/system/FileStamp.h"
#include "platform/text/rtf.h"
#include "platform/text/units.h"

#include <deque>
#include <optional>
#include <string>
#include <utility>

namespace blockhouse {

struct ClosedText {
    std::string path; // of its file
    rtf::ColouredText text;
    CaretPosition caret;
    LineIndex firstVisibleLine;
    std::optional<FileStamp> known; // the file's state that the text came from
};

// The texts closed last.
class ClosedTexts {
public:
    static constexpr std::size_t most = 20;

    // Beyond the most, the one kept longest goes.
    void keep(ClosedText text) {
        texts_.push_back(std::move(text));
        if (texts_.size() > most)
            texts_.pop_front();
    }

    // The one closed last, which is kept no longer.
    [[nodiscard]] std::optional<ClosedText> takeLast() {
        if (texts_.empty())
            return std::nullopt;
        std::optional<ClosedText> last(std::move(texts_.back()));
        texts_.pop_back();
        return last;
    }

private:
    std::deque<ClosedText> texts_;
};

} // namespace blockhouse
