#include "platform/richtext/RichTextBox.h"

#include "platform/richtext/RichTextAccessible.h"
#include "platform/text/codepage.h"
#include "platform/text/FoldedSearch.h"

#include <QFontMetrics>
#include <QMenu>

#include <algorithm>

namespace blockhouse {
namespace {

constexpr int characterIndex = QsciScintillaBase::SC_LINECHARACTERINDEX_UTF32;

// The text engine would also announce finished edits, but then it counts characters from the document's start.
constexpr int announcedEdits = QsciScintillaBase::SC_MOD_BEFOREINSERT | QsciScintillaBase::SC_MOD_BEFOREDELETE;

std::string_view prevailingLineEnd(std::string_view bytes) {
    std::size_t pairs = 0, returns = 0, feeds = 0;
    for (std::size_t at = bytes.find_first_of("\r\n"); at != bytes.npos && pairs + returns + feeds < 1000;
         at = bytes.find_first_of("\r\n", at + 1)) {
        if (bytes[at] == '\n')
            ++feeds;
        else if (at + 1 < bytes.size() && bytes[at + 1] == '\n')
            ++pairs, ++at;
        else
            ++returns;
    }
    if (pairs >= returns && pairs >= feeds)
        return "\r\n";
    return feeds >= returns ? "\n" : "\r";
}

} // namespace

RichTextBox::RichTextBox(QWidget* parent) : QsciScintillaBase(parent) {
    RichTextAccessible::install();
    setUpView();
    setUpKeys();
    listenForEdits(true);
    connect(this, &QsciScintillaBase::SCN_MODIFIED, this,
            [this](int position, int type, const char*, int length, int, int, int, int, int, int) {
                onModified(position, type, length);
            });
    connect(this, &QsciScintillaBase::SCN_UPDATEUI, this, [this] { settleStyles(); });
}

void RichTextBox::setUpView() {
    send(SCI_SETCODEPAGE, SC_CP_UTF8);
    send(SCI_ALLOCATELINECHARACTERINDEX, characterIndex);
    send(SCI_SETWRAPMODE, SC_WRAP_NONE);
    for (int margin = 0; margin < 5; ++margin)
        send(SCI_SETMARGINWIDTHN, margin, 0);
    send(SCI_SETMARGINLEFT, 0, 3);
    send(SCI_SETENDATLASTLINE, 1);
    send(SCI_SETSCROLLWIDTH, 1);
    send(SCI_SETSCROLLWIDTHTRACKING, 1);
    send(SCI_USEPOPUP, SC_POPUP_NEVER);
    send(SCI_SETPASTECONVERTENDINGS, 0);
    send(SCI_SETEOLMODE, SC_EOL_CRLF);
    send(SCI_SETTABWIDTH, 4);
    send(SCI_SETUSETABS, 1);
    SendScintilla(SCI_STYLESETFONT, static_cast<unsigned long>(STYLE_DEFAULT), "Courier New");
    send(SCI_STYLESETSIZEFRACTIONAL, STYLE_DEFAULT, 1050);
    send(SCI_STYLESETFORE, STYLE_DEFAULT, defaultTextColour);
    send(SCI_STYLESETBACK, STYLE_DEFAULT, defaultBackground);
    send(SCI_STYLECLEARALL);
    for (const char unassigned : {'\x81', '\x8D', '\x8F', '\x90', '\x9D'}) {
        constexpr char digits[] = "0123456789ABCDEF";
        const unsigned byte = static_cast<unsigned char>(unassigned);
        const std::string label{'x', digits[byte >> 4], digits[byte & 15]};
        SendScintilla(SCI_SETREPRESENTATION, codepage::toUtf8({&unassigned, 1}).c_str(), label.c_str());
    }
}

void RichTextBox::setTopMargin(Pixels height) {
    setViewportMargins(0, height.value, 0, 0);
    auto* besideScrollBar = new QWidget(this);
    besideScrollBar->setFixedHeight(height.value);
    addScrollBarWidget(besideScrollBar, Qt::AlignTop);
}

long RichTextBox::send(unsigned message, long first, long second) const {
    return SendScintilla(message, static_cast<unsigned long>(first), second);
}

long RichTextBox::sendText(unsigned message, std::string_view bytes) const {
    return SendScintilla(message, static_cast<unsigned long>(bytes.size()), bytes.data());
}

void RichTextBox::listenForEdits(bool on) {
    send(SCI_SETMODEVENTMASK, on ? announcedEdits : 0);
}

// --- Whole text -------------------------------------------------------------------------------------------------

std::string RichTextBox::text() const {
    return textAt(0, textLength());
}

std::string RichTextBox::textAt(Position start, Position length) const {
    const BytePosition first = byteOf(start);
    const BytePosition last = byteOf(start + std::max<Position>(length, 0));
    const std::string_view raw = rawText(first, last - first);
    return everyCharacterIsOneByte() ? std::string(raw) : codepage::fromUtf8(raw).bytes;
}

void RichTextBox::setText(std::string_view bytes) {
    load(bytes, {});
}

RichTextBox::Position RichTextBox::textLength() const {
    return send(SCI_INDEXPOSITIONFROMLINE, send(SCI_GETLINECOUNT), characterIndex);
}

bool RichTextBox::contains(char character) const {
    return rawText(0, rawLength()).find(codepage::toUtf8({&character, 1})) != std::string_view::npos;
}

std::optional<std::string_view> RichTextBox::asciiText() const {
    if (!everyCharacterIsOneByte())
        return std::nullopt;
    return rawText(0, rawLength());
}

std::string RichTextBox::rtf() const {
    settleStyles();
    const std::string decoded = asciiText() ? std::string() : text();
    std::string source;
    rtf::SourceWriter(asciiText().value_or(decoded), colourRuns(), styles_.colours())
        .writeLines(source, std::string::npos);
    return source;
}

void RichTextBox::editRtfLines(const std::function<std::string(std::string_view)>& edit) {
    constexpr std::size_t block = 1 << 16;
    settleStyles();
    const std::string decoded = asciiText() ? std::string() : text();
    const std::string_view before = asciiText().value_or(decoded);
    rtf::SourceWriter writer(before, colourRuns(), styles_.colours());
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
    const rtf::ColouredText coloured = rtf::read(source);
    load(coloured.text, coloured.runs);
}

void RichTextBox::load(std::string_view bytes, std::span<const rtf::ColourRun> runs, bool isTheText) {
    listenForEdits(false);
    send(SCI_SETUNDOCOLLECTION, 0);
    if (!isTheText)
        replaceDocument(bytes);
    styleDocument(bytes, runs);
    send(SCI_SETUNDOCOLLECTION, 1);
    send(SCI_EMPTYUNDOBUFFER);
    send(SCI_SETSAVEPOINT);
    listenForEdits(true);

    history_.clear();
    pending_.reset();
    typing_.reset();
    requestedStart_.reset();
    lineEnd_ = prevailingLineEnd(bytes);
    send(SCI_SETEOLMODE, lineEnd_ == "\r\n" ? SC_EOL_CRLF : lineEnd_ == "\n" ? SC_EOL_LF : SC_EOL_CR);
    send(SCI_SETEMPTYSELECTION, 0);
    send(SCI_SETFIRSTVISIBLELINE, 0);
    send(SCI_SETXOFFSET, 0);
    textChanged_ = true;
    settleEdit();
}

void RichTextBox::replaceDocument(std::string_view bytes) {
    const bool ascii = codepage::isAscii(bytes);
    const std::string encoded = ascii ? std::string() : codepage::toUtf8(bytes);
    const std::string_view utf8 = ascii ? bytes : encoded;
    send(SCI_CLEARALL);
    send(SCI_SETSCROLLWIDTH, 1);
    send(SCI_ALLOCATE, static_cast<long>(utf8.size()) + 1);
    sendText(SCI_APPENDTEXT, utf8);
    plainFrom_ = 0; // appended text has style 0
}

// --- Selection --------------------------------------------------------------------------------------------------

RichTextBox::Position RichTextBox::selStart() const {
    return characterOf(send(SCI_GETSELECTIONSTART));
}

void RichTextBox::setSelStart(Position position) {
    requestedStart_.reset();
    BytePosition byte = byteOf(position);
    if (isInsideLineBreak(byte)) {
        requestedStart_ = position;
        --byte;
    }
    send(SCI_SETEMPTYSELECTION, byte);
}

RichTextBox::Position RichTextBox::selLength() const {
    return characterOf(send(SCI_GETSELECTIONEND)) - selStart();
}

void RichTextBox::setSelLength(Position length) {
    const Position start = requestedStart_ && length > 0 ? *requestedStart_ : selStart();
    requestedStart_.reset();
    const BytePosition first = byteOf(start);
    const BytePosition last = byteOf(start + std::max<Position>(length, 0));
    send(SCI_SETSELECTION, last, first);
}

RichTextBox::Position RichTextBox::caret() const {
    return characterOf(send(SCI_GETCURRENTPOS));
}

std::string RichTextBox::selText() const {
    return textAt(selStart(), selLength());
}

void RichTextBox::setSelText(std::string_view bytes) {
    prepareForInput();
    insertOverSelection(codepage::toUtf8(bytes));
    settleEdit();
}

void RichTextBox::insertOverSelection(std::string_view utf8) {
    send(SCI_BEGINUNDOACTION);
    send(SCI_TARGETFROMSELECTION);
    sendText(SCI_REPLACETARGET, utf8);
    send(SCI_SETEMPTYSELECTION, send(SCI_GETTARGETEND));
    send(SCI_ENDUNDOACTION);
}

void RichTextBox::replaceRanges(std::span<const TextRange> ranges, std::string_view bytes) {
    if (ranges.empty())
        return;
    const std::string utf8 = codepage::toUtf8(bytes);
    send(SCI_BEGINUNDOACTION);
    // From the last to the first, so that no range moves before its turn.
    for (std::size_t left = ranges.size(); left > 0; --left) {
        const TextRange& range = ranges[left - 1];
        const BytePosition start = byteOf(range.start);
        typing_ = TypingColour{start, textColorAt(range.start)};
        send(SCI_SETTARGETRANGE, start, byteOf(range.start + range.length));
        sendText(SCI_REPLACETARGET, utf8);
        settleStyles();
        refreshLineIndex();
    }
    send(SCI_ENDUNDOACTION);
    send(SCI_SETEMPTYSELECTION, send(SCI_GETTARGETEND));
    settleEdit();
}

// --- Find -------------------------------------------------------------------------------------------------------

RichTextBox::Position RichTextBox::find(std::string_view what) {
    const Position length = selLength();
    return length > 0 ? findIn(what, selStart(), selStart() + length) : findIn(what, 0, textLength());
}

RichTextBox::Position RichTextBox::find(std::string_view what, Position start) {
    return findIn(what, std::clamp<Position>(start, 0, textLength()), textLength());
}

RichTextBox::Position RichTextBox::findIn(std::string_view what, Position start, Position end) {
    const FoldedSearch search(what);
    Position found = -1;
    if (everyCharacterIsOneByte() || codepage::isAscii(what)) {
        const BytePosition first = byteOf(start);
        const std::size_t at = search.find(rawText(first, byteOf(end) - first));
        if (at != FoldedSearch::npos)
            found = characterOf(first + static_cast<BytePosition>(at));
    } else {
        // Letters beyond ASCII differ in length and lead bytes: they are compared in the code page, piece by piece.
        constexpr Position piece = 1 << 16;
        const auto overlap = static_cast<Position>(what.size());
        for (Position at = start; at < end && found < 0; at += piece) {
            const std::size_t hit = search.find(textAt(at, std::min(piece + overlap, end - at)));
            if (hit != FoldedSearch::npos)
                found = at + static_cast<Position>(hit);
        }
    }
    if (found >= 0) {
        requestedStart_.reset();
        send(SCI_SETSELECTION, byteOf(found + static_cast<Position>(what.size())), byteOf(found));
    }
    return found;
}

// --- Edit-control messages --------------------------------------------------------------------------------------

void RichTextBox::scroll(ScrollStep step) {
    const Position page = std::max<Position>(send(SCI_LINESONSCREEN), 1);
    switch (step) {
    case ScrollStep::LineUp:
        return scrollLines(0, -1);
    case ScrollStep::LineDown:
        return scrollLines(0, 1);
    case ScrollStep::PageUp:
        return scrollLines(0, -page);
    case ScrollStep::PageDown:
        return scrollLines(0, page);
    }
}

void RichTextBox::scrollLines(Position characters, Position lines) {
    send(SCI_LINESCROLL, characters, lines);
}

RichTextBox::Position RichTextBox::lineCount() const {
    return send(SCI_GETLINECOUNT);
}

RichTextBox::Position RichTextBox::currentLine() const {
    return send(SCI_LINEFROMPOSITION, send(SCI_GETSELECTIONSTART));
}

RichTextBox::Position RichTextBox::firstVisibleLine() const {
    return send(SCI_GETFIRSTVISIBLELINE);
}

// --- Places on the screen ---------------------------------------------------------------------------------------

QRect RichTextBox::characterRect(Position position) const {
    const BytePosition byte = byteOf(position);
    const long left = send(SCI_POINTXFROMPOSITION, 0, byte);
    const long right = send(SCI_POINTXFROMPOSITION, 0, byteOf(position + 1));
    return QRect(static_cast<int>(left), static_cast<int>(send(SCI_POINTYFROMPOSITION, 0, byte)),
                 static_cast<int>(std::max(right - left, 1L)), static_cast<int>(send(SCI_TEXTHEIGHT)));
}

RichTextBox::Position RichTextBox::positionAt(QPoint point) const {
    return characterOf(send(SCI_POSITIONFROMPOINT, point.x(), point.y()));
}

void RichTextBox::scrollIntoView(Position start, Position end) {
    send(SCI_SCROLLRANGE, byteOf(end), byteOf(start));
}

// --- Positions --------------------------------------------------------------------------------------------------

bool RichTextBox::everyCharacterIsOneByte() const {
    return textLength() == rawLength();
}

RichTextBox::BytePosition RichTextBox::byteOf(Position position) const {
    const Position within = std::clamp<Position>(position, 0, textLength());
    if (everyCharacterIsOneByte())
        return within;
    const long line = send(SCI_LINEFROMINDEXPOSITION, within, characterIndex);
    return send(SCI_POSITIONRELATIVE, send(SCI_POSITIONFROMLINE, line),
                within - send(SCI_INDEXPOSITIONFROMLINE, line, characterIndex));
}

RichTextBox::Position RichTextBox::characterOf(BytePosition byte) const {
    if (everyCharacterIsOneByte())
        return byte;
    const long line = send(SCI_LINEFROMPOSITION, byte);
    return send(SCI_INDEXPOSITIONFROMLINE, line, characterIndex) +
           send(SCI_COUNTCHARACTERS, send(SCI_POSITIONFROMLINE, line), byte);
}

std::string_view RichTextBox::rawText(BytePosition start, BytePosition length) const {
    if (length <= 0)
        return {};
    return {reinterpret_cast<const char*>(send(SCI_GETRANGEPOINTER, start, length)), static_cast<std::size_t>(length)};
}

RichTextBox::BytePosition RichTextBox::rawLength() const {
    return send(SCI_GETLENGTH);
}

bool RichTextBox::isInsideLineBreak(BytePosition byte) const {
    return byte > 0 && send(SCI_GETCHARAT, byte) == '\n' && send(SCI_GETCHARAT, byte - 1) == '\r';
}

} // namespace blockhouse
