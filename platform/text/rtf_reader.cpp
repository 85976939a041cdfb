#include "platform/text/codepage.h"
#include "platform/text/rtf.h"
#include "platform/text/rtf_words.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

namespace blockhouse::rtf {

namespace {

// What becomes of a group's characters.
enum class Destination : std::uint8_t { text, colourTable, nowhere };

struct GroupState {
    Colour text = defaultTextColour;
    Colour background = defaultBackground;
    std::int32_t fallbackLength = 1; // characters that repeat a Unicode character for readers that know none
    Destination destination = Destination::text;
};

enum class BreakKind : std::uint8_t { pair, loneCarriageReturn, loneLineFeed, splitPair };

struct ControlWord {
    std::string_view name;
    std::optional<std::int32_t> number;
};

} // namespace

class SourceReader::State {
public:
    // Pages of a reservation that stay unused cost no memory; growing a large list does.
    explicit State(std::string_view expected) : expected_(expected) { runs_.reserve(expected.size() / 12); }

    void read(std::string_view piece) {
        source_ = piece;
        at_ = 0;
        while (at_ < source_.size() && !isOver_) {
            switch (source_[at_]) {
            case '{':
                ++at_;
                openGroup();
                break;
            case '}':
                ++at_;
                closeGroup();
                break;
            case '\\':
                ++at_;
                readControl();
                break;
            case '\r':
            case '\n':
                ++at_;
                break;
            default:
                readPlain();
            }
        }
    }

    Outcome finish() {
        if (asExpected_ && length_ != expected_.size())
            stopExpecting();
        return {asExpected_, std::move(text_), std::move(runs_)};
    }

private:
    // Groups beyond this depth share the state of the one at it, so that no source can eat up memory.
    static constexpr std::size_t deepestGroup = 4096;

    void openGroup() {
        fallbackLeft_ = 0;
        ignorable_ = false;
        if (outer_.size() < deepestGroup)
            outer_.push_back(state_);
        else
            ++groupsBeyond_;
    }

    void closeGroup() {
        fallbackLeft_ = 0;
        ignorable_ = false;
        if (groupsBeyond_ > 0) {
            --groupsBeyond_;
            return;
        }
        if (!outer_.empty()) {
            state_ = outer_.back();
            outer_.pop_back();
        }
        isOver_ = outer_.empty();
    }

    void readPlain() {
        std::size_t end = at_ + 1;
        while (end < source_.size() && !isStop(source_[end]))
            ++end;
        const std::string_view plain = source_.substr(at_, end - at_);
        at_ = end;
        if (state_.destination == Destination::text)
            appendText(plain);
        else if (state_.destination == Destination::colourTable)
            endColours(plain);
    }

    void readControl() {
        if (at_ == source_.size())
            return;
        if (isLetter(source_[at_]))
            obey(readWord());
        else
            readSymbol(source_[at_++]);
    }

    void readSymbol(char symbol) {
        switch (symbol) {
        case '\'':
            readHexCharacter();
            break;
        case '*':
            ignorable_ = true;
            break;
        case '\\':
        case '{':
        case '}':
            appendCharacter(symbol);
            break;
        case '~':
            appendCharacter('\xA0'); // a blank that does not break
            break;
        case '_':
            appendCharacter('-'); // a hyphen that does not break
            break;
        case '\t':
            appendCharacter('\t');
            break;
        case '\r':
        case '\n':
            endParagraph();
            break;
        default: // other symbols steer the layout only
            break;
        }
    }

    void readHexCharacter() {
        if (source_.size() - at_ < 2)
            return;
        const int high = hexValue(source_[at_]);
        const int low = hexValue(source_[at_ + 1]);
        if (high < 0 || low < 0)
            return;
        at_ += 2;
        appendCharacter(static_cast<char>(high * 16 + low));
    }

