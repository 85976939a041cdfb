// The new content of a file on its way to the file's name.
#pragma once

#include "platform/system/windows/windows_file.h"

#include <optional>
#include <string>
#include <string_view>

namespace blockhouse {

// A new file in the target's folder, gone again unless it takes the target's place.
class Replacement {
public:
    // Not open (with the last error set) when the folder takes no new file.
    explicit Replacement(std::string target);
    ~Replacement();
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    [[nodiscard]] bool isOpen() const { return file_.isOpen(); }

    // All bytes are on the disk then, and the file is closed.
    [[nodiscard]] DWORD fill(std::string_view bytes);

    // Takes the name of the target, which does not exist.
    [[nodiscard]] DWORD takeName();

    // Takes the target's place with its attributes, access list and further streams. What had it is kept as `backup`
    // unless it is in the state `known`; then, and where no state is known, it is gone and backup is empty.
    [[nodiscard]] DWORD takePlaceOf(const std::optional<FileStamp>& known, std::string& backup);

    // Of what was written. Differs from the file's if somebody has written since.
    [[nodiscard]] FileStamp stamp() const;

private:
    [[nodiscard]] DWORD exchange(const std::string& old);
    [[nodiscard]] DWORD finishExchange(const std::string& old);

    const std::string target_;
    std::string path_; // empty while there is no name to remove
    Handle file_;
    FileStamp written_;
};

// Whether the error says that the folder takes no new file; that nothing may take the name, be it for that reason or
// because another program holds on to it.
[[nodiscard]] bool forbidsNewFile(DWORD error);
[[nodiscard]] bool forbidsTakingPlace(DWORD error);

} // namespace blockhouse
