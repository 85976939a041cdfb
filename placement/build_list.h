// Finds the skirmish build lists of an AI data file, one a side, and the structures of one of them. The file is not
// read as blocks: each keyword is looked for by itself, in any case, and what stands between is not looked at.
//
// Both scans take time linear in the text, however malformed it is, and do not copy it. Lines end in CR; in a text
// without any CR they end in LF.
#pragma once

#include "placement/canvas_units.h"
#include "platform/text/Colour.h"
#include "platform/text/units.h"

#include <string>
#include <string_view>
#include <vector>

namespace blockhouse {

struct SideEntry {
    std::string name;      // case kept
    TextPosition position; // of "skirmishbuildlist "

    bool operator==(const SideEntry&) const = default;
};

struct StructureEntry {
    std::string name;      // case kept
    TextPosition position; // of "location = x:"; see structuresOf for when it is notFound

    bool operator==(const StructureEntry&) const = default;
};

struct ScannedStructure {
    StructureEntry entry;
    CanvasPoint location;
    Colour colour = 0;

    bool operator==(const ScannedStructure&) const = default;
};

struct ScanFailure {
    enum class Kind {
        LocationNotFound, // an "end" comes before the location
        NoNumber,         // a coordinate is no number
        NoValueEnd,       // the blank after x or the line end after y is missing
    };

    Kind kind = Kind::LocationNotFound;
    std::string name;      // of the structure
    TextPosition position; // of its keyword

    // What the user is told.
    [[nodiscard]] std::string message() const;

    bool operator==(const ScanFailure&) const = default;
};

// Each in the order found.
struct BuildListScan {
    std::vector<ScannedStructure> structures;
    std::vector<ScanFailure> failures;

    bool operator==(const BuildListScan&) const = default;
};

// Which structures the failures are about, and where: "CommandCenter (line 12), StingerNest (line 40)". The first few
// and how many there are.
[[nodiscard]] std::string unreadableStructures(std::string_view text, const std::vector<ScanFailure>& failures);

// Where the keywords of a build list's structures may start; both ends included.
struct SearchRange {
    TextPosition startSearch;
    TextPosition endSearch;

    bool operator==(const SearchRange&) const = default;
};

// The sides in the order of the file. A header counts if its keyword starts the text or follows a blank, tab, CR or
// LF, and if the rest of its line holds neither a blank nor "=" and is at least 3 characters long. A header on a last
// line that nothing ends does not count.
[[nodiscard]] std::vector<SideEntry> sidesOf(std::string_view text);

// From the side's keyword to that of the next one, or to the end of the text for the last. The text may have changed
// since the sides were found: their positions are taken as they are. `side` must be an index of `sides`.
[[nodiscard]] SearchRange searchRangeOf(const std::vector<SideEntry>& sides, std::size_t side, std::string_view text);

// The structures whose keywords start in the range. A keyword counts as for sides, with at least 6 characters of name.
//
// A structure's x stands after the first "location = x:" from its keyword on and runs up to the first blank that
// comes after at least two characters; its y stands after the first "y:" from its keyword on and runs up to the end
// of the line. Either must come before the first "end". A search that finds nothing gives position 0 and is compared
// and counted from like any other: without a location in the rest of the text the values are read from the start of
// the text, mostly to end in a failure, and otherwise giving an entry whose position is notFound.
//
// A coordinate is a decimal number in "." notation; blanks and tabs around it, a sign and an exponent are accepted.
// Anything else about it, and a number beyond single precision, is NoNumber. NoValueEnd goes before NoNumber.
[[nodiscard]] BuildListScan structuresOf(std::string_view text, TextPosition startSearch, TextPosition endSearch);

} // namespace blockhouse
