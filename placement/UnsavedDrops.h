// What stays of a text of the placement editor whose drops its file does not hold.
#pragma once

#include "placement/DropHistory.h"
#include "platform/system/FileStamp.h"

#include <optional>
#include <string>

namespace blockhouse {

struct UnsavedDrops {
    std::string path; // of its file
    std::string text;
    std::optional<FileStamp> known; // the file's state that the text came from
    DropHistory drops;
};

} // namespace blockhouse