    ControlWord readWord() {
        const std::size_t start = at_;
        while (at_ < source_.size() && isLetter(source_[at_]))
            ++at_;
        ControlWord word{source_.substr(start, at_ - start), readNumber()};
        if (at_ < source_.size() && source_[at_] == ' ')
            ++at_; // belongs to the word
        return word;
    }

    std::optional<std::int32_t> readNumber() {
        constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
        const bool negative = at_ + 1 < source_.size() && source_[at_] == '-' && isDigit(source_[at_ + 1]);
        if (negative)
            ++at_;
        if (at_ == source_.size() || !isDigit(source_[at_]))
            return std::nullopt;
        std::int32_t number = 0;
        for (; at_ < source_.size() && isDigit(source_[at_]); ++at_) {
            const std::int32_t digit = source_[at_] - '0';
            number = number > (largest - digit) / 10 ? largest : number * 10 + digit;
        }
        return negative ? -number : number;
    }

    void obey(const ControlWord& word) {
        const bool ignorable = std::exchange(ignorable_, false);
        if (word.name == "bin")
            skipBinary(word.number.value_or(0));
        else if (state_.destination == Destination::text)
            obeyInText(word, ignorable);
        else if (state_.destination == Destination::colourTable)
            obeyInColourTable(word);
    }

    void obeyInText(const ControlWord& word, bool ignorable) {
        const std::string_view name = word.name;
        if (name == "par" || name == "line" || name == "row")
            endParagraph();
        else if (name == "cf")
            state_.text = colourNumbered(word.number, defaultTextColour);
        else if (name == "highlight")
            state_.background = colourNumbered(word.number, defaultBackground);
        else if (name == "plain")
            resetColours();
        else if (name == "u")
            readUnicode(word.number.value_or(0));
        else if (name == "uc")
            state_.fallbackLength = std::max(0, word.number.value_or(1));
        else if (!appendNamed(name))
            enterDestination(name, ignorable);
    }

    void resetColours() {
        state_.text = defaultTextColour;
        state_.background = defaultBackground;
    }

    bool appendNamed(std::string_view name) {
        const auto named = std::find_if(namedCharacters.begin(), namedCharacters.end(),
                                        [name](const auto& entry) { return entry.first == name; });
        if (named == namedCharacters.end())
            return false;
        appendCharacter(named->second);
        return true;
    }

    void enterDestination(std::string_view name, bool ignorable) {
        if (name == "colortbl") {
            state_.destination = Destination::colourTable;
            colours_.clear();
            entry_ = 0;
        } else if (ignorable) {
            state_.destination = Destination::nowhere;
            noteBreak(name);
        } else if (std::find(hiddenDestinations.begin(), hiddenDestinations.end(), name) != hiddenDestinations.end()) {
            state_.destination = Destination::nowhere;
        }
    }

    void noteBreak(std::string_view name) {
        if (name == "bhcr")
            nextBreak_ = BreakKind::loneCarriageReturn;
        else if (name == "bhlf")
            nextBreak_ = BreakKind::loneLineFeed;
        else if (name == "bhcrlf") {
            nextBreak_ = BreakKind::splitPair;
            carriageReturn_ = state_;
        }
    }

    void obeyInColourTable(const ControlWord& word) {
        const Colour part = std::clamp(word.number.value_or(0), 0, 255);
        if (word.name == "red")
            entry_ = rgb(part, greenOf(entry_), blueOf(entry_));
        else if (word.name == "green")
            entry_ = rgb(redOf(entry_), part, blueOf(entry_));
        else if (word.name == "blue")
            entry_ = rgb(redOf(entry_), greenOf(entry_), part);
    }

    // Every ";" ends an entry.
    void endColours(std::string_view plain) {
        constexpr std::size_t mostColours = std::size_t{1} << 25; // each colour there is, and room to spare
        for (const char byte : plain) {
            if (byte == ';' && colours_.size() < mostColours) {
                colours_.push_back(entry_);
                entry_ = 0;
            }
        }
    }

