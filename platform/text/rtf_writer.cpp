#include "platform/text/rtf.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <unordered_map>
#include <utility>

namespace blockhouse::rtf {

namespace {

constexpr std::string_view documentStart =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fmodern Courier New;}}\r\n";
constexpr std::string_view colourTableStart = "{\\colortbl ;";
constexpr std::string_view colourTableEnd = "}\r\n";
constexpr std::string_view bodyStart = "\\viewkind4\\uc1\\pard\\f0\\fs21 ";
constexpr std::string_view paragraphStart = "\\par ";
constexpr std::string_view paragraphEnd = "\r\n\\par ";
constexpr std::string_view loneCarriageReturn = "{\\*\\bhcr}";
constexpr std::string_view loneLineFeed = "{\\*\\bhlf}";
constexpr std::string_view splitPair = "{\\*\\bhcrlf}";
constexpr std::string_view textColourWord = "\\cf";
constexpr std::string_view backgroundWord = "\\highlight";
constexpr std::string_view documentEnd = "\r\n}";

constexpr Colour bits24 = 0xFFFFFF;

struct Escape {
    std::array<char, 5> bytes{};
    std::uint8_t length = 0; // 0: the byte stands for itself

    [[nodiscard]] std::string_view text() const { return {bytes.data(), length}; }
};

constexpr Escape escapeOf(unsigned char code) {
    constexpr std::string_view digits = "0123456789abcdef";
    if (code == '\t')
        return {{'\\', 't', 'a', 'b', ' '}, 5};
    if (code == '\\' || code == '{' || code == '}')
        return {{'\\', static_cast<char>(code)}, 2};
    if (code < 0x20 || code >= 0x7F)
        return {{'\\', '\'', digits[code / 16], digits[code % 16]}, 4};
    return {};
}

constexpr std::array<Escape, 256> makeEscapes() {
    std::array<Escape, 256> table{};
    for (std::size_t code = 0; code < table.size(); ++code)
        table[code] = escapeOf(static_cast<unsigned char>(code));
    return table;
}

constexpr std::array<Escape, 256> escapes = makeEscapes();

constexpr std::array<bool, 256> makePlain() {
    std::array<bool, 256> table{};
    for (std::size_t code = 0; code < table.size(); ++code)
        table[code] = escapes[code].length == 0;
    return table;
}

constexpr std::array<bool, 256> plainTable = makePlain();

bool isPlain(char byte) {
    return plainTable[static_cast<unsigned char>(byte)];
}

const Escape& escapeFor(char byte) {
    return escapes[static_cast<unsigned char>(byte)];
}

// Indexes into the document's colour table.
struct Pair {
    std::uint32_t text = 0;
    std::uint32_t background = 0;

    bool operator==(const Pair&) const = default;
};

class ColourTable {
public:
    explicit ColourTable(const std::vector<Colour>& palette) {
        for (const Colour colour : palette)
            add(colour & bits24);
    }

    void add(const ColourRun& run) {
        if (run.length == 0 || (run.text == knownText_ && run.background == knownBackground_))
            return;
        knownText_ = run.text;
        knownBackground_ = run.background;
        if ((run.text & bits24) != defaultTextColour)
            add(run.text & bits24);
        if ((run.background & bits24) != defaultBackground)
            add(run.background & bits24);
    }

    [[nodiscard]] Pair indexesOf(const ColourRun& run) const {
        const Colour text = run.text & bits24;
        const Colour background = run.background & bits24;
        return {text == defaultTextColour ? 0 : indexOf(text),
                background == defaultBackground ? 0 : indexOf(background)};
    }

    void appendTo(std::string& out) const {
        for (const Colour colour : colours_) {
            out.append("\\red").append(std::to_string(redOf(colour)));
            out.append("\\green").append(std::to_string(greenOf(colour)));
            out.append("\\blue").append(std::to_string(blueOf(colour))).append(";");
        }
    }

    [[nodiscard]] const std::vector<Colour>& colours() const { return colours_; }

private:
    // A colour that is not in the palette cannot be told from the default one.
    [[nodiscard]] std::uint32_t indexOf(Colour colour) const {
        const auto found = indexes_.find(colour);
        return found == indexes_.end() ? 0 : found->second;
    }

    void add(Colour colour) {
        if (indexes_.try_emplace(colour, static_cast<std::uint32_t>(colours_.size() + 1)).second)
            colours_.push_back(colour);
    }

