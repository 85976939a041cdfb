// The state of a window's file that the window's text came from, and the notices about what others did to the file.
#pragma once

#include "platform/system/FileStamp.h"

#include <optional>
#include <string>

namespace blockhouse {

class NoticeArea;

class KnownFile {
public:
    // The file was read or written here and is in this state; nothing when there is no file. What was told about a
    // change is withdrawn.
    void is(const std::optional<FileStamp>& state, NoticeArea& notices);

    // Looks at the file and tells of a change, once for each new state. True if the state is a new one.
    bool look(const std::string& path, NoticeArea& notices);

    [[nodiscard]] const std::optional<FileStamp>& state() const { return known_; }

    // By what was seen last.
    [[nodiscard]] bool wasChangedByOthers() const { return seen_ != known_; }

private:
    std::optional<FileStamp> known_;
    std::optional<FileStamp> seen_;
};

// What a save replaced is kept in this file; empty when it replaced nothing of anybody else's.
void tellBackup(const std::string& backup, NoticeArea& notices);

} // namespace blockhouse