    // Entry 0 stands for the default whatever it holds, and so does a number without an entry.
    [[nodiscard]] Colour colourNumbered(std::optional<std::int32_t> number, Colour standard) const {
        if (!number || *number <= 0 || static_cast<std::size_t>(*number) >= colours_.size())
            return standard;
        return colours_[static_cast<std::size_t>(*number)];
    }

    void skipBinary(std::int32_t length) {
        at_ += std::min(static_cast<std::size_t>(std::max(0, length)), source_.size() - at_);
    }

    void readUnicode(std::int32_t number) {
        // Written as a signed 16-bit number; the second half of a pair adds nothing to the first one's "?".
        const auto unit = static_cast<char32_t>(number & 0xFFFF);
        const bool secondHalf = unit >= 0xDC00 && unit <= 0xDFFF;
        fallbackLeft_ = 0;
        if (!secondHalf)
            appendCharacter(codepage::byteOf(unit).value_or('?'));
        fallbackLeft_ = state_.fallbackLength;
    }

    void appendCharacter(char byte) {
        if (state_.destination == Destination::text)
            appendText({&byte, 1});
    }

    void appendText(std::string_view plain) {
        if (fallbackLeft_ > 0) {
            const std::size_t skipped = std::min(static_cast<std::size_t>(fallbackLeft_), plain.size());
            fallbackLeft_ -= static_cast<std::int32_t>(skipped);
            plain.remove_prefix(skipped);
        }
        append(plain, state_);
    }

    void append(std::string_view bytes, const GroupState& state) {
        if (bytes.empty())
            return;
        if (asExpected_ && expected_.substr(length_, bytes.size()) != bytes)
            stopExpecting();
        if (!asExpected_)
            text_.append(bytes);
        length_ += bytes.size();
        const auto length = static_cast<std::uint32_t>(bytes.size());
        if (!runs_.empty() && runs_.back().text == state.text && runs_.back().background == state.background)
            runs_.back().length += length;
        else
            runs_.push_back({length, state.text, state.background});
    }

    void stopExpecting() {
        asExpected_ = false;
        text_.assign(expected_, 0, length_);
    }

    void endParagraph() {
        if (state_.destination != Destination::text)
            return;
        fallbackLeft_ = 0;
        switch (std::exchange(nextBreak_, BreakKind::pair)) {
        case BreakKind::pair:
            append("\r\n", state_);
            break;
        case BreakKind::loneCarriageReturn:
            append("\r", state_);
            break;
        case BreakKind::loneLineFeed:
            append("\n", state_);
            break;
        case BreakKind::splitPair:
            append("\r", carriageReturn_);
            append("\n", state_);
            break;
        }
    }

    std::string_view source_; // the piece being read
    std::size_t at_ = 0;
    bool isOver_ = false;
    bool ignorable_ = false;        // "\*" was just read
    std::int32_t fallbackLeft_ = 0; // characters still to be skipped
    GroupState state_;
    std::vector<GroupState> outer_; // states of the groups around the current one
    std::size_t groupsBeyond_ = 0;
    std::vector<Colour> colours_;
    Colour entry_ = 0; // the colour table entry in the making
    BreakKind nextBreak_ = BreakKind::pair;
    GroupState carriageReturn_; // the colours of a split pair's CR
    std::string_view expected_;
    bool asExpected_ = true; // all that was read so far is how the expected text begins
    std::size_t length_ = 0;
    std::string text_; // empty as long as asExpected_
    std::vector<ColourRun> runs_;
};

SourceReader::SourceReader(std::string_view expected) : state_(std::make_unique<State>(expected)) {}

SourceReader::~SourceReader() = default;

void SourceReader::read(std::string_view piece) {
    state_->read(piece);
}

SourceReader::Outcome SourceReader::finish() {
    return state_->finish();
}

ColouredText read(std::string_view source) {
    SourceReader reader({});
    reader.read(source);
    SourceReader::Outcome outcome = reader.finish();
    return {std::move(outcome.text), std::move(outcome.runs)};
}

} // namespace blockhouse::rtf
