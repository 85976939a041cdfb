#include "platform/richtext/TextStyles.h"

#include "platform/text/codepage.h"

#include <Qsci/qsciscintillabase.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

namespace blockhouse {
namespace {

using Sci = QsciScintillaBase;

constexpr std::size_t chunk = 1 << 16;

// Of where plain text begins.
constexpr BytePosition unknown = std::numeric_limits<BytePosition>::max();

std::ptrdiff_t characters(std::string_view utf8) {
    return std::count_if(utf8.begin(), utf8.end(), [](char byte) { return (byte & 0xC0) != 0x80; });
}

// Chunk by chunk: a style buffer for the whole document would add its size to what a large load takes.
class StyleWriter {
public:
    explicit StyleWriter(TextEngine engine) : engine_(engine) {}

    void append(std::size_t length, int style) {
        while (length > 0) {
            const std::size_t part = std::min(length, chunk - used_);
            std::memset(buffer_.data() + used_, style, part);
            used_ += part;
            length -= part;
            if (used_ == chunk)
                flush();
        }
    }

    void flush() {
        engine_.writeStyles(at_, std::span(buffer_.data(), used_));
        at_ += static_cast<BytePosition>(used_);
        used_ = 0;
    }

private:
    TextEngine engine_;
    BytePosition at_ = 0;
    std::array<unsigned char, chunk> buffer_;
    std::size_t used_ = 0;
};

} // namespace

int TextStyles::styleFor(ColourPair colours) {
    return madeKnown(table_.numberOf(colours));
}

int TextStyles::twinOf(int style) {
    return madeKnown(table_.twinOf(style));
}

int TextStyles::madeKnown(StyleTable::Numbered style) {
    if (style.isNew) {
        const ColourPair colours = table_.coloursOf(style.number);
        engine_.tell(Sci::SCI_STYLESETFORE, style.number, colours.text);
        engine_.tell(Sci::SCI_STYLESETBACK, style.number, colours.background);
    }
    return style.number;
}

ColourPair TextStyles::coloursAt(BytePosition byte) const {
    uncoloured_.colour({byte, byte + 1});
    return table_.coloursOf(static_cast<int>(engine_.ask(Sci::SCI_GETSTYLEAT, byte) & 0xFF));
}

StyleRuns TextStyles::runsOf(ByteSpan span) const {
    std::array<unsigned char, chunk> styles;
    StyleRuns runs;
    for (BytePosition at = span.first; at < span.last;) {
        const std::size_t size = std::min(static_cast<std::size_t>(span.last - at), chunk);
        read(at, std::span(styles.data(), size));
        for (std::size_t i = 0; i < size; ++i)
            appendRun(runs, 1, styles[i]);
        at += static_cast<BytePosition>(size);
    }
    return runs;
}

rtf::SourceWriter::NextRun TextStyles::colourRuns(bool everyCharacterIsOneByte) const {
    struct Walk {
        std::vector<unsigned char> styles;
        std::string_view bytes; // empty where every character is one byte
        BytePosition next = 0;
        std::size_t at = 0;
    };

    return [this, everyCharacterIsOneByte, walk = Walk{}]() mutable -> rtf::ColourRun {
        if (walk.at == walk.styles.size()) {
            const BytePosition end =
                std::min<BytePosition>(engine_.length(), walk.next + static_cast<BytePosition>(chunk));
            walk.styles.resize(static_cast<std::size_t>(end - walk.next));
            read(walk.next, walk.styles);
            walk.bytes = everyCharacterIsOneByte ? std::string_view() : engine_.text({walk.next, end});
            walk.next = end;
            walk.at = 0;
        }
        if (walk.styles.empty())
            return {std::numeric_limits<std::uint32_t>::max()};
        const auto first = walk.styles.begin() + static_cast<std::ptrdiff_t>(walk.at);
        const auto end = std::find_if(first, walk.styles.end(), [&](unsigned char style) { return style != *first; });
        auto length = static_cast<std::uint32_t>(end - first);
        if (!everyCharacterIsOneByte)
            length = static_cast<std::uint32_t>(characters(walk.bytes.substr(walk.at, length)));
        walk.at = static_cast<std::size_t>(end - walk.styles.begin());
        const ColourPair colours = table_.coloursOf(*first);
        return {length, colours.text, colours.background};
    };
}

std::vector<rtf::ColourRun> TextStyles::allRuns(bool everyCharacterIsOneByte) const {
    const rtf::SourceWriter::NextRun next = colourRuns(everyCharacterIsOneByte);
    std::vector<rtf::ColourRun> runs;
    constexpr std::uint32_t beyondTheText = std::numeric_limits<std::uint32_t>::max();
    for (rtf::ColourRun run = next(); run.length != beyondTheText; run = next()) {
        const bool continues =
            !runs.empty() && runs.back().text == run.text && runs.back().background == run.background;
        if (continues)
            runs.back().length += run.length;
        else
            runs.push_back(run);
    }
    return runs;
}

void TextStyles::recolour(std::span<const ByteSpan> spans, Colour colour) {
    std::array<int, 256> recoloured;
    recoloured.fill(-1);
    std::array<unsigned char, chunk> styles;
    BytePosition done = 0;
    for (auto next = spans.begin(); next != spans.end();) {
        const BytePosition start = std::max(done, next->first);
        const BytePosition end = std::min(start + static_cast<BytePosition>(chunk), spans.back().last);
        const std::span window(styles.data(), static_cast<std::size_t>(end - start));
        read(start, window);
        for (; next != spans.end() && next->first < end; ++next) {
            for (BytePosition at = std::max(next->first, start); at < std::min(next->last, end); ++at) {
                unsigned char& style = window[static_cast<std::size_t>(at - start)];
                int& changed = recoloured[style];
                if (changed < 0)
                    changed = styleFor({colour, table_.coloursOf(style).background});
                style = static_cast<unsigned char>(changed);
            }
            if (next->last > end)
                break;
        }
        write(start, window);
        done = end;
    }
}

void TextStyles::recolourAll(std::string_view bytes, std::span<const rtf::ColourRun> runs) {
    uncoloured_.clear();
    if (runs.empty() && plainFrom_ == 0)
        return;
    plainFrom_ = engine_.length();
    const bool oneByteEach = static_cast<BytePosition>(bytes.size()) == engine_.length();
    const auto length = [&](std::string_view part) { return oneByteEach ? part.size() : codepage::utf8Length(part); };
    StyleWriter writer(engine_);
    std::string_view rest = bytes;
    for (const rtf::ColourRun& run : runs) {
        const std::string_view covered = rest.substr(0, run.length);
        writer.append(length(covered), styleFor({run.text, run.background}));
        rest.remove_prefix(covered.size());
    }
    writer.append(length(rest), 0);
    writer.flush();
}

void TextStyles::colourBy(std::shared_ptr<const ColouringRule> rule, std::string_view bytes) {
    for (const ColourPair& colours : rule->coloursOf(bytes))
        static_cast<void>(styleFor(colours));
    plainFrom_ = unknown;
    uncoloured_.begin(std::move(rule));
}

void TextStyles::textReplaced() {
    uncoloured_.clear();
    plainFrom_ = 0;
}

// Whatever is edited, the paragraphs that it joins or cuts keep the colours that they had.
void TextStyles::editing(ByteSpan span) {
    uncoloured_.colour({span.first - 1, span.last + 1});
}

// What is plain is not kept track of through edits.
void TextStyles::textMoves(BytePosition at, std::ptrdiff_t length) {
    plainFrom_ = unknown;
    uncoloured_.textMoves(at, length);
}

void TextStyles::read(BytePosition start, std::span<unsigned char> styles) const {
    uncoloured_.colour({start, start + static_cast<BytePosition>(styles.size())});
    if (start >= plainFrom_)
        std::fill(styles.begin(), styles.end(), static_cast<unsigned char>(0));
    else
        engine_.readStyles(start, styles);
}

void TextStyles::write(BytePosition start, std::span<const unsigned char> styles) {
    plainFrom_ = std::max(plainFrom_, start + static_cast<BytePosition>(styles.size()));
    engine_.writeStyles(start, styles);
}

} // namespace blockhouse
