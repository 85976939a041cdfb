// Looks for the definitions of a name in every file of the listed directories, in steps short enough for events to be
// served between them. What cannot be read is left out.
#pragma once

#include "findref/DefinitionScan.h"
#include "platform/system/FileReader.h"
#include "platform/text/EntryList.h"
#include "platform/text/Result.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace blockhouse {

struct Definition {
    std::string path;
    TextPosition name; // in the file
    std::ptrdiff_t line;
    std::string keyword;
};

class DefinitionSearch {
public:
    // Takes the list as it is now.
    DefinitionSearch(EntryList Dirs, std::string_view name);

    // Lists a directory or reads a piece of a file. False when there is nothing left to do, or when there are more
    // definitions than anybody would look through.
    bool next();

    [[nodiscard]] const std::vector<Definition>& found() const { return found_; }

    // The first directory or file that could not be read.
    [[nodiscard]] const std::optional<FileError>& failure() const { return failure_; }

    static constexpr std::size_t mostFound = 1000;
    static constexpr std::size_t pieceSize = 1 << 16;

private:
    void listNextDirectory();
    void openNextFile();
    void readPiece();
    void note(const FileError& error);

    const EntryList Dirs_;
    const std::string name_;
    std::vector<Definition> found_;
    std::optional<FileError> failure_;
    int directory_ = 0; // the entry listed last, 1-based
    std::vector<std::string> paths_;
    std::size_t path_ = 0; // the one opened next
    std::unordered_set<std::string> seen_;
    std::optional<FileReader> reader_;
    std::optional<DefinitionScan> scan_;
    std::vector<char> piece_;
};

} // namespace blockhouse
