#include "platform/richtext/RichTextBox.h"

#include "platform/richtext/RichTextAccessible.h"
#include "platform/text/codepage.h"
#include "platform/text/FoldedSearch.h"

#include <QFontMetrics>
#include <QMenu>

#include <algorithm>
#include <utility>

namespace blockhouse {
namespace {

// The text engine would also announce finished edits, but then it counts characters from the document's start.
constexpr int announcedEdits = QsciScintillaBase::SC_MOD_BEFOREINSERT | QsciScintillaBase::SC_MOD_BEFOREDELETE;

} // namespace

RichTextBox::RichTextBox(QWidget* parent)
    : QsciScintillaBase(parent), engine_(*this), index_(engine_), styles_(engine_), editStyles_(engine_, styles_) {
    RichTextAccessible::install();
    setUpView();
    setUpMarks();
    setUpKeys();
    listenForEdits(true);
    connect(this, &QsciScintillaBase::SCN_MODIFIED, this,
            [this](int position, int type, const char*, int length, int, int, int, int, int, int) {
                onModified(position, type, length);
            });
    connect(this, &QsciScintillaBase::SCN_UPDATEUI, this, [this](int updated) {
        settleStyles();
        if ((updated & (SC_UPDATE_CONTENT | SC_UPDATE_SELECTION)) != 0)
            Q_EMIT looksDifferent();
    });
    connect(this, &QsciScintillaBase::SCN_SAVEPOINTLEFT, this, [this] { Q_EMIT modifiedChanged(true); });
    connect(this, &QsciScintillaBase::SCN_SAVEPOINTREACHED, this, [this] { Q_EMIT modifiedChanged(false); });
}

void RichTextBox::setUpView() {
    engine_.tell(SCI_SETWRAPMODE, SC_WRAP_NONE);
    for (int margin = 0; margin < 5; ++margin)
        engine_.tell(SCI_SETMARGINWIDTHN, margin, 0);
    engine_.tell(SCI_SETMARGINLEFT, 0, 3);
    engine_.tell(SCI_SETENDATLASTLINE, 1);
    // A line of a megabyte takes a second to lay out: not at every repaint.
    engine_.tell(SCI_SETLAYOUTCACHE, SC_CACHE_PAGE);
    engine_.tell(SCI_SETSCROLLWIDTH, 1);
    engine_.tell(SCI_SETSCROLLWIDTHTRACKING, 1);
    engine_.tell(SCI_USEPOPUP, SC_POPUP_NEVER);
    engine_.tell(SCI_SETPASTECONVERTENDINGS, 0);
    engine_.tell(SCI_SETEOLMODE, SC_EOL_CRLF);
    engine_.tell(SCI_SETTABWIDTH, 4);
    engine_.tell(SCI_SETUSETABS, 1);
    engine_.setFont(STYLE_DEFAULT, "Courier New");
    engine_.tell(SCI_STYLESETSIZEFRACTIONAL, STYLE_DEFAULT, 1050);
    engine_.tell(SCI_STYLESETFORE, STYLE_DEFAULT, defaultTextColour);
    engine_.tell(SCI_STYLESETBACK, STYLE_DEFAULT, defaultBackground);
    engine_.tell(SCI_STYLECLEARALL);
    for (const char unassigned : {'\x81', '\x8D', '\x8F', '\x90', '\x9D'}) {
        constexpr char digits[] = "0123456789ABCDEF";
        const unsigned byte = static_cast<unsigned char>(unassigned);
        const std::string label{'x', digits[byte >> 4], digits[byte & 15]};
        engine_.setRepresentation(codepage::toUtf8({&unassigned, 1}).c_str(), label.c_str());
    }
}

void RichTextBox::setTopMargin(Pixels height) {
    topMargin_ = height.value;
    keepMargins();
    if (scrollBarWidgets(Qt::AlignTop).isEmpty())
        addScrollBarWidget(new QWidget(this), Qt::AlignTop);
    scrollBarWidgets(Qt::AlignTop).first()->setFixedHeight(height.value);
}

void RichTextBox::setBottomMargin(Pixels height) {
    bottomMargin_ = height.value;
    keepMargins();
}

// A caret that was in view stays there.
void RichTextBox::resizeEvent(QResizeEvent* event) {
    const auto caretLine = engine_.ask(SCI_LINEFROMPOSITION, engine_.ask(SCI_GETCURRENTPOS));
    const auto linesBefore = std::exchange(linesInView_, engine_.ask(SCI_LINESONSCREEN));
    QsciScintillaBase::resizeEvent(event);
    const auto above = caretLine - engine_.ask(SCI_GETFIRSTVISIBLELINE); // lines in view above the caret
    if (above < linesBefore && above >= linesInView_)
        engine_.tell(SCI_LINESCROLL, 0, above - linesInView_ + 1);
}

void RichTextBox::keepMargins() {
    setViewportMargins(0, topMargin_, 0, bottomMargin_);
}

void RichTextBox::listenForEdits(bool on) {
    engine_.tell(SCI_SETMODEVENTMASK, on ? announcedEdits : 0);
}

// --- Selection --------------------------------------------------------------------------------------------------

RichTextBox::Position RichTextBox::selStart() const {
    return index_.characterOf(engine_.selection().first);
}

void RichTextBox::setSelStart(Position position) {
    endComposition();
    requestedStart_.forget();
    BytePosition byte = index_.byteOf(position);
    if (engine_.isInsideLineBreak(byte)) {
        --byte;
        requestedStart_.remember(position, byte);
    }
    engine_.putCaret(byte);
}

std::ptrdiff_t RichTextBox::selLength() const {
    return index_.characterOf(engine_.selection().last) - selStart();
}

void RichTextBox::setSelLength(std::ptrdiff_t length) {
    endComposition();
    const std::optional<Position> requested =
        length > 0 ? requestedStart_.whileCaretIsAt(engine_.caret()) : std::nullopt;
    const Position start = requested ? *requested : selStart();
    requestedStart_.forget();
    const BytePosition first = index_.byteOf(start);
    const BytePosition last = index_.byteOf(start + std::max<std::ptrdiff_t>(length, 0));
    engine_.tell(SCI_SETSELECTION, last, first);
}

RichTextBox::Position RichTextBox::caret() const {
    return index_.characterOf(engine_.caret());
}

std::string RichTextBox::selText() const {
    return textAt(selStart(), selLength());
}

void RichTextBox::setSelText(std::string_view bytes) {
    endComposition();
    prepareForInput();
    insertOverSelection(codepage::toUtf8(bytes));
    settleEdit();
}

void RichTextBox::insertOverSelection(std::string_view utf8) {
    engine_.tell(SCI_BEGINUNDOACTION);
    engine_.tell(SCI_TARGETFROMSELECTION);
    engine_.tell(SCI_REPLACETARGET, utf8);
    engine_.putCaret(engine_.ask(SCI_GETTARGETEND));
    engine_.tell(SCI_ENDUNDOACTION);
}

void RichTextBox::replaceRanges(std::span<const TextRange> ranges, std::string_view bytes) {
    endComposition();
    if (ranges.empty())
        return;
    // Where every range lies is asked at once, since the first edit may leave the characters miscounted.
    std::vector<ByteSpan> spans;
    spans.reserve(ranges.size());
    for (const TextRange& range : ranges)
        spans.push_back({index_.byteOf(range.start), index_.byteOf(range.start + range.length)});
    const std::string utf8 = codepage::toUtf8(bytes);
    engine_.tell(SCI_BEGINUNDOACTION);
    // From the last to the first, so that no range moves before its turn.
    for (auto span = spans.rbegin(); span != spans.rend(); ++span) {
        typing_.choose(span->first, styles_.coloursAt(span->first).text);
        engine_.tell(SCI_SETTARGETRANGE, span->first, span->last);
        engine_.tell(SCI_REPLACETARGET, utf8);
        settleStyles();
    }
    engine_.tell(SCI_ENDUNDOACTION);
    engine_.putCaret(engine_.ask(SCI_GETTARGETEND));
    settleEdit();
}

// --- Find -------------------------------------------------------------------------------------------------------

RichTextBox::Position RichTextBox::find(std::string_view what) {
    endComposition();
    const std::ptrdiff_t length = selLength();
    return length > 0 ? findIn(what, selStart(), selStart() + length) : findIn(what, 0, textLength());
}

RichTextBox::Position RichTextBox::find(std::string_view what, Position start) {
    endComposition();
    return findIn(what, std::clamp<Position>(start, 0, textLength()), textLength());
}

RichTextBox::Position RichTextBox::findIn(std::string_view what, Position start, Position end) {
    const FoldedSearch search(what);
    Position found = -1;
    if (index_.everyCharacterIsOneByte() || codepage::isAscii(what)) {
        const BytePosition first = index_.byteOf(start);
        const std::size_t at = search.find(engine_.text({first, index_.byteOf(end)}));
        if (at != FoldedSearch::npos)
            found = index_.characterOf(first + static_cast<BytePosition>(at));
    } else {
        // Letters beyond ASCII differ in length and lead bytes: they are compared in the code page, piece by piece.
        constexpr std::ptrdiff_t piece = 1 << 16;
        const auto overlap = static_cast<std::ptrdiff_t>(what.size());
        for (Position at = start; at < end && found < 0; at += piece) {
            const std::size_t hit = search.find(textAt(at, std::min(piece + overlap, end - at)));
            if (hit != FoldedSearch::npos)
                found = at + hit;
        }
    }
    if (found >= 0) {
        requestedStart_.forget();
        engine_.tell(SCI_SETSELECTION, index_.byteOf(found + what.size()), index_.byteOf(found));
    }
    return found;
}

// --- Edit-control messages --------------------------------------------------------------------------------------

void RichTextBox::scroll(ScrollStep step) {
    const std::ptrdiff_t page = std::max<std::ptrdiff_t>(engine_.ask(SCI_LINESONSCREEN), 1);
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

void RichTextBox::scrollLines(std::ptrdiff_t characters, std::ptrdiff_t lines) {
    engine_.tell(SCI_LINESCROLL, characters, lines);
}

std::ptrdiff_t RichTextBox::lineCount() const {
    return engine_.ask(SCI_GETLINECOUNT);
}

LineIndex RichTextBox::currentLine() const {
    return engine_.ask(SCI_LINEFROMPOSITION, engine_.selection().first);
}

LineIndex RichTextBox::firstVisibleLine() const {
    return engine_.ask(SCI_GETFIRSTVISIBLELINE);
}

LineIndex RichTextBox::lineAt(Position position) const {
    return engine_.ask(SCI_LINEFROMPOSITION, index_.byteOf(position));
}

RichTextBox::Position RichTextBox::lineStart(LineIndex line) const {
    return index_.characterOf(engine_.ask(SCI_POSITIONFROMLINE, line.value));
}

// --- Places on the screen ---------------------------------------------------------------------------------------

QRect RichTextBox::characterRect(Position position) const {
    const auto pixels = [this](unsigned message, BytePosition byte) {
        return static_cast<int>(engine_.ask(message, 0, byte));
    };
    const BytePosition byte = index_.byteOf(position);
    const int left = pixels(SCI_POINTXFROMPOSITION, byte);
    const int right = pixels(SCI_POINTXFROMPOSITION, index_.byteOf(position + 1));
    return {left, pixels(SCI_POINTYFROMPOSITION, byte), std::max(right - left, 1), pixels(SCI_TEXTHEIGHT, 0)};
}

RichTextBox::Position RichTextBox::positionAt(QPoint point) const {
    return index_.characterOf(engine_.ask(SCI_POSITIONFROMPOINT, point.x(), point.y()));
}

void RichTextBox::scrollIntoView(Position start, Position end) {
    engine_.tell(SCI_SCROLLRANGE, index_.byteOf(end), index_.byteOf(start));
}

void RichTextBox::scrollSideways(Position start, Position end) {
    const BytePosition first = index_.byteOf(start);
    const std::ptrdiff_t scrolled = engine_.ask(SCI_GETXOFFSET);
    // In pixels from the edge of a view that is not scrolled.
    const auto across = [&](BytePosition byte) { return engine_.ask(SCI_POINTXFROMPOSITION, 0, byte) + scrolled; };
    const std::ptrdiff_t edge = across(engine_.ask(SCI_POSITIONFROMLINE, engine_.ask(SCI_LINEFROMPOSITION, first)));
    const std::ptrdiff_t left = across(first);
    const std::ptrdiff_t right = std::max(across(index_.byteOf(end)), left + 1);
    const std::ptrdiff_t width = viewport()->width();
    if (left - edge >= scrolled && right <= scrolled + width)
        return;
    // What follows the place is seen a little, so that it does not look like the line's end.
    const std::ptrdiff_t behind = 4 * engine_.ask(SCI_TEXTHEIGHT, 0) / 2;
    const std::ptrdiff_t wanted = std::clamp<std::ptrdiff_t>(right + behind - width, 0, left - edge);
    // A view goes no farther than the widest line that has been painted.
    if (wanted + width > engine_.ask(SCI_GETSCROLLWIDTH))
        engine_.tell(SCI_SETSCROLLWIDTH, wanted + width);
    engine_.tell(SCI_SETXOFFSET, wanted);
}

} // namespace blockhouse
