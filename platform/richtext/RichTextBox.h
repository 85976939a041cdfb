// The rich-text box: plain text in the documents' code page, a text colour and a background for every character,
// undo that brings colours back, and the calls of a classic edit control.
//
// Positions are characters of the single-byte text counted from 0 (CR LF is two); a position beyond the text means
// its end. Colours are 0x00BBGGRR. Line ends, NULs and high bytes are kept as they are. Text set as a whole cannot
// be undone. Colours belong to the characters: setting them neither counts as a change nor can be undone.
#pragma once

#include "platform/richtext/CharacterIndex.h"
#include "platform/richtext/EditStyles.h"
#include "platform/richtext/RequestedStart.h"
#include "platform/richtext/SeenPress.h"
#include "platform/richtext/TextEngine.h"
#include "platform/richtext/TextStyles.h"
#include "platform/richtext/TypingColour.h"
#include "platform/text/Colour.h"
#include "platform/text/ColouringRule.h"
#include "platform/text/rtf.h"
#include "platform/text/units.h"

#include <Qsci/qsciscintillabase.h>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace blockhouse {

class RichTextBox : public QsciScintillaBase {
    Q_OBJECT

public:
    using Position = CaretPosition;

    explicit RichTextBox(QWidget* parent = nullptr);

    // --- Whole text -------------------------------------------------------------------------------------------
    [[nodiscard]] std::string text() const;
    // Whether the text engine can take such a text: as UTF-8 it must be shorter than 2 GB.
    [[nodiscard]] static bool canHold(std::string_view bytes);
    // Whether it can show such a text without long waits: the time that a line takes grows with its length.
    [[nodiscard]] static bool canShow(std::string_view bytes);
    // Everything in the default colours, caret at the start, nothing to undo. Throws std::bad_alloc when memory runs
    // out, as does all that sets the whole text; the box is empty then.
    void setText(std::string_view bytes);
    // The same with the colours that the rule gives. They cost nothing before they are seen or asked for.
    void setText(std::string_view bytes, std::shared_ptr<const ColouringRule> rule);
    // The whole text gets the colours that the rule gives it now. Nothing else changes: undo, selection and view stay.
    void colourBy(std::shared_ptr<const ColouringRule> rule);
    [[nodiscard]] std::ptrdiff_t textLength() const;
    // The characters of [start, start + length).
    [[nodiscard]] std::string textAt(Position start, std::ptrdiff_t length) const;

    [[nodiscard]] bool contains(char character) const;

    [[nodiscard]] std::string rtf() const;
    // The groups before the body, colour table included; costs nothing whatever the text's length. The table lists
    // every colour that some text of this box has had since the box was made.
    [[nodiscard]] std::string rtfHeader() const;
    // As setText(), with the colours the source gives.
    void setRtf(std::string_view source);
    // As setRtf(edit(rtf())) for an edit that treats every line of the source by itself. It is handed the source in
    // blocks of whole lines, their ends included, so that a large text never has its source in memory as a whole.
    void editRtfLines(const std::function<std::string(std::string_view)>& edit);
    // The whole text, uncopied, as long as every character of it is ASCII; nothing otherwise. Until the next change.
    [[nodiscard]] std::optional<std::string_view> asciiText() const;

    // The text with its colours, and the way back, which counts as setText().
    [[nodiscard]] rtf::ColouredText colouredText() const;
    void setColouredText(const rtf::ColouredText& coloured);

    // Whether the text differs from what was set as a whole, or from what it was at the last setUnmodified(). Undo and
    // redo lead back there.
    [[nodiscard]] bool isModified() const;
    void setUnmodified();

