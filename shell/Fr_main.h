#pragma once

#include "platform/text/EntryList.h"
#include "platform/text/Result.h"
#include "platform/widgets/LongWork.h"
#include "shell/application_folder.h"
#include "shell/ExplorerPanel.h"
#include "shell/FrontWindow.h"
#include "shell/WindowBar.h"

#include <QMainWindow>
#include <QMetaMethod>

#include <memory>
#include <string>
#include <vector>

class QMdiArea;
class QTreeView;

namespace blockhouse {

class NoticeArea;

// The main window: editor windows and tool windows inside it, the window bar above, the tree of directories at the
// right. What it cannot do itself it announces; a menu item whose announcement nobody listens to is disabled.
class Fr_main : public QMainWindow {
    Q_OBJECT

public:
    // `Dirs` is filled by load() and loaddirs() and must outlive the window.
    Fr_main(EntryList& Dirs, ApplicationFolder files);
    ~Fr_main() override;

    // Reads both list files and fills the tree; without a directory list it hides the panel and asks for the directory
    // editor. Serves events. False when the window was closed meanwhile: then do not show it. What cannot be read is
    // left out silently. The first showing of the window loads it, unless that was done before; once is enough.
    bool load();

    // Loads the window first if need be; closed while it loads, it stays hidden.
    void setVisible(bool visible) override;

    // Reads the directory list anew and adds to the tree what is new; nodes are never removed. Shows the panel.
    // Does nothing without a directory list. Serves events.
    void loaddirs();
    // Adds what `Dirs` holds to the tree.
    void showDirs();

    [[nodiscard]] QMdiArea* mdiArea() const { return mdiArea_; }

    // Decides which child window is in front.
    [[nodiscard]] FrontWindow& front() const { return *front_; }

    [[nodiscard]] bool explorerVisible() const { return !picPlane->isHidden(); }

    // Also sets the check mark of mnu_fileex.
    void setExplorerVisible(bool visible);

    // At the foot of the area that holds the child windows.
    [[nodiscard]] NoticeArea* notices() const { return notices_; }

    // The entries of the jump list, in the user's order.
    EntryList jumps;

    WindowBar* const Toolbar1;
    ExplorerPanel* const picPlane;
    QTreeView* const Tree1;
    QAction* const mnu_fileex;

Q_SIGNALS:
    // The user picked this file in the tree: to be opened in an editor window, or in the placement editor.
    void fileChosen(const std::string& path);
    void placementWanted(const std::string& path);
    // To be shown, each its single window.
    void findReferenceWanted();
    void directoryEditorWanted();
    void optionsWanted();
    void placementEditorWanted();
    // The text that was closed last is to come back.
    void closedTextWanted();
    // The user closed the main window, which ends the program at once: no other window is closed or asked.
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;
    void connectNotify(const QMetaMethod& signal) override;
    void disconnectNotify(const QMetaMethod& signal) override;

private:
    void tellNotListed(const std::vector<FileError>& errors);

    struct Announcement {
        QAction* item;
        QMetaMethod signal;
    };

    void layOut();
    void makeKeys();
    [[nodiscard]] LongWork::Steps stepsOfReadingDirs(const std::string& path);
    void askForDirs();
    void openSelectedFile();

    void makeMenus();
    QMenu* makeMenu(const QString& name, const QString& caption);
    QAction* makeItem(QMenu* menu, const QString& name, const QString& caption);
    void giveKey(QAction* item, const QKeySequence& key);
    void makeAnnouncing(QAction* item, const QKeySequence& key, void (Fr_main::*signal)());
    void enableItems();

    EntryList& Dirs_;
    ApplicationFolder files_;
    QMdiArea* mdiArea_;
    NoticeArea* notices_ = nullptr;
    QList<QAction*> ownMenus_; // the menu bar while no child window brings menus
    std::vector<Announcement> announcements_;
    std::unique_ptr<FrontWindow> front_;
    LongWork readingDirs_;
    LongWork readingJumps_;
    bool isLoaded_ = false; // or being loaded
};

} // namespace blockhouse