    std::vector<Colour> colours_;
    std::unordered_map<Colour, std::uint32_t> indexes_;
    // The pair added last: neighbouring runs mostly bring nothing new.
    Colour knownText_ = defaultTextColour;
    Colour knownBackground_ = defaultBackground;
};

} // namespace

class SourceWriter::State {
public:
    State(std::string_view text, NextRun nextRun, const std::vector<Colour>& palette)
        : text_(text), nextRun_(std::move(nextRun)), table_(palette) {}

    bool writeLines(std::string& out, std::size_t size) {
        out_ = &out;
        out.append(std::exchange(owed_, {}));
        if (!started_)
            start();
        while (written_ < text_.size()) {
            if (written_ == runEnd_)
                startRun();
            appendPlainOr(runEnd_);
            if (out.size() >= size && out.ends_with(paragraphEnd)) {
                out.resize(out.size() - paragraphStart.size());
                owed_ = paragraphStart;
                return true;
            }
        }
        out.append(documentEnd);
        return false;
    }

private:
    void start() {
        started_ = true;
        out_->append(documentStart).append(colourTableStart);
        table_.appendTo(*out_);
        out_->append(colourTableEnd).append(bodyStart);
    }

    void startRun() {
        ColourRun run;
        do {
            run = nextRun_();
        } while (run.length == 0);
        runEnd_ = std::min(written_ + run.length, text_.size());
        switchTo(table_.indexesOf(run));
    }

    void appendPlainOr(std::size_t end) {
        std::size_t plainEnd = written_;
        while (plainEnd < end && isPlain(text_[plainEnd]))
            ++plainEnd;
        out_->append(text_, written_, plainEnd - written_);
        written_ = plainEnd;
        if (written_ == end)
            return;
        const char special = text_[written_];
        if (special == '\r')
            appendCarriageReturn(end);
        else if (special == '\n')
            appendLineFeed();
        else
            out_->append(escapeFor(special).text());
        ++written_;
    }

    void appendCarriageReturn(std::size_t end) {
        const bool pair = written_ + 1 < text_.size() && text_[written_ + 1] == '\n';
        if (!pair) {
            out_->append(loneCarriageReturn).append(paragraphEnd);
        } else if (written_ + 1 < end) {
            ++written_;
            out_->append(paragraphEnd);
        } else {
            out_->append(splitPair);
            insidePair_ = true;
        }
    }

    void appendLineFeed() {
        if (!insidePair_)
            out_->append(loneLineFeed);
        insidePair_ = false;
        out_->append(paragraphEnd);
    }

    void switchTo(Pair colours) {
        if (colours == current_)
            return;
        if (colours.text != current_.text)
            appendWord(textColourWord, colours.text);
        if (colours.background != current_.background)
            appendWord(backgroundWord, colours.background);
        out_->push_back(' ');
        current_ = colours;
    }

    void appendWord(std::string_view word, std::uint32_t number) {
        std::array<char, 10> digits;
        const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        out_->append(word).append(std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data())));
    }

    std::string_view text_;
    NextRun nextRun_;
    ColourTable table_;
    std::string* out_ = nullptr; // of the current writeLines()
    bool started_ = false;
    std::string_view owed_; // begins the next piece: a paragraph's start belongs to the line after the break
    std::size_t written_ = 0;
    std::size_t runEnd_ = 0;
    Pair current_;
    // Between a CR and its LF that differ in colour.
    bool insidePair_ = false;
};

SourceWriter::SourceWriter(std::string_view text, NextRun nextRun, const std::vector<Colour>& palette)
    : state_(std::make_unique<State>(text, std::move(nextRun), palette)) {}

SourceWriter::~SourceWriter() = default;

bool SourceWriter::writeLines(std::string& out, std::size_t size) {
    return state_->writeLines(out, size);
}

std::string write(std::string_view text, const std::vector<ColourRun>& runs, const std::vector<Colour>& palette) {
    ColourTable table(palette);
    for (const ColourRun& run : runs)
        table.add(run);
    auto next = runs.begin();
    const auto nextRun = [&next, &runs] {
        return next == runs.end() ? ColourRun{std::numeric_limits<std::uint32_t>::max()} : *next++;
    };
    std::string source;
    source.reserve(text.size() + text.size() / 2);
    SourceWriter(text, nextRun, table.colours()).writeLines(source, std::string::npos);
    return source;
}

std::string header(const std::vector<Colour>& palette) {
    std::string source;
    source.append(documentStart).append(colourTableStart);
    ColourTable(palette).appendTo(source);
    source.append(colourTableEnd);
    return source;
}

} // namespace blockhouse::rtf
