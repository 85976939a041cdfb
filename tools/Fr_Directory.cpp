#include "tools/Fr_Directory.h"

#include "platform/system/volumes.h"
#include "platform/text/paths.h"
#include "platform/widgets/controls.h"
#include "platform/widgets/fonts.h"
#include "platform/widgets/LongWork.h"
#include "platform/widgets/message_box.h"
#include "platform/widgets/qt_text.h"
#include "tools/PathLabel.h"

#include <QCloseEvent>
#include <QDir>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>

#include <utility>

namespace blockhouse {
namespace {

constexpr QSize designSize = designPlace(0, 0, 4920, 3885).size();

} // namespace

Fr_Directory::Fr_Directory(EntryList& Dirs, SaveEntries save) : Dirs_(Dirs), save_(std::move(save)) {
    setObjectName(QStringLiteral("Fr_Directory"));
    setWindowTitle(tr("Add Directorys"));
    setAccessibleName(tr("Add Directorys"));
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                   Qt::WindowCloseButtonHint | Qt::MSWindowsFixedSizeDialogHint);
    useSmallLetters(*this);
    makeControls();
    makeButtons();
    for (const std::string& path : Dirs_)
        addEntry(path);
    fillDrives();
    MakeTopmost(*this);
    setFixedSize(designSize);
}

void Fr_Directory::MakeTopmost(QWidget& window) {
    window.setWindowFlag(Qt::WindowStaysOnTopHint);
}

void Fr_Directory::makeControls() {
    Label1 = named(new QLabel(tr("Add the Directorys of the INI files you edit , And add the sub directorys."
                                 "(sorry all fix sub dirs soon , lazy)"),
                              this),
                   "Label1", tr("What to do here"), designPlace(120, 0, 4335, 600));
    Label1->setWordWrap(true);
    Drive1 = named(new QComboBox(this), "Drive1", tr("Drives"), designPlace(120, 600, 2535, 315));
    Dir1 = named(new DirectoryList(this), "Dir1", tr("Folders"), designPlace(120, 960, 2532, 2115));
    List2 = named(new QListWidget(this), "List2", tr("Directories to work in"), designPlace(2760, 960, 2055, 2010));
    List1 = named(new QListWidget(this), "List1", tr("Paths of the directories"), {});
    List1->hide();
    Lab_stat =
        named(new PathLabel(this), "Lab_stat", tr("Path of the chosen directory"), designPlace(120, 3100, 4695, 240));
    Lab_stat->setTextFormat(Qt::PlainText);
    connect(Dir1, &DirectoryList::walked, this, &Fr_Directory::showDrive);
    // The folder walked into is added, not the line that is highlighted.
    connect(Dir1, &DirectoryList::walked, this, [this] { tellPath(tr("Add takes %1").arg(displayed(Dir1->path()))); });
    connect(Dir1, &DirectoryList::refused, this,
            [this](const QString& folder, const QString& cause) { tellPath(folder + QLatin1String(": ") + cause); });
    selectWhatIsCurrent(*List2);
    stopAtEntriesOnly(*List2);
    connect(List2, &QListWidget::currentRowChanged, this, &Fr_Directory::showPath);
    connect(List2, &QListWidget::itemClicked, this, [this] { showPath(List2->currentRow()); });
    const auto* removing = new QShortcut(QKeySequence::Delete, List2, nullptr, nullptr, Qt::WidgetShortcut);
    connect(removing, &QShortcut::activated, this, &Fr_Directory::removeSelected);
    const auto* pasting = new QShortcut(QKeySequence::Paste, this);
    connect(pasting, &QShortcut::activated, Dir1, &DirectoryList::walkToClipboard);
}

void Fr_Directory::tellPath(const QString& text) {
    Lab_stat->setText(text);
    Lab_stat->setToolTip(text);
}

