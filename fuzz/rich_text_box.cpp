// The rich-text box: edits, undo, redo and restyling in any order, held against the text as a plain string and against
// what the box itself showed after each step.
#include "editor/comment_pass.h"
#include "fuzz/target.h"
#include "platform/richtext/RichTextBox.h"
#include "platform/text/codepage.h"

#include <QApplication>
#include <QInputMethodEvent>

using namespace blockhouse;
using fuzz::require;

namespace {

constexpr Colour palette[] = {defaultTextColour, rgb(0, 0, 128), rgb(0, 128, 0)};

class Session {
public:
    explicit Session(std::string text) { load(std::move(text)); }

    void step(fuzz::Bytes& input) {
        switch (input.below(10)) {
        case 0:
        case 1:
        case 2:
            replaceSelection(input);
            break;
        case 3:
            replaceMany(input);
            break;
        case 4:
            walk(&RichTextBox::undo, at_ > 0, at_ - 1);
            break;
        case 5:
            walk(&RichTextBox::redo, at_ + 1 < states_.size(), at_ + 1);
            break;
        case 6:
            restyle(input);
            break;
        case 7:
            highlight(input);
            break;
        case 8:
            composeInVain(input);
            break;
        default:
            find(input);
            break;
        }
        require(box_.text() == states_[at_].text, "the box holds another text");
        require(box_.textLength() == length(), "the length is wrong");
    }

    void requireRoundTrip() const {
        RichTextBox other;
        other.setRtf(box_.rtf());
        require(other.text() == box_.text(), "the source gives another text");
        require(coloursOf(other) == coloursOf(box_), "the source gives other colours");
    }

private:
    using Position = std::ptrdiff_t;

    struct State {
        std::string text;
        std::string colours; // empty: not known, since it was restyled at another state
    };

    static std::string coloursOf(const RichTextBox& box) {
        std::string colours;
        for (Position at = 0; at < box.textLength(); ++at) {
            colours += std::to_string(box.textColorAt(at)) + "/";
            colours += std::to_string(box.backgroundAt(at)) + " ";
        }
        return colours;
    }

    [[nodiscard]] Position length() const { return static_cast<Position>(states_[at_].text.size()); }

    Position place(fuzz::Bytes& input) const {
        return static_cast<Position>(input.below(static_cast<std::size_t>(length()) + 1));
    }

    void load(std::string text) {
        box_.setText(text);
        states_.assign(1, {std::move(text), ""});
        at_ = 0;
        states_[0].colours = coloursOf(box_);
    }

    void becomes(std::string text) {
        states_.resize(at_ + 1);
        states_.push_back({std::move(text), coloursOf(box_)});
        ++at_;
    }

    void replaceSelection(fuzz::Bytes& input) {
        const Position start = place(input);
        box_.setSelStart(start);
        box_.setSelLength(static_cast<Position>(input.below(8)));
        const auto first = static_cast<std::size_t>(box_.selStart());
        const auto size = static_cast<std::size_t>(box_.selLength());
        require(box_.selText() == states_[at_].text.substr(first, size), "another text is selected");
        if (size == 0)
            box_.setSelColor(palette[input.below(std::size(palette))]);
        const std::string piece = input.text();
        std::string text = states_[at_].text;
        text.replace(first, size, piece);
        box_.setSelText(piece);
        if (size > 0 || !piece.empty())
            becomes(std::move(text));
    }

    void replaceMany(fuzz::Bytes& input) {
        std::vector<TextRange> ranges;
        Position from = 0;
        for (std::size_t count = input.below(4); count > 0 && from < length(); --count) {
            const Position start = std::min(from + static_cast<Position>(input.below(20)), length() - 1);
            const Position size = std::min(static_cast<Position>(1 + input.below(5)), length() - start);
            ranges.push_back({start, size});
            from = start + size + 1;
        }
        const std::string piece = input.text();
        std::string text = states_[at_].text;
        for (auto range = ranges.rbegin(); range != ranges.rend(); ++range)
            text.replace(static_cast<std::size_t>(range->start), static_cast<std::size_t>(range->length), piece);
        box_.replaceRanges(ranges, piece);
        if (!ranges.empty())
            becomes(std::move(text));
    }

    void walk(void (RichTextBox::*way)(), bool possible, std::size_t to) {
        (box_.*way)();
        if (!possible)
            return;
        at_ = to;
        require(states_[at_].colours.empty() || coloursOf(box_) == states_[at_].colours,
                "a state has come back in other colours");
    }

    void forgetColours() {
        for (State& state : states_)
            state.colours.clear();
    }

    void restyle(fuzz::Bytes& input) {
        const Position start = place(input);
        const TextRange range{start, static_cast<Position>(input.below(30))};
        const Colour colour = palette[input.below(std::size(palette))];
        box_.setTextColor(std::span(&range, 1), colour);
        forgetColours();
        for (Position at = start; at < std::min(start + range.length, length()); ++at)
            require(box_.textColorAt(at) == colour, "a character has not taken its colour");
    }

    void highlight(fuzz::Bytes& input) {
        const Position start = place(input);
        const TextRange first{start, 1};
        box_.setTextColor(std::span(&first, 1), palette[1]);
        box_.editRtfLines([](std::string_view source) { return highlightFromDelimiter(source, ';', 1); });
        // Text set as a whole cannot be undone.
        states_.assign(1, {states_[at_].text, ""});
        at_ = 0;
        states_[0].colours = coloursOf(box_);
    }

    void composeInVain(fuzz::Bytes& input) {
        box_.setSelStart(place(input));
        bool composed = false;
        for (std::size_t updates = 1 + input.below(3); updates > 0; --updates) {
            const std::string piece = input.text();
            QInputMethodEvent shown(QString::fromStdString(codepage::toUtf8(piece)), {});
            QApplication::sendEvent(&box_, &shown);
            composed = composed || !piece.empty();
            require(box_.textLength() == length() + static_cast<Position>(piece.size()),
                    "what is composed is not shown");
        }
        box_.endComposition();
        if (composed)
            states_.resize(at_ + 1);
    }

    void find(fuzz::Bytes& input) {
        const std::string what = input.text();
        const Position start = place(input);
        const CaretPosition found = box_.find(what, start);
        require(found < 0 || (found >= start && box_.selLength() == static_cast<Position>(what.size())),
                "a find selects something else");
    }

    RichTextBox box_;
    std::vector<State> states_; // what undo and redo walk through
    std::size_t at_ = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Never destroyed: the toolkit's own statics would be gone by then.
    [[maybe_unused]] static const QApplication* const application = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        static int argc = 1;
        static char name[] = "fuzz";
        static char* argv[] = {name, nullptr};
        return new QApplication(argc, argv);
    }();
    fuzz::Bytes input(data, size);
    Session session(input.text());
    for (int steps = 0; steps < 60 && !input.empty(); ++steps)
        session.step(input);
    session.requireRoundTrip();
    return 0;
}
