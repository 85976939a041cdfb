// Where the list files are read and written.
#pragma once

#include <string>
#include <string_view>

namespace blockhouse {

class ApplicationFolder {
public:
    // Everything is read and written in `folder`.
    explicit ApplicationFolder(std::string folder) : folder_(std::move(folder)) {}

    // As above, but a file that is not in `folder` and is in `fallback` is read from there.
    ApplicationFolder(std::string folder, std::string fallback)
        : folder_(std::move(folder)), fallback_(std::move(fallback)) {}

    [[nodiscard]] const std::string& folder() const { return folder_; }

    // The file to read. When it exists nowhere, the path where it would be written.
    [[nodiscard]] std::string readPath(std::string_view name) const;
    // The file to write. Makes the folder if it is missing; when that fails, writing fails and tells why.
    [[nodiscard]] std::string writePath(std::string_view name) const;

private:
    std::string folder_;
    std::string fallback_; // empty: none
};

// The application folder is the folder that holds the program. A program that was installed, or that lies where its
// user may not write, keeps its lists in the user's data folder, and starts from those that came with it.
[[nodiscard]] ApplicationFolder applicationFolderOf(std::string programFolder, bool programFolderIsWritable,
                                                    std::string userDataFolder);

} // namespace blockhouse
