// Coloured text to Rich Text Format source and back, in the dialect that line-wise passes rely on:
//
//   {\rtf1\ansi\ansicpg1252\deff0{\fonttbl{\f0\fmodern Courier New;}}        "\r\n" after every line
//   {\colortbl ;\red0\green0\blue128;...}                                    colour 1 is the first after the ";"
//   \viewkind4\uc1\pard\f0\fs21 <first paragraph>
//   \par <second paragraph>                                                  one line each, begins "\par "
//   }                                                                        the brace alone on the last line
//
// Text colour is switched by \cfN (0 is the default colour), background by \highlightN (0 is none). A paragraph
// that ended in a lone CR or a lone LF, not in CR LF, carries an ignorable destination at the end of its own line;
// other readers see a plain paragraph. Text and colours survive the way there and back for every byte string.
#pragma once

#include "platform/text/Colour.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace blockhouse::rtf {

// `length` characters that share a text colour and a background.
struct ColourRun {
    std::uint32_t length = 0;
    Colour text = defaultTextColour;
    Colour background = defaultBackground;

    bool operator==(const ColourRun&) const = default;
};

struct ColouredText {
    std::string text;            // bytes of the code page
    std::vector<ColourRun> runs; // cover the text exactly, neighbours differ, none is empty

    bool operator==(const ColouredText&) const = default;
};

// Runs shorter than the text leave its rest in the default colours; runs beyond its end are ignored. The colour table
// lists the palette first, in its order, whether used or not.
[[nodiscard]] std::string write(std::string_view text, const std::vector<ColourRun>& runs,
                                const std::vector<Colour>& palette = {});

// The lines before the body, as write() begins them if the runs use no colour beyond the palette.
[[nodiscard]] std::string header(const std::vector<Colour>& palette);

// Reads what write() wrote, and what line-wise passes made of it: \highlight may stand anywhere, header groups
// included, and anything after the closing brace is ignored. Unknown control words and destinations are skipped.
// Never fails: malformed source gives whatever text can be made out.
[[nodiscard]] ColouredText read(std::string_view source);

// write() in pieces, for documents too large to have their source in memory as a whole.
class SourceWriter {
public:
    // The next run of the text; asked only while runs are missing. Its colours must be in the palette.
    using NextRun = std::function<ColourRun()>;

    // The text must stay as it is until the last piece.
    SourceWriter(std::string_view text, NextRun nextRun, const std::vector<Colour>& palette);
    ~SourceWriter();

    // Appends whole lines, their ends included, until `out` holds `size` bytes or more. False after the last line.
    bool writeLines(std::string& out, std::size_t size);

private:
    class State;
    std::unique_ptr<State> state_;
};

// read() in pieces.
class SourceReader {
public:
    // A text that comes out as expected is not built a second time: only the runs are. `expected` must stay as it is.
    explicit SourceReader(std::string_view expected);
    ~SourceReader();

    // Pieces are whole lines of source.
    void read(std::string_view piece);

    struct Outcome {
        bool asExpected;
        std::string text; // empty if it is as expected
        std::vector<ColourRun> runs;
    };

    [[nodiscard]] Outcome finish();

private:
    class State;
    std::unique_ptr<State> state_;
};

} // namespace blockhouse::rtf
