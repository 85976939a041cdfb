#include "shell/Fr_main.h"

#include "platform/system/files.h"
#include "platform/text/FoldedSearch.h"
#include "platform/widgets/message_box.h"
#include "platform/widgets/yield.h"
#include "shell/artwork.h"
#include "shell/DirectoryTreeModel.h"
#include "shell/DirectoryView.h"
#include "shell/Dirs.h"
#include "shell/list_file.h"

#include <QAction>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QShortcut>

#include <optional>

namespace blockhouse {
namespace {

// Serves events after every field; stops as soon as `goOn` says no.
template <typename GoOn>
void readList(const std::string& path, EntryList& list, GoOn goOn) {
    Result<std::string> bytes = readWholeFile(path);
    if (!bytes.ok())
        return;
    ListFileReader reader(std::move(bytes).value());
    while (std::optional<std::string> field = reader.next()) {
        list.add(*std::move(field));
        yield();
        if (!goOn())
            return;
    }
}

} // namespace

Fr_main::Fr_main(EntryList& Dirs, ApplicationFolder files)
    : Toolbar1(new WindowBar(this)), picPlane(new ExplorerPanel(this)), Tree1(picPlane->tree()),
      mnu_fileex(new QAction(this)), Dirs_(Dirs), files_(std::move(files)), mdiArea_(new QMdiArea(this)) {
    setObjectName(QStringLiteral("Fr_main"));
    setWindowTitle(tr("Project"));
    setAccessibleName(tr("Project"));
    setWindowIcon(applicationIcon());
    setContextMenuPolicy(Qt::NoContextMenu); // the toolkit's own offers to hide the window bar
    layOut();
    makeMenus();
    connect(picPlane->tree(), &DirectoryView::picked, this, &Fr_main::openSelectedFile);
    connect(picPlane, &ExplorerPanel::closeWanted, this, [this] { setExplorerVisible(false); });
    connect(mdiArea_, &QMdiArea::subWindowActivated, this, &Fr_main::showMenusOfActiveWindow);
    // Tab is a character in an editor, so the way between the tree and the editors needs a key of its own.
    auto* other = new QShortcut(QKeySequence(Qt::Key_F6), this);
    connect(other, &QShortcut::activated, this, &Fr_main::switchFocus);
}

// Child windows are hidden one by one while the main window is torn down: none of that is news any more.
Fr_main::~Fr_main() {
    mdiArea_->disconnect(this);
    for (QMdiSubWindow* window : mdiArea_->subWindowList())
        window->disconnect(this);
}

void Fr_main::layOut() {
    addToolBar(Qt::TopToolBarArea, Toolbar1);
    mdiArea_->setObjectName(QStringLiteral("mdiArea"));
    mdiArea_->setAccessibleName(tr("Open windows"));
    mdiArea_->setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
    mdiArea_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdiArea_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    auto* inside = new QWidget(this);
    auto* row = new QHBoxLayout(inside);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(mdiArea_, 1);
    row->addWidget(picPlane);
    setCentralWidget(inside);
    resize(toPixels(Twips{7785}).value, toPixels(Twips{6555}).value);
}

bool Fr_main::load() {
    const QPointer<Fr_main> self(this);
    const std::string dirsPath = files_.readPath(directoryListFile);
    if (FileExists(dirsPath)) {
        const Reading reading = readDirs(dirsPath);
        if (reading == Reading::WindowGone)
            return false;
        fillTree();
        setExplorerVisible(true);
    } else {
        setExplorerVisible(false);
        Q_EMIT directoryEditorWanted();
        if (!self || closed_)
            return false;
    }
    const std::string jumpsPath = files_.readPath(jumpListFile);
    if (FileExists(jumpsPath))
        readList(jumpsPath, jumps, [&self] { return self && !self->closed_; });
    return self && !closed_;
}

void Fr_main::loaddirs() {
    const std::string path = files_.readPath(directoryListFile);
    if (!FileExists(path))
        return;
    ClearDirs(Dirs_);
    if (readDirs(path) == Reading::Finished)
        showDirs();
}

void Fr_main::showDirs() {
    fillTree();
    setExplorerVisible(true);
}

// A second reading that begins while one is under way empties the list and fills it: the first must add no more.
Fr_main::Reading Fr_main::readDirs(const std::string& path) {
    const QPointer<Fr_main> self(this);
    const int reading = ++readings_;
    Reading state = Reading::Finished;
    readList(path, Dirs_, [&] {
        if (!self || self->closed_)
            state = Reading::WindowGone;
        else if (self->readings_ != reading)
            state = Reading::Overtaken;
        return state == Reading::Finished;
    });
    return state;
}

void Fr_main::fillTree() {
    for (const std::string& entry : Dirs_)
        picPlane->model().addDirectory(entry);
}

void Fr_main::setExplorerVisible(bool visible) {
    picPlane->setVisible(visible);
    mnu_fileex->setChecked(visible);
}

void Fr_main::openSelectedFile() {
    const QModelIndexList selected = Tree1->selectionModel()->selectedIndexes();
    // Directories are not opened, those without files neither.
    if (selected.isEmpty() || !selected.first().parent().isValid())
        return;
    const std::string path = picPlane->model().keyOf(selected.first());
    const bool isPlacementData = FoldedSearch("aidata.ini").find(path) != FoldedSearch::npos;
    if (isPlacementData && isSignalConnected(QMetaMethod::fromSignal(&Fr_main::placementWanted))) {
        const QPointer<Fr_main> self(this);
        const bool yes = askYesNo(this, tr("Would you like to open This with the AI building placement Editor?"));
        if (!self)
            return;
        if (yes) {
            Q_EMIT placementWanted(path);
            return;
        }
    }
    Q_EMIT fileChosen(path);
}

void Fr_main::switchFocus() {
    if (!Tree1->hasFocus()) {
        Tree1->setFocus(Qt::ShortcutFocusReason);
    } else if (QMdiSubWindow* active = mdiArea_->currentSubWindow()) {
        active->setFocus(Qt::ShortcutFocusReason);
    }
}

void Fr_main::closeEvent(QCloseEvent* event) {
    closed_ = true;
    event->accept();
    Q_EMIT closed();
}

} // namespace blockhouse
