#include "shell/Fr_main.h"

#include "platform/system/files.h"
#include "platform/text/FoldedSearch.h"
#include "platform/widgets/message_box.h"
#include "platform/widgets/NoticeArea.h"
#include "platform/widgets/qt_text.h"
#include "platform/widgets/screen_room.h"
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
#include <QShortcut>

#include <optional>

namespace blockhouse {
namespace {

const auto noDirectories = QStringLiteral("noDirectories");
const auto notListed = QStringLiteral("notListed");

// Reads a list file field by field. A file that cannot be read adds nothing.
LongWork::Step readingOf(std::string_view name, const std::string& path, EntryList& list) {
    using Then = LongWork::Then;
    const auto reader = std::make_shared<std::optional<ListFileReader>>();
    return [name, path, &list, reader] {
        if (!*reader) {
            Result<std::string> bytes = readWholeFile(path, largestListFile);
            if (!bytes)
                return Then::NextStep;
            reader->emplace(listTextFrom(name, std::move(bytes).value()));
        }
        std::optional<std::string> field = (*reader)->next();
        if (!field)
            return Then::NextStep;
        list.add(*std::move(field));
        return Then::Again;
    };
}

} // namespace

Fr_main::Fr_main(EntryList& Dirs, ApplicationFolder files)
    : Toolbar1(new WindowBar(this)), picPlane(new ExplorerPanel(this)), Tree1(picPlane->tree()),
      mnu_fileex(new QAction(this)), Dirs_(Dirs), files_(std::move(files)), mdiArea_(new QMdiArea(this)),
      readingDirs_(*this), readingJumps_(*this) {
    setObjectName(QStringLiteral("Fr_main"));
    setWindowTitle(tr("Project"));
    setAccessibleName(tr("Project"));
    setWindowIcon(applicationIcon());
    setContextMenuPolicy(Qt::NoContextMenu); // the toolkit's own offers to hide the window bar
    layOut();
    makeMenus();
    connect(picPlane->tree(), &DirectoryView::picked, this, &Fr_main::openSelectedFile);
    connect(picPlane, &ExplorerPanel::closeWanted, this, [this] { setExplorerVisible(false); });
    front_ = std::make_unique<FrontWindow>(FrontWindow::Surroundings{*this, *mdiArea_, *Toolbar1, *Tree1}, ownMenus_);
    makeKeys();
}

Fr_main::~Fr_main() = default;

void Fr_main::makeKeys() {
    const auto key = [this](const QKeySequence& sequence, auto act) {
        const auto* shortcut = new QShortcut(sequence, this);
        connect(shortcut, &QShortcut::activated, this, act);
    };
    // Tab is a character in an editor, so the ways between the windows need keys of their own.
    key(Qt::Key_F6, [this] { front_->goAround(); });
    key(Qt::CTRL | Qt::Key_Tab, [this] { front_->walk(1); });
    key(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, [this] { front_->walk(-1); });
    key(Qt::CTRL | Qt::SHIFT | Qt::Key_T, [this] { Q_EMIT closedTextWanted(); });
    const QKeySequence close(Qt::CTRL | Qt::Key_F4);
    if (!QKeySequence::keyBindings(QKeySequence::Close).contains(close)) // else the toolkit's own
        key(close, [this] {
            if (QMdiSubWindow* frame = front_->frame())
                frame->close();
        });
    for (int button = 0; button < 9; ++button)
        key(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + button), [this, button] { front_->bringUpButton(button); });
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
    notices_ = new NoticeArea(*inside);
    connect(notices_, &NoticeArea::heightChanged, row, [row](int height) { row->setContentsMargins(0, 0, 0, height); });
    resize(boundedToScreen(*this, QSize(toPixels(Twips{7785}).value, toPixels(Twips{6555}).value)));
}

bool Fr_main::load() {
    isLoaded_ = true;
    const std::string dirsPath = files_.readPath(directoryListFile);
    const LongWork::Steps firstRun{[this] {
        askForDirs();
        return LongWork::Then::End;
    }};
    if (readingDirs_.run(FileExists(dirsPath) ? stepsOfReadingDirs(dirsPath) : firstRun) != LongWork::Outcome::Finished)
        return false;
    const std::string jumpsPath = files_.readPath(jumpListFile);
    return !FileExists(jumpsPath) ||
           readingJumps_.run({readingOf(jumpListFile, jumpsPath, jumps)}) == LongWork::Outcome::Finished;
}

void Fr_main::setVisible(bool visible) {
    if (visible && !isLoaded_ && !load())
        return;
    QMainWindow::setVisible(visible);
}

void Fr_main::askForDirs() {
    setExplorerVisible(false);
    notices_->tell(noDirectories,
                   tr("No folder is listed yet. View > Directory Edit (Ctrl+Shift+D) adds the first one."));
    Q_EMIT directoryEditorWanted();
}

void Fr_main::loaddirs() {
    const std::string path = files_.readPath(directoryListFile);
    if (FileExists(path))
        readingDirs_.run(stepsOfReadingDirs(path));
}

// The list is emptied by a step: reading that is under way has then ended and adds no more.
LongWork::Steps Fr_main::stepsOfReadingDirs(const std::string& path) {
    return {[this] {
                ClearDirs(Dirs_);
                return LongWork::Then::NextStep;
            },
            readingOf(directoryListFile, path, Dirs_),
            [this] {
                showDirs();
                return LongWork::Then::End;
            }};
}

void Fr_main::showDirs() {
    if (Dirs_.count() > 0)
        notices_->withdraw(noDirectories);
    std::vector<FileError> errors;
    for (const std::string& entry : Dirs_)
        if (const Result<Done> added = picPlane->model().addDirectory(entry); !added)
            errors.push_back(added.error());
    tellNotListed(errors);
    setExplorerVisible(true);
}

void Fr_main::tellNotListed(const std::vector<FileError>& errors) {
    constexpr std::size_t mostNamed = 3;
    if (errors.empty())
        return notices_->withdraw(notListed);
    QStringList named;
    for (const FileError& error : errors)
        named.append(tr("%1: %2").arg(displayed(error.path), QString::fromStdString(error.cause)));
    QString text = tr("Not in the tree: ") + named.mid(0, mostNamed).join(QStringLiteral("; "));
    if (errors.size() > mostNamed)
        text += tr("; and %1 more").arg(errors.size() - mostNamed);
    notices_->tell(notListed, text, named.join(QLatin1Char('\n')));
}

void Fr_main::setExplorerVisible(bool visible) {
    if (!visible)
        front_->leave(*picPlane);
    picPlane->setVisible(visible);
    mnu_fileex->setChecked(visible);
}

void Fr_main::openSelectedFile() {
    const QModelIndexList selected = Tree1->selectionModel()->selectedIndexes();
    // Directories are not opened, not even empty ones.
    if (selected.isEmpty() || !selected.first().parent().isValid())
        return;
    const std::string path = picPlane->model().keyOf(selected.first());
    const bool isPlacementData = FoldedSearch("aidata.ini").find(path) != FoldedSearch::npos;
    if (isPlacementData && isSignalConnected(QMetaMethod::fromSignal(&Fr_main::placementWanted))) {
        const auto yes = askYesNo(*this, tr("Would you like to open This with the AI building placement Editor?"));
        if (!yes)
            return;
        if (*yes) {
            Q_EMIT placementWanted(path);
            return;
        }
    }
    Q_EMIT fileChosen(path);
}

void Fr_main::closeEvent(QCloseEvent* event) {
    event->accept();
    Q_EMIT closed();
}

} // namespace blockhouse
