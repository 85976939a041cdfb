// The main window's own menus.
#include "platform/widgets/message_box.h"
#include "shell/Fr_main.h"

#include <QAction>
#include <QMenu>

namespace blockhouse {
namespace {

void name(QAction* item, const QString& objectName, const QString& caption) {
    item->setObjectName(objectName);
    item->setText(caption);
}

} // namespace

QMenu* Fr_main::makeMenu(const QString& objectName, const QString& caption) {
    auto* menu = new QMenu(caption, this);
    menu->setObjectName(objectName);
    menu->setAccessibleName(menu->menuAction()->iconText());
    // A listener that was destroyed is not reported.
    connect(menu, &QMenu::aboutToShow, this, &Fr_main::enableItems);
    ownMenus_.append(menu->menuAction());
    return menu;
}

QAction* Fr_main::makeItem(QMenu* menu, const QString& objectName, const QString& caption) {
    QAction* item = menu->addAction(caption);
    item->setObjectName(objectName);
    return item;
}

// The key works while an editor's menus are shown instead of this one.
void Fr_main::giveKey(QAction* item, const QKeySequence& key) {
    item->setShortcut(key);
    addAction(item);
}

void Fr_main::makeAnnouncing(QAction* item, const QKeySequence& key, void (Fr_main::*signal)()) {
    giveKey(item, key);
    connect(item, &QAction::triggered, this, signal);
    announcements_.push_back({item, QMetaMethod::fromSignal(signal)});
}

void Fr_main::makeMenus() {
    QMenu* file = makeMenu(QStringLiteral("mnu_file"), tr("&File"));
    // The directory editor saves the list when it closes; there is nothing left to do here.
    makeItem(file, QStringLiteral("mnu_savedir"), tr("&Save Directory list"))->setEnabled(false);

    QMenu* edit = makeMenu(QStringLiteral("mnu_edit"), tr("&Edit"));
    makeAnnouncing(makeItem(edit, QStringLiteral("mnu_findR"), tr("&Find Refrence")), Qt::CTRL | Qt::SHIFT | Qt::Key_F,
                   &Fr_main::findReferenceWanted);

    QMenu* view = makeMenu(QStringLiteral("mnu_view"), tr("&View"));
    makeAnnouncing(makeItem(view, QStringLiteral("mnu_diredit"), tr("&Directory Edit")),
                   Qt::CTRL | Qt::SHIFT | Qt::Key_D, &Fr_main::directoryEditorWanted);
    makeAnnouncing(makeItem(view, QStringLiteral("mnu_options"), tr("&Options")), Qt::CTRL | Qt::SHIFT | Qt::Key_O,
                   &Fr_main::optionsWanted);
    makeAnnouncing(makeItem(view, QStringLiteral("mnu_AIbuild"), tr("&AI building placement")),
                   Qt::CTRL | Qt::SHIFT | Qt::Key_A, &Fr_main::placementEditorWanted);
    name(mnu_fileex, QStringLiteral("mnu_fileex"), tr("&File Explorer"));
    mnu_fileex->setCheckable(true);
    mnu_fileex->setChecked(explorerVisible());
    giveKey(mnu_fileex, Qt::CTRL | Qt::SHIFT | Qt::Key_E);
    connect(mnu_fileex, &QAction::triggered, this, [this] { setExplorerVisible(!explorerVisible()); });
    view->addAction(mnu_fileex);

    auto* about = new QAction(this);
    name(about, QStringLiteral("mnu_about"), tr("&About"));
    connect(about, &QAction::triggered, this, [this] {
        tell(this, tr("%1, written by the Blockhouse developers").arg(QLatin1String(applicationTitle)));
    });
    ownMenus_.append(about);

    enableItems();
}

void Fr_main::enableItems() {
    for (const Announcement& announcement : announcements_)
        announcement.item->setEnabled(isSignalConnected(announcement.signal));
}

void Fr_main::connectNotify(const QMetaMethod&) {
    enableItems();
}

void Fr_main::disconnectNotify(const QMetaMethod&) {
    // Later: the toolkit holds a lock here that asking for connections needs too.
    QMetaObject::invokeMethod(this, &Fr_main::enableItems, Qt::QueuedConnection);
}

} // namespace blockhouse