void Fr_Directory::makeButtons() {
    Command1 =
        named(new QPushButton(tr("&Add"), this), "Command1", tr("Add the folder"), designPlace(120, 3360, 852, 372));
    Command2 = named(new QPushButton(tr("&Remove"), this), "Command2", tr("Remove the chosen directory"),
                     designPlace(1080, 3360, 972, 372));
    connect(Command1, &QPushButton::clicked, this, &Fr_Directory::addCurrent);
    connect(Command2, &QPushButton::clicked, this, &Fr_Directory::removeSelected);
}

void Fr_Directory::fillDrives() {
    const std::string home = pathOf(QDir::homePath());
    for (const std::string& drive : drivesOf(mountedVolumes(), home))
        Drive1->addItem(displayed(drive), QByteArray::fromStdString(drive));
    connect(Drive1, &QComboBox::currentIndexChanged, this, &Fr_Directory::changeDrive);
    // The way back to where the drive begins.
    connect(Drive1, &QComboBox::activated, this, &Fr_Directory::changeDrive);
    drive_ = -1;
    Drive1->setCurrentIndex(-1);
    Drive1->setCurrentIndex(Drive1->findData(QByteArray::fromStdString(home)));
    if (drive_ < 0)
        Drive1->setCurrentIndex(0);
}

// A drive that cannot be read changes nothing.
void Fr_Directory::changeDrive() {
    const int chosen = Drive1->currentIndex();
    const bool walked = chosen >= 0 && Dir1->walkTo(Drive1->itemData(chosen).toByteArray().toStdString());
    if (!walked && chosen != drive_) {
        const QSignalBlocker unheard(Drive1);
        Drive1->setCurrentIndex(drive_);
    }
}

// The drive that the current folder is on: of those whose root leads there, the one with the longest.
void Fr_Directory::showDrive() {
    int holder = -1;
    qsizetype longest = -1;
    for (int drive = 0; drive < Drive1->count(); ++drive) {
        const QByteArray root = Drive1->itemData(drive).toByteArray();
        if (root.size() > longest && isInside(Dir1->path(), root.toStdString())) {
            holder = drive;
            longest = root.size();
        }
    }
    if (holder < 0)
        return;
    drive_ = holder;
    const QSignalBlocker unheard(Drive1);
    Drive1->setCurrentIndex(holder);
}

void Fr_Directory::addEntry(const std::string& path) {
    auto* entry = new QListWidgetItem(displayed(path), List1);
    entry->setData(Qt::UserRole, QByteArray::fromStdString(path));
    List2->addItem(displayed(LastPathPart(path)));
}

void Fr_Directory::addCurrent() {
    if (Dir1->path().empty())
        return;
    addEntry(Dir1->path());
    List2->scrollToBottom();
}

void Fr_Directory::removeSelected() {
    const QList<QListWidgetItem*> selected = List2->selectedItems();
    if (selected.isEmpty())
        return;
    const int row = List2->row(selected.first());
    delete List1->takeItem(row);
    delete List2->takeItem(row);
    showPath(List2->currentRow());
}

void Fr_Directory::showPath(int row) {
    const QString path = row >= 0 && row < List1->count() ? List1->item(row)->text() : QString();
    tellPath(path);
}

std::string Fr_Directory::pathAt(int row) const {
    return List1->item(row)->data(Qt::UserRole).toByteArray().toStdString();
}

void Fr_Directory::showEvent(QShowEvent* event) {
    if (const QScreen* shownOn = screen(); shownOn && !event->spontaneous()) {
        const QRect room = shownOn->availableGeometry();
        move(room.center() - QRect(QPoint(), designSize).center());
    }
}

void Fr_Directory::closeEvent(QCloseEvent* event) {
    event->accept();
    Q_EMIT closed();
    if (List1->count() == 0)
        return;
    EntryList listed;
    for (int row = 0; row < List1->count(); ++row)
        listed.add(pathAt(row));
    const EntryList before = std::exchange(Dirs_, std::move(listed));
    save_(Dirs_, before);
    if (stillOpenAfter(*this, [this] { tell(this, tr("Directory's Saved")); }))
        Q_EMIT directoriesSaved();
}

} // namespace blockhouse