    // --- Selection --------------------------------------------------------------------------------------------
    [[nodiscard]] Position selStart() const;
    // Empties the selection. A caret between CR and LF goes before the CR, so that typing never splits the pair;
    // a setSelLength() right after still counts from `position`.
    void setSelStart(Position position);
    [[nodiscard]] std::ptrdiff_t selLength() const;
    void setSelLength(std::ptrdiff_t length);
    // The end of the selection that moves; selStart() when nothing is selected.
    [[nodiscard]] Position caret() const;
    [[nodiscard]] std::string selText() const;
    // Replaces the selection in one undo step; the caret ends after the new text, which takes the selection's colour.
    void setSelText(std::string_view bytes);

    // Replaces many ranges, ordered and apart from each other, in one undo step. Each new text takes the colour of the
    // first character that it replaces. Nothing is selected then, and the caret stands after the first one.
    void replaceRanges(std::span<const TextRange> ranges, std::string_view bytes);

    // Text colour of the selection's first character; without a selection, of what is typed next.
    [[nodiscard]] Colour selColor() const;
    void setSelColor(Colour colour);
    [[nodiscard]] Colour textColorAt(Position position) const;
    // White where the text has no background of its own.
    [[nodiscard]] Colour backgroundAt(Position position) const;
    // Many ranges at once: ordered by start; they may overlap. Selection and typing colour stay as they are.
    void setTextColor(std::span<const TextRange> ranges, Colour colour);

    // --- Find -------------------------------------------------------------------------------------------------
    // Ignores case; selects the match and returns its position, or -1 and changes nothing. Without a start the
    // selection is searched if there is one, else the whole text; with a start, from there to the text's end.
    Position find(std::string_view what);
    Position find(std::string_view what, Position start);

    // --- Edit-control messages --------------------------------------------------------------------------------
    enum class ScrollStep { LineUp = 0, LineDown = 1, PageUp = 2, PageDown = 3 };
    void scroll(ScrollStep step);
    void scrollLines(std::ptrdiff_t characters, std::ptrdiff_t lines);
    [[nodiscard]] std::ptrdiff_t lineCount() const;
    // Line of the caret, or of the selection's start.
    [[nodiscard]] LineIndex currentLine() const;
    [[nodiscard]] LineIndex firstVisibleLine() const;
    [[nodiscard]] LineIndex lineAt(Position position) const;
    [[nodiscard]] Position lineStart(LineIndex line) const;

    // --- Places on the screen ---------------------------------------------------------------------------------
    // In the viewport's coordinates, wherever the view is scrolled to.
    [[nodiscard]] QRect characterRect(Position position) const;
    // The character nearest to a point of the viewport.
    [[nodiscard]] Position positionAt(QPoint point) const;
    void scrollIntoView(Position start, Position end);
    // Moves the view left or right, if a part of [start, end) of one line is out of it, to where the place and what
    // leads to it from the line's start are in view, as much of both as there is room for: the place's start always.
    void scrollSideways(Position start, Position end);

    // --- Marks ------------------------------------------------------------------------------------------------
    // They show in the text and are no colours of it: RTF source, undo and files never hold them. They go with their
    // text until the next call.
    enum class Mark { Pair, Fault };
    // The marks of that kind from now on, instead of those before; ordered by start.
    void setMarks(Mark mark, std::span<const TextRange> ranges);
    [[nodiscard]] bool isMarked(Mark mark, Position position) const;

    // Read-only, the text changes only as a whole, by setText() and its like.
    void setReadOnly(bool on);
    [[nodiscard]] bool isReadOnly() const;

    // --- Editing ----------------------------------------------------------------------------------------------
    void undo();
    void redo();
    // Plain text. Pasted line ends become the document's prevailing kind. Where the clipboard fails, text and selection
    // stay.
    void copy();
    void cut();
    void paste();

    // Keep the top and the foot of the box free of text, for controls that reach into it.
    void setTopMargin(Pixels height);
    void setBottomMargin(Pixels height);

    // --- Input methods ----------------------------------------------------------------------------------------
    // While an input method composes, the document holds text that is not committed. This has the input method commit
    // it, or takes it out; announces what changed. The calls above that change the text or the selection, find or copy
    // begin with it, as do keys and mouse presses: a caller needs it before it reads the text to keep it.
    void endComposition();

