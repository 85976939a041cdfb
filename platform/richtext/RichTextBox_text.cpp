// The text as a whole: set, read, and exchanged as RTF source.
#include "platform/richtext/line_ends.h"
#include "platform/richtext/RichTextBox.h"
#include "platform/text/codepage.h"

#include <new>

namespace blockhouse {

std::string RichTextBox::text() const {
    return textAt(0, textLength());
}

std::string RichTextBox::textAt(Position start, std::ptrdiff_t length) const {
    const BytePosition first = index_.byteOf(start);
    const BytePosition last = index_.byteOf(start + std::max<std::ptrdiff_t>(length, 0));
    const std::string_view utf8 = engine_.text({first, last});
    return index_.everyCharacterIsOneByte() ? std::string(utf8) : codepage::fromUtf8(utf8).bytes;
}

bool RichTextBox::canHold(std::string_view bytes) {
    constexpr std::size_t most = 2'000'000'000; // the engine counts in 31 bits
    constexpr std::size_t longestCharacter = 3;
    return bytes.size() <= most / longestCharacter || codepage::utf8Length(bytes) <= most;
}

bool RichTextBox::canShow(std::string_view bytes) {
    constexpr std::size_t longestLine = 4'000'000; // takes about as many seconds when it comes into view
    return !hasLineLongerThan(bytes, longestLine);
}

void RichTextBox::setText(std::string_view bytes) {
    endComposition();
    load(bytes, {});
}

std::ptrdiff_t RichTextBox::textLength() const {
    return index_.length();
}

bool RichTextBox::contains(char character) const {
    return engine_.text({0, engine_.length()}).find(codepage::toUtf8({&character, 1})) != std::string_view::npos;
}

std::optional<std::string_view> RichTextBox::asciiText() const {
    if (!index_.everyCharacterIsOneByte())
        return std::nullopt;
    return engine_.text({0, engine_.length()});
}

std::string RichTextBox::rtf() const {
    const std::string decoded = asciiText() ? std::string() : text();
    std::string source;
    sourceWriter(asciiText().value_or(decoded)).writeLines(source, std::string::npos);
    return source;
}

rtf::SourceWriter RichTextBox::sourceWriter(std::string_view text) const {
    Q_ASSERT(editStyles_.isSettled());
    return {text, styles_.colourRuns(index_.everyCharacterIsOneByte()), styles_.colours()};
}

void RichTextBox::editRtfLines(const std::function<std::string(std::string_view)>& edit) {
    endComposition();
    constexpr std::size_t block = 1 << 16;
    const std::string decoded = asciiText() ? std::string() : text();
    const std::string_view before = asciiText().value_or(decoded);
    rtf::SourceWriter writer = sourceWriter(before);
    rtf::SourceReader reader(before);
    std::string source;
    source.reserve(2 * block);
    bool more = true;
    while (more) {
        source.clear();
        more = writer.writeLines(source, block);
        reader.read(edit(source));
    }
    const rtf::SourceReader::Outcome after = reader.finish();
    load(after.asExpected ? before : after.text, after.runs, after.asExpected);
}

std::string RichTextBox::rtfHeader() const {
    return rtf::header(styles_.colours());
}

void RichTextBox::setRtf(std::string_view source) {
    endComposition();
    const rtf::ColouredText coloured = rtf::read(source);
    load(coloured.text, coloured.runs);
}

rtf::ColouredText RichTextBox::colouredText() const {
    Q_ASSERT(editStyles_.isSettled());
    return {text(), styles_.allRuns(index_.everyCharacterIsOneByte())};
}

void RichTextBox::setColouredText(const rtf::ColouredText& coloured) {
    endComposition();
    load(coloured.text, coloured.runs);
}

void RichTextBox::colourBy(std::shared_ptr<const ColouringRule> rule) {
    endComposition();
    const std::string decoded = asciiText() ? std::string() : text();
    styles_.colourBy(std::move(rule), asciiText().value_or(decoded));
    viewport()->update();
}

bool RichTextBox::isModified() const {
    return engine_.ask(SCI_GETMODIFY) != 0;
}

void RichTextBox::setUnmodified() {
    endComposition();
    engine_.tell(SCI_SETSAVEPOINT);
}

void RichTextBox::load(std::string_view bytes, std::span<const rtf::ColourRun> runs, bool isTheText) {
    if (!isTheText)
        replaceDocument(bytes);
    styles_.recolourAll(bytes, runs);
    beginAnew(bytes);
}

void RichTextBox::setText(std::string_view bytes, std::shared_ptr<const ColouringRule> rule) {
    endComposition();
    replaceDocument(bytes);
    styles_.colourBy(std::move(rule), bytes);
    beginAnew(bytes);
}

void RichTextBox::beginAnew(std::string_view bytes) {
    engine_.tell(SCI_EMPTYUNDOBUFFER);
    engine_.tell(SCI_SETSAVEPOINT);
    editStyles_.clear();
    typing_.forget();
    requestedStart_.forget();
    lineEnd_ = prevailingLineEnd(bytes);
    engine_.tell(SCI_SETEOLMODE, lineEnd_ == "\r\n" ? SC_EOL_CRLF : lineEnd_ == "\n" ? SC_EOL_LF : SC_EOL_CR);
    engine_.putCaret(0);
    engine_.tell(SCI_SETFIRSTVISIBLELINE, 0);
    engine_.tell(SCI_SETXOFFSET, 0);
    textChanged_ = true;
    settleEdit();
}

void RichTextBox::setReadOnly(bool on) {
    engine_.tell(SCI_SETREADONLY, on);
}

bool RichTextBox::isReadOnly() const {
    return engine_.ask(SCI_GETREADONLY) != 0;
}

void RichTextBox::replaceDocument(std::string_view bytes) {
    const bool ascii = codepage::isAscii(bytes);
    const std::string encoded = ascii ? std::string() : codepage::toUtf8(bytes);
    const std::string_view utf8 = ascii ? bytes : encoded;
    const bool wasReadOnly = isReadOnly();
    setReadOnly(false);
    listenForEdits(false);
    engine_.tell(SCI_SETUNDOCOLLECTION, 0);
    index_.textGoes();
    engine_.tell(SCI_CLEARALL);
    engine_.tell(SCI_SETSCROLLWIDTH, 1);
    engine_.tell(SCI_ALLOCATE, static_cast<std::ptrdiff_t>(utf8.size()) + 1);
    engine_.tell(SCI_APPENDTEXT, utf8);
    // The engine keeps its own failures to itself.
    const bool hasFailed = engine_.length() != static_cast<BytePosition>(utf8.size());
    if (hasFailed) {
        engine_.tell(SCI_CLEARALL);
        engine_.tell(SCI_SETSTATUS, SC_STATUS_OK);
    }
    index_.textReplaced(ascii || hasFailed);
    styles_.textReplaced();
    engine_.tell(SCI_SETUNDOCOLLECTION, 1);
    listenForEdits(true);
    setReadOnly(wasReadOnly);
    if (hasFailed)
        throw std::bad_alloc();
}

} // namespace blockhouse
