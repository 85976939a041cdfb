// The placement editor: a top-level window that shows where a side's structures stand and lets them be dragged.
#pragma once

#include "placement/build_list.h"
#include "placement/DropHistory.h"
#include "placement/mark_board.h"
#include "placement/UnsavedDrops.h"
#include "platform/system/FileStamp.h"
#include "platform/widgets/KnownFile.h"

#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QWidget>

#include <optional>
#include <string>
#include <vector>

class QAction;
class QMenuBar;
class QScrollArea;
class QStringListModel;

namespace blockhouse {

class Canvas;
class DropDownList;
class NoticeArea;

class Form2 : public QWidget {
    Q_OBJECT

public:
    Form2();

    // Shows the window, loads the file and lists its sides; what was shown before goes, unsaved drops are handed over.
    // A file that cannot be read changes nothing, and the user is told. Startout is not used.
    void Openfile(const std::string& Txt_path, TextPosition Startout = notFound);
    // Shows the window with a text that was left before, and lists its sides. Its drops can be taken back.
    void bringBack(UnsavedDrops left);

    // Lists the structures whose keywords start in the range, and puts their marks on the canvas.
    void loadcombo2(TextPosition startSearch, TextPosition endSearch);
    // Lists them anew after the text has changed; the marks stay. Then selects entry `tindex`, counted from 0.
    void loadcombopart2(TextPosition startSearch, TextPosition endSearch, int tindex);

    // Writes the text to the file it came from.
    void save();

    std::string Filepath; // empty before the first file
    std::string Filetext;

    DropDownList* Combo1; // the sides
    DropDownList* Combo2; // the structures of the chosen one
    Canvas* Picture1;
    QPlainTextEdit* Text1;
    QFrame* Picture2;
    QLabel* Label2;
    QLabel* labelWritten; // what the last click wrote into the text
    NoticeArea* notices;
    QGroupBox* Frame1;
    QPlainTextEdit* log1;
    QPushButton* Command1;

    // The last drop is taken back, or done again: in the text, on the canvas and in the log. The side that it belongs
    // to is chosen.
    void undo();
    void redo();

    // The entries of the two lists.
    [[nodiscard]] const std::vector<SideEntry>& sides() const { return sides_; }

    [[nodiscard]] const std::vector<StructureEntry>& structures() const { return structures_; }

    [[nodiscard]] const MarkBoard& board() const { return board_; }

Q_SIGNALS:
    // The window is going away.
    void closed();
    // Another text takes the place of this one, or the window is going away.
    void unsavedDropsLeft(const UnsavedDrops& left);
    void closedTextWanted();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    [[nodiscard]] QMenuBar* makeMenus();
    [[nodiscard]] QWidget* makeControls();
    void makeLog(QWidget* inside);
    void makeKeys();
    void fitToFont();
    void startAtSizeFor(const QScrollArea& room);
    void open();
    [[nodiscard]] bool handOverUnsavedDrops();
    void showText(std::string path, std::string text, std::optional<FileStamp> known, DropHistory drops);
    void lookAtFile();

    void chooseSide();
    [[nodiscard]] SearchRange chosenRange() const;
    void chooseStructure(int index);
    void listStructures(const BuildListScan& scan);
    void showDrop(const DroppedStructure& drop, CanvasPoint mark);
    void tellWritten(const QString& name, const QString& line, bool canUndo);

    [[nodiscard]] bool isSaved() const { return drops_.isSaved() && !file_.wasChangedByOthers(); }

    void showWhetherSaved();
    void tellFailures(const std::vector<ScanFailure>& failures);

    void press(CanvasPoint pointer);
    void move(CanvasPoint pointer, MouseButtons held);
    void release(CanvasPoint pointer);

    std::vector<SideEntry> sides_;
    std::vector<StructureEntry> structures_;
    DropHistory drops_;
    KnownFile file_;
    bool isPressed_ = false;    // a button is held, perhaps dragging a mark
    CanvasPoint pressedMark_{}; // where the selected mark stood when the button was pressed
    SearchRange listedRange_{}; // by the last loadcombo2()
    MarkBoard board_;
    QStringListModel* sideNames_;
    QStringListModel* structureNames_;
    QAction* m_save_ = nullptr;
};

} // namespace blockhouse