    // Called for every key press before the box or a menu shortcut acts on it; true cancels the key. Text that an
    // input method brings is announced in the same way before it goes in, once for each composition, as a press of
    // Qt::Key_unknown with that text; true drops the text.
    using KeyDown = std::function<bool(const QKeyEvent&)>;

    void setKeyDown(KeyDown handler) { keyDown_ = std::move(handler); }

    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

Q_SIGNALS:
    // The text has changed; the new text can be read.
    void changed();
    // Text or selection may have changed since the last time; comes before the box is painted, once for all changes.
    void looksDifferent();
    // Before the box acts on the button. `position` is in the viewport's coordinates.
    void mouseDown(Qt::MouseButton button, QPoint position);
    // The keyboard asked for the pop-up menu, to be shown at this place on the screen.
    void menuKeyPressed(QPoint globalPosition);
    // Something typed, pasted or dropped held characters that the code page lacks: they became "?".
    void charactersReplaced() const;
    // isModified() has changed.
    void modifiedChanged(bool modified);
    // Something could not be put on the clipboard, or had from it: whoever holds it does not answer.
    void clipboardFailed() const;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    QByteArray fromMimeData(const QMimeData* source, bool& rectangular) const override;
    QMimeData* toMimeData(const QByteArray& text, bool rectangular) const override;

private:
    void setUpView();
    void setUpMarks();
    void setUpKeys();
    void listenForEdits(bool on);
    void keepMargins();

    // Makes `bytes` the whole document, unless it is that already.
    void load(std::string_view bytes, std::span<const rtf::ColourRun> runs, bool isTheText = false);
    void replaceDocument(std::string_view bytes);
    // Nothing can be undone, nothing is selected, and the view is at the start.
    void beginAnew(std::string_view bytes);
    [[nodiscard]] rtf::SourceWriter sourceWriter(std::string_view text) const;
    [[nodiscard]] Position findIn(std::string_view what, Position start, Position end);

    [[nodiscard]] ColourPair coloursAt(BytePosition byte) const;
    // The text engine is about to edit.
    void onModified(BytePosition position, int type, std::ptrdiff_t length);
    void settleStyles();
    // Comes after everything that may have edited or moved the caret: only then are queries right. Says that the text
    // has changed if it has.
    void settleEdit();

    void prepareForInput();
    [[nodiscard]] bool runKeyDown(const QKeyEvent& event);
    [[nodiscard]] bool askKeyDown(const QKeyEvent& event);
    [[nodiscard]] bool acceptsText(const QString& text);
    void compose(const QInputMethodEvent& event);
    void commit(const QInputMethodEvent& event);
    void replaceComposition(QInputMethodEvent& event);
    void startUndoStep();
    [[nodiscard]] bool actOnClipboardKey(const QKeyEvent& event);
    [[nodiscard]] bool putSelectionOnClipboard();
    void insertOverSelection(std::string_view utf8);
    [[nodiscard]] std::string encodedForInsertion(const QString& text) const;

    TextEngine engine_;
    CharacterIndex index_;
    TextStyles styles_;
    EditStyles editStyles_;
    TypingColour typing_;
    RequestedStart requestedStart_;
    SeenPress seenPress_;
    KeyDown keyDown_;
    int topMargin_ = 0; // in pixels
    int bottomMargin_ = 0;
    std::ptrdiff_t linesInView_ = 0;    // at the last change of size
    std::string_view lineEnd_ = "\r\n"; // the document's prevailing kind
    bool textChanged_ = false;          // not announced yet

    std::array<std::vector<ByteSpan>, 2> marked_; // by kind, as they were set

    // Text in the document that an input method has not committed.
    struct Composition {
        BytePosition at;
        Colour colour;
    };

    std::optional<Composition> composition_;
};

} // namespace blockhouse
