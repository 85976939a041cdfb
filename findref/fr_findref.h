// The search through every file of every listed directory: a child window inside the main window, one for the whole
// program.
#pragma once

#include "findref/HitList.h"
#include "findref/ReferenceSearch.h"
#include "platform/text/EntryList.h"
#include "platform/widgets/LongWork.h"
#include "platform/widgets/PictureBox.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QWidget>

#include <functional>
#include <string_view>

namespace blockhouse {

class HitListModel;
class NoticeArea;

class fr_findref : public QWidget {
    Q_OBJECT

public:
    // Repaints the box with the share value / maximum of a bar. Serves events.
    using ProgressPainter = std::function<void(PictureBox& box, double value, double maximum)>;

    // `Dirs`, the directories to search, must outlive the window.
    fr_findref(const EntryList& Dirs, ProgressPainter drawProgress);
    ~fr_findref() override;

    // Shows the window with whatever it holds and asks to be the front one.
    void present();

    // Shows the window and searches for `what`, which is in the documents' code page. Serves events: the window may be
    // closed when it returns. Called while a search is under way, it returns at once, and that search is given up for
    // the new one.
    void findRef(std::string_view what);

    QListView* List1;
    PictureBox* Picture1;
    QLabel* Label1;
    QPushButton* command1;
    QLineEdit* Text1;
    NoticeArea* notices; // at the foot of the list

    QSize sizeHint() const override;

Q_SIGNALS:
    // To be brought to the front of the main window's child windows.
    void frontWanted();
    // The user wants to see this hit. `text` was looked for when it was found.
    void hitChosen(const std::string& path, blockhouse::TextPosition position, const std::string& text);
    // The window is going away; there will be another one when it is wanted again.
    void closed();

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void makeControls();
    void layOut();
    [[nodiscard]] int barHeight() const;
    [[nodiscard]] int rowHeight() const;
    [[nodiscard]] int buttonWidth() const;

    // Gives up the search that is under way for the new one.
    void search();
    // False at the end of the search.
    [[nodiscard]] bool searchOn(ReferenceSearch& search);
    // Serves events.
    void showProgress(int value, int maximum);
    void showHits();
    void tellEnd(const ReferenceSearch::Ended& end);
    void openHit(const QModelIndex& hit);

    const EntryList& Dirs_;
    const ProgressPainter drawProgress_;
    HitList hits_;
    HitListModel* model_;
    QElapsedTimer sinceProgress_;
    QElapsedTimer sinceHits_;
    LongWork search_;
};

} // namespace blockhouse
