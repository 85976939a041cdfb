// Colours: a style number for every character, kept right through edits, undo and redo.
#include "platform/richtext/RichTextBox.h"
#include "platform/text/codepage.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <utility>

namespace blockhouse {
namespace {

constexpr std::size_t chunk = 1 << 16;

std::size_t utf8Length(std::string_view bytes) {
    std::size_t length = 0;
    for (const char byte : bytes)
        length += static_cast<unsigned char>(byte) < 0x80 ? 1U : codepage::codePointOf(byte) < 0x800 ? 2U : 3U;
    return length;
}

std::ptrdiff_t characters(std::string_view utf8) {
    return std::count_if(utf8.begin(), utf8.end(), [](char byte) { return (byte & 0xC0) != 0x80; });
}

bool isLineBreak(long character) {
    return character == '\r' || character == '\n';
}

} // namespace

Colour RichTextBox::selColor() const {
    settleStyles();
    const BytePosition start = send(SCI_GETSELECTIONSTART);
    if (start != send(SCI_GETSELECTIONEND))
        return styles_.coloursOf(styleAt(start)).text;
    if (typing_ && typing_->at == start)
        return typing_->colour;
    return start > 0 ? styles_.coloursOf(styleAt(start - 1)).text : defaultTextColour;
}

void RichTextBox::setSelColor(Colour colour) {
    const Position length = selLength();
    if (length > 0) {
        const TextRange selection{selStart(), length};
        setTextColor({&selection, 1}, colour);
    } else {
        typing_ = TypingColour{send(SCI_GETCURRENTPOS), colour};
    }
}

Colour RichTextBox::textColorAt(Position position) const {
    settleStyles();
    return styles_.coloursOf(styleAt(byteOf(position))).text;
}

Colour RichTextBox::backgroundAt(Position position) const {
    settleStyles();
    return styles_.coloursOf(styleAt(byteOf(position))).background;
}

void RichTextBox::setTextColor(std::span<const TextRange> ranges, Colour colour) {
    settleStyles();
    const std::vector<ByteSpan> spans = joined(ranges);
    std::array<int, 256> recoloured;
    recoloured.fill(-1);
    std::array<unsigned char, chunk> styles;
    BytePosition done = 0;
    for (auto next = spans.begin(); next != spans.end();) {
        const BytePosition start = std::max(done, next->first);
        const BytePosition end = std::min(start + static_cast<BytePosition>(chunk), spans.back().last);
        const std::span window(styles.data(), static_cast<std::size_t>(end - start));
        readStyles(start, window);
        for (; next != spans.end() && next->first < end; ++next) {
            for (BytePosition at = std::max(next->first, start); at < std::min(next->last, end); ++at) {
                unsigned char& style = window[static_cast<std::size_t>(at - start)];
                int& changed = recoloured[style];
                if (changed < 0)
                    changed = styleNumber({colour, styles_.coloursOf(style).background});
                style = static_cast<unsigned char>(changed);
            }
            if (next->last > end)
                break;
        }
        writeStyles(start, window);
        done = end;
    }
}

std::vector<RichTextBox::ByteSpan> RichTextBox::joined(std::span<const TextRange> ranges) const {
    const bool oneByteEach = everyCharacterIsOneByte();
    const BytePosition length = rawLength();
    const auto byteAt = [&](Position position) {
        return oneByteEach ? std::clamp<Position>(position, 0, length) : byteOf(position);
    };
    std::vector<ByteSpan> spans;
    spans.reserve(ranges.size());
    for (const TextRange& range : ranges) {
        const ByteSpan span{byteAt(range.start), byteAt(range.start + range.length)};
        if (span.first >= span.last)
            continue;
        if (!spans.empty() && span.first <= spans.back().last)
            spans.back().last = std::max(spans.back().last, span.last);
        else
            spans.push_back(span);
    }
    return spans;
}

int RichTextBox::styleNumber(ColourPair colours) {
    const StyleTable::Numbered style = styles_.numberOf(colours);
    if (style.isNew) {
        send(SCI_STYLESETFORE, style.number, colours.text);
        send(SCI_STYLESETBACK, style.number, colours.background);
    }
    return style.number;
}

void RichTextBox::styleDocument(std::string_view bytes, std::span<const rtf::ColourRun> runs) {
    // Chunk by chunk: a style buffer for the whole document would add its size to what a large load takes.
    std::array<unsigned char, chunk> buffer;
    std::size_t used = 0;
    const auto flush = [&] {
        if (used > 0)
            SendScintilla(SCI_SETSTYLINGEX, static_cast<unsigned long>(used),
                          reinterpret_cast<const char*>(buffer.data()));
        used = 0;
    };
    const auto append = [&](std::size_t length, int style) {
        while (length > 0) {
            const std::size_t part = std::min(length, chunk - used);
            std::memset(buffer.data() + used, style, part);
            used += part;
            length -= part;
            if (used == chunk)
                flush();
        }
    };

    if (runs.empty() && plainFrom_ == 0)
        return;
    plainFrom_ = rawLength();
    const bool oneByteEach = static_cast<BytePosition>(bytes.size()) == rawLength();
    send(SCI_STARTSTYLING, 0);
    std::string_view rest = bytes;
    for (const rtf::ColourRun& run : runs) {
        const std::string_view covered = rest.substr(0, run.length);
        append(oneByteEach ? covered.size() : utf8Length(covered), styleNumber({run.text, run.background}));
        rest.remove_prefix(covered.size());
    }
    append(oneByteEach ? rest.size() : utf8Length(rest), 0);
    flush();
}

// Reads the styles piece by piece as the runs are asked for.
rtf::SourceWriter::NextRun RichTextBox::colourRuns() const {
    struct Walk {
        std::vector<unsigned char> styles;
        std::string_view bytes; // empty where every character is one byte
        BytePosition next = 0;
        std::size_t at = 0;
    };

    const bool oneByteEach = everyCharacterIsOneByte();
    return [this, oneByteEach, walk = Walk{}]() mutable -> rtf::ColourRun {
        if (walk.at == walk.styles.size()) {
            const BytePosition size = std::min<BytePosition>(rawLength() - walk.next, chunk);
            walk.styles.resize(static_cast<std::size_t>(size));
            readStyles(walk.next, walk.styles);
            walk.bytes = oneByteEach ? std::string_view() : rawText(walk.next, size);
            walk.next += size;
            walk.at = 0;
        }
        if (walk.styles.empty())
            return {std::numeric_limits<std::uint32_t>::max()};
        const auto first = walk.styles.begin() + static_cast<std::ptrdiff_t>(walk.at);
        const auto end = std::find_if(first, walk.styles.end(), [&](unsigned char style) { return style != *first; });
        auto length = static_cast<std::uint32_t>(end - first);
        if (!oneByteEach)
            length = static_cast<std::uint32_t>(characters(walk.bytes.substr(walk.at, length)));
        walk.at = static_cast<std::size_t>(end - walk.styles.begin());
        const ColourPair colours = styles_.coloursOf(*first);
        return {length, colours.text, colours.background};
    };
}

int RichTextBox::styleAt(BytePosition byte) const {
    return static_cast<int>(send(SCI_GETSTYLEAT, byte) & 0xFF);
}

void RichTextBox::readStyles(BytePosition start, std::span<unsigned char> styles) const {
    if (start >= plainFrom_) {
        std::fill(styles.begin(), styles.end(), static_cast<unsigned char>(0));
        return;
    }
    std::array<char, 2 * 4096 + 2> pairs; // character and style in turn, and two NULs at the end
    for (std::size_t done = 0; done < styles.size();) {
        const std::size_t size = std::min<std::size_t>(styles.size() - done, 4096);
        const BytePosition first = start + static_cast<BytePosition>(done);
        SendScintilla(SCI_GETSTYLEDTEXT, first, first + static_cast<BytePosition>(size), pairs.data());
        for (std::size_t i = 0; i < size; ++i)
            styles[done + i] = static_cast<unsigned char>(pairs[2 * i + 1]);
        done += size;
    }
}

void RichTextBox::writeStyles(BytePosition start, std::span<const unsigned char> styles) {
    if (styles.empty())
        return;
    plainFrom_ = std::max(plainFrom_, start + static_cast<BytePosition>(styles.size()));
    send(SCI_STARTSTYLING, start);
    SendScintilla(SCI_SETSTYLINGEX, static_cast<unsigned long>(styles.size()),
                  reinterpret_cast<const char*>(styles.data()));
}

// --- Edits ------------------------------------------------------------------------------------------------------

void RichTextBox::onModified(BytePosition position, int type, BytePosition length) {
    settleStyles();
    textChanged_ = true;
    plainFrom_ = std::numeric_limits<BytePosition>::max(); // positions move; what is plain is no longer kept track of
    if (isInsideLineBreak(position))
        lineIndexIsStale_ = true;
    if (type & SC_MOD_BEFOREDELETE) {
        const BytePosition end = position + length;
        const bool joins =
            send(SCI_GETCHARAT, end) == '\n' && position > 0 && send(SCI_GETCHARAT, position - 1) == '\r';
        if (joins || isInsideLineBreak(end))
            lineIndexIsStale_ = true;
        std::vector<unsigned char> styles(static_cast<std::size_t>(length));
        readStyles(position, styles);
        if (type & SC_PERFORMED_UNDO)
            history_.undoRemoves(runsOf(styles));
        else if (type & SC_PERFORMED_REDO)
            history_.redoRemoves(runsOf(styles));
        else
            history_.deleting(runsOf(styles));
    } else if (type & SC_PERFORMED_UNDO) {
        pending_ = PendingStyles{position, history_.undoRestores(), {}};
    } else if (type & SC_PERFORMED_REDO) {
        pending_ = PendingStyles{position, history_.redoRestores(), {}};
    } else {
        history_.inserting();
        pending_ = stylesForInsertion(position, length);
    }
}

RichTextBox::PendingStyles RichTextBox::stylesForInsertion(BytePosition at, BytePosition length) {
    const bool continuesLine = at > 0 && !isLineBreak(send(SCI_GETCHARAT, at - 1));
    const ColourPair before = at > 0 ? styles_.coloursOf(styleAt(at - 1)) : ColourPair{};
    const Colour text = typing_ && typing_->at == at ? typing_->colour : before.text;
    const int firstLine = styleNumber({text, continuesLine ? before.background : defaultBackground});
    const int furtherLines = styleNumber({text, defaultBackground});
    return {at, {{static_cast<std::uint32_t>(length), static_cast<unsigned char>(firstLine)}}, furtherLines};
}

void RichTextBox::settleStyles() const {
    if (!pending_)
        return;
    const PendingStyles settled = *std::exchange(pending_, std::nullopt);
    send(SCI_STARTSTYLING, settled.at);
    BytePosition end = settled.at;
    for (const StyleRun& run : settled.styles) {
        send(SCI_SETSTYLING, run.length, run.style);
        end += run.length;
    }
    if (isInsideLineBreak(settled.at) || isInsideLineBreak(end))
        lineIndexIsStale_ = true;
    if (!settled.furtherLines)
        return;
    // A background ends with its line, so what was inserted after a line break must not carry it on.
    const std::string_view inserted = rawText(settled.at, end - settled.at);
    const std::size_t lineBreak = inserted.find_first_of("\r\n");
    if (lineBreak == inserted.npos)
        return;
    const BytePosition from = settled.at + static_cast<BytePosition>(lineBreak);
    send(SCI_STARTSTYLING, from);
    send(SCI_SETSTYLING, end - from, *settled.furtherLines);
}

void RichTextBox::refreshLineIndex() {
    if (!std::exchange(lineIndexIsStale_, false))
        return;
    // The text engine miscounts the characters of such lines.
    send(SCI_RELEASELINECHARACTERINDEX, SC_LINECHARACTERINDEX_UTF32);
    send(SCI_ALLOCATELINECHARACTERINDEX, SC_LINECHARACTERINDEX_UTF32);
}

void RichTextBox::settleEdit() {
    settleStyles();
    refreshLineIndex();
    if (typing_ && typing_->at != send(SCI_GETCURRENTPOS))
        typing_.reset();
    if (textChanged_ && !composing_) {
        textChanged_ = false;
        Q_EMIT changed();
    }
}

} // namespace blockhouse
