// The editor window: one per opened file, a child window inside the main window.
#pragma once

#include "editor/block_scan.h"
#include "editor/block_structure.h"
#include "editor/ClosedText.h"
#include "editor/save_cut.h"
#include "editor/textboxbas.h"
#include "editor/typing_assistance.h"
#include "platform/richtext/RichTextBox.h"
#include "platform/text/Result.h"
#include "platform/widgets/DropDownList.h"
#include "platform/widgets/KnownFile.h"
#include "platform/widgets/LongWork.h"
#include "platform/widgets/MenuSource.h"
#include "platform/widgets/PictureBox.h"
#include "platform/widgets/window_handles.h"

#include <QLabel>
#include <QMenu>
#include <QToolBar>
#include <QWidget>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace blockhouse {

class BlockListModel;
class EditorHost;
class FindPanel;
class NoticeArea;

class fr_edit : public QWidget, public MenuSource {
    Q_OBJECT

public:
    // The host must outlive the window.
    explicit fr_edit(EditorHost& host, QWidget* parent = nullptr);
    ~fr_edit() override;

    // Loads the file, fills the block list, colours the text; called once, on a new window that has been added to the
    // main window's area. Startout is the position of a place in the file whose block is wanted.
    // Serves events. False when the window has been closed: by the user meanwhile, or because the file could not be
    // read (the user has been told then). Until it returns nothing can be typed, pasted, cut or saved.
    bool Openfile(const std::string& Txt_path, TextPosition Startout = notFound);

    // Colours the block keywords and comments of the whole text. Serves events. Does nothing while a file is opened.
    void FormatBox();

    // 0-based index of the first entry of the block list equal to `what` ignoring case, or -1.
    [[nodiscard]] int Findin(std::string_view what) const;

    // Fills Combo1 for the block whose header lies at or just before the 1-based position i.
    void Makekeywords(TextPosition i);
    // 0-based index of the first entry of Combo1 equal to `what` ignoring case, or -1.
    [[nodiscard]] int FindinCombo(std::string_view what) const;

    // Selects `text`, ignoring case, where it stands nearest to `position`, and brings it into view. Does nothing where
    // it stands nowhere. A search found it at `position`, and the file may have changed since.
    void showFound(TextPosition position, std::string_view text);

    // Each writes the text up to its last block's end; a failure is told and loses nothing.
    void Save();
    void SaveAs();
    // As Save(), but asks for a file name if there is none.
    void ToolbarSave();

    // Shows a text that was closed, as it was.
    void bringBack(const ClosedText& closed);

    // Colours the whole text as opening a file does. Text, undo, selection and view stay.
    void colourAgain();

    // Whether closing the window would leave text that its file does not hold.
    [[nodiscard]] bool holdsUnsavedText() const;

    QList<QMenu*> menus() override;

    [[nodiscard]] WindowHandle handle() const { return handle_; }

    std::string Filepath;
    std::string Filetext;
    HeaderKind BlockKind = HeaderKind::None; // of the names in List1; None until one has been listed

    QToolBar* Toolbar1;
    QLabel* PlaceLabel; // at the right of the toolbar: line, column, and the blocks around the caret
    RichTextBox* txt_edit;
    FindPanel* FindFrame;
    QMenu* mnu_lil; // the text box's pop-up menu
    QAction* mnu_fileex;
    DropDownList* List1;
    DropDownList* Combo1;
    PictureBox* Picture1;
    PictureBox* thebar;
    NoticeArea* notices; // at the foot of the text

    QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void makeToolbar();
    void makeControls();
    void makeMenus();
    QAction* addCommand(QMenu* menu, const char* name, const QString& caption, const QKeySequence& shortcut,
                        void (fr_edit::*act)());

    // The text around the caret and its blocks, as long as it has not changed.
    struct Around {
        BlockRegion region;
        std::string text;
        BlockStructure structure;
    };

    const Around& aroundCaret();
    void markPair(const Around& around, std::optional<std::size_t> block);
    void goToOtherEnd();
    void makePlaceLabel();
    void placeLabel();
    void showPlace();
    void elidePlace();
    void fitRowsToFont();
    void layOut();
    [[nodiscard]] QSize outerSize() const;

    // `unreadable` tells the cause if the file could not be read.
    [[nodiscard]] LongWork::Steps stepsOfOpening(const std::string& path, TextPosition startout,
                                                 const std::shared_ptr<std::optional<FileError>>& unreadable);
    void colourFile();
    [[nodiscard]] LongWork::Steps stepsOfFormatting();
    // Serves events.
    void progress(double value, double maximum);
    [[nodiscard]] LongWork::Then readFile(const std::string& path, std::optional<FileError>& unreadable);
    void announce(const std::string& path);
    void refuse(const FileError& error);
    // Unless enough of another kind are found already.
    void lookForBlocks(std::vector<BlockEntry>& blocks, HeaderKind kind);
    void listBlocks(std::vector<BlockEntry> blocks, TextPosition startout);
    [[nodiscard]] int blockToSelect(TextPosition startout) const;

    void showPopup(QPoint globalPosition);
    void toggleExplorer();
    void countCharacters();
    void findReferences();
    void openFindPanel();
    void copySelection();
    void cutSelection();
    void pasteOverSelection();
    void addKey(const char* name, const QString& caption, const QKeySequence& key, void (fr_edit::*act)());
    void tellTroubleWithInput();

    // The text box does not hold the file's text yet.
    [[nodiscard]] bool isOpening() const { return opening_; }

    void watchFile();
    // Looks whether another program or window has changed the file.
    void lookAtFile();
    void showWhetherSaved();
    void handOverUnsavedText();

    [[nodiscard]] bool assistTyping(const QKeyEvent& event);
    void carryOut(const TextBoxAction& action);

    void chooseBlock(int index);
    void chooseSetting(int index);
    void scrollCaretLineToTop();

    // The text to write becomes Filetext.
    std::optional<LeftOut> takeSnapshot();
    void writeTo(const std::string& path);
    void tellWhatWasSaved(const std::string& path, const std::optional<LeftOut>& leftOut, const std::string& backup);
    [[nodiscard]] std::optional<std::string> askForFileName();

    EditorHost& host_;
    const WindowHandle handle_;
    BlockListModel* blocks_;
    TypingAssistance typing_;
    QList<QMenu*> menus_;
    LongWork work_; // opening the file and colouring its text
    KnownFile file_;
    bool opening_ = false;
    bool fileLacksText_ = false; // some of the text was never written
    bool shownUnsaved_ = false;
    QIcon plainPicture_; // without the dot

    std::optional<Around> around_;
};

} // namespace blockhouse
