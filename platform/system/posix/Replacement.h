// The new content of a file on its way to the file's name.
#pragma once

#include "platform/system/FileStamp.h"
#include "platform/system/posix/posix_file.h"

#include <optional>
#include <string>
#include <string_view>

namespace blockhouse {

// A new file in the target's folder, gone again unless it takes the target's place. Where the system can make a file
// without a name it has none until the last moment, so that a killed process leaves nothing behind.
//
// Errors are the system's numbers, 0 is success.
class Replacement {
public:
    enum class Name { AtTheEnd, FromTheStart };
    // The place of whatever is there, or only that of a file in a known state: what has the target's name comes out
    // under this one's then, and is kept if the process ends right there.
    enum class Takes { Anything, KnownState };

    // Not open (with errno set) when the folder takes no new file.
    Replacement(std::string target, mode_t mode, Name name, Takes takes);
    ~Replacement();
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    [[nodiscard]] bool isOpen() const { return file_.isOpen(); }

    [[nodiscard]] int number() const { return file_.number(); }

    // All bytes are on the disk then.
    [[nodiscard]] int fill(std::string_view bytes);

    // Takes the target's name. What had it is gone.
    [[nodiscard]] int takePlace();

    // The same, but what had the name is kept as `backup` unless it is in the state `known`; then backup is empty.
    [[nodiscard]] int takePlaceOf(const FileStamp& known, std::string& backup);

    // It could not be given a name at the end; one that has it from the start may do better.
    [[nodiscard]] bool isWithoutName() const { return isUnnamed_; }

    [[nodiscard]] std::optional<FileStamp> stamp() const;

private:
    [[nodiscard]] int openUnnamed(mode_t mode);
    [[nodiscard]] int openNamed(mode_t mode);
    [[nodiscard]] int giveName();
    [[nodiscard]] int exchange(const FileStamp& known, bool isOthers, std::string& backup);
    [[nodiscard]] int finish();

    const std::string target_;
    const Takes takes_;
    std::string path_; // empty while there is no name to remove
    bool isUnnamed_ = false;
    Descriptor file_;
};

[[nodiscard]] std::string directoryOf(const std::string& path);

// Whether the error says that the folder takes no new file; that nothing may take the name, be it for that reason or
// because others hold on to it (a mount point, a sticky folder's foreign file).
[[nodiscard]] bool forbidsNewFile(int error);
[[nodiscard]] bool forbidsTakingPlace(int error);

[[nodiscard]] int writeAll(int file, std::string_view bytes);
[[nodiscard]] int syncFile(int file);

} // namespace blockhouse
