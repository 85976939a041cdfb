// Finds the lines of a text that define a name: "<keyword> <name>", alone on a line that is not indented. The text
// comes in pieces of any size, and no edge between them hides a line.
#pragma once

#include "platform/text/FoldedSearch.h"
#include "platform/text/units.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace blockhouse {

class DefinitionScan {
public:
    struct Found {
        TextPosition name;   // in the text
        std::ptrdiff_t line; // counted from 1, by LF; by CR in a text without LF
        std::string keyword;
    };

    using OnFound = std::function<void(const Found&)>;

    // Ignores case in the documents' code page. An empty name, and one that holds a blank, a tab, "=", ";" or a line
    // end, is defined nowhere.
    explicit DefinitionScan(std::string_view name);

    // The next piece; `isLast` says that the text ends with it. The keyword may be any word. Comments behind the name
    // do not count. Lines of more than a megabyte define nothing.
    void scan(std::string_view piece, bool isLast, const OnFound& onFound);

private:
    void scanLines(std::string_view lines, const OnFound& onFound) const;

    std::string name_;
    FoldedSearch search_;
    std::string begun_;         // of a line whose end is in no piece yet
    bool isInLongLine_ = false; // whose start has been dropped
    std::size_t offset_ = 0;    // of begun_, or of the next piece
    std::ptrdiff_t feeds_ = 0;
    std::ptrdiff_t returns_ = 0;
};

} // namespace blockhouse
