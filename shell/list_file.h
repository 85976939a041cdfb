// The list files: one entry a line when written, free-format fields when read.
//
//   lines    end with CR LF, with a lone CR or with a lone LF; the last line needs no end. A file that ends in a
//            line end has no further line after it, so an empty file has no fields.
//   fields   a line is cut at its commas: "a,b," has three fields, the last one empty. An empty line, or one of
//            blanks only, is one empty field. Blanks (0x20) before a field are dropped, those after it are kept.
//   quotes   a field that begins with a double quote runs to the next one, commas included, without the quotes.
//            Blanks after the closing quote are dropped. Other text there would be lost with them, so it begins a
//            field of its own, as if a comma stood before it. A quote that is not closed runs to the line's end.
//   the rest NULs, tabs and high bytes are text like any other.
#pragma once

#include "platform/text/EntryList.h"

#include <optional>
#include <string>
#include <string_view>

namespace blockhouse {

// Reads field by field, so that the caller can do something else in between.
class ListFileReader {
public:
    explicit ListFileReader(std::string bytes) : bytes_(std::move(bytes)) {}

    // The next field in file order, or nothing after the last one. Linear in the file's size over all calls.
    [[nodiscard]] std::optional<std::string> next();

private:
    void skipBlanks();
    [[nodiscard]] std::string upTo(std::string_view stops);
    [[nodiscard]] std::string quoted();
    void leaveField();

    [[nodiscard]] bool atEnd() const { return at_ == bytes_.size(); }

    [[nodiscard]] bool atLineEnd() const { return bytes_[at_] == '\r' || bytes_[at_] == '\n'; }

    std::string bytes_;
    std::size_t at_ = 0;
    bool afterComma_ = false; // a comma promises a field even where nothing follows
};

// What the list is written as: every entry, unquoted, followed by CR LF.
[[nodiscard]] std::string writtenList(const EntryList& entries);

// What saving a list takes.
enum class ListSave {
    Nothing,      // the file holds the list, or a newer one while this one is unchanged
    Write,        // the file holds the list as it was before
    KeepTheOther, // the file holds what another program wrote
};

// `before` is the list as it was before it was edited, `fileText` what the file holds.
[[nodiscard]] ListSave listSave(const EntryList& entries, const EntryList& before, const std::string& fileText);

inline constexpr std::string_view directoryListFile = "Dirs.lst";
inline constexpr std::string_view jumpListFile = "jumps.lst";

// The text of the list file `name` from the bytes on the disk, and back. The directories are paths and are stored in
// the system's encoding; the settings to jump to are bytes of documents.
[[nodiscard]] std::string listTextFrom(std::string_view name, std::string fileBytes);
[[nodiscard]] std::string listBytesOf(std::string_view name, std::string text);

} // namespace blockhouse
