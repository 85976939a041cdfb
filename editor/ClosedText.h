// What stays of an editor window that was closed with text that its file does not hold.
#pragma once

#include "platform/system/FileStamp.h"
#include "platform/text/rtf.h"
#include "platform/text/units.h"

#include <optional>
#include <string>

namespace blockhouse {

struct ClosedText {
    std::string path; // of its file
    rtf::ColouredText text;
    CaretPosition caret;
    LineIndex firstVisibleLine;
    std::optional<FileStamp> known; // the file's state that the text came from
};

} // namespace blockhouse
