#include "tools/Fr_options.h"

#include "platform/text/shown_entry.h"
#include "platform/widgets/clipboard.h"
#include "platform/widgets/controls.h"
#include "platform/widgets/fonts.h"
#include "platform/widgets/message_box.h"
#include "platform/widgets/NoticeArea.h"
#include "platform/widgets/qt_text.h"

#include <QCloseEvent>
#include <QShortcut>

#include <utility>

namespace blockhouse {
namespace {

constexpr double listWidth = 2652;
constexpr QSize designSize = designPlace(0, 0, listWidth + 100, 3600).size();

} // namespace

Fr_options::Fr_options(EntryList& jumps, SaveEntries save) : jumps_(jumps), save_(std::move(save)) {
    setObjectName(QStringLiteral("Fr_options"));
    setWindowTitle(tr("Options"));
    setAccessibleName(tr("Options"));
    useSmallLetters(*this);
    makeControls();
    setFixedSize(designSize);
    for (const std::string& entry : jumps_)
        addEntry(entry);
    txt_enter->setFocus();
}

Qt::WindowFlags Fr_options::frameFlags() {
    return Qt::SubWindow | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
           Qt::WindowCloseButtonHint | Qt::MSWindowsFixedSizeDialogHint;
}

void Fr_options::makeControls() {
    Label1 = named(new QLabel(tr("This list is so for the combo box on the left so you can jump to diffrent settings "
                                 "in a functions."),
                              this),
                   "Label1", tr("What this list is for"), designPlace(0, 0, listWidth, 732));
    Label1->setWordWrap(true);
    List1 = named(new QListWidget(this), "List1", tr("Settings to jump to"), designPlace(0, 840, listWidth, 2010));
    txt_enter = named(new QLineEdit(this), "txt_enter", tr("Setting to add"), designPlace(1320, 3000, 1332, 288));
    Check1 = named(new QCheckBox(tr("&is it Alone?"), this), "Check1", tr("Only where it ends its line"),
                   designPlace(120, 3240, 1212, 252));
    Command1 =
        named(new QPushButton(tr("A&dd"), this), "Command1", tr("Add the setting"), designPlace(120, 3000, 492, 252));
    Command2 = named(new QPushButton(tr("&Remove"), this), "Command2", tr("Remove the chosen setting"),
                     designPlace(600, 3000, 732, 252));
    connect(Command1, &QPushButton::clicked, this, &Fr_options::addTyped);
    connect(txt_enter, &QLineEdit::returnPressed, this, &Fr_options::addTyped);
    connect(Command2, &QPushButton::clicked, this, &Fr_options::removeSelected);
    // Buttons first in the row, but last in the order of work.
    setTabOrder(List1, txt_enter);
    setTabOrder(txt_enter, Check1);
    setTabOrder(Check1, Command1);
    notices = new NoticeArea(*List1);
    pasteWithin(*txt_enter,
                [this] { notices->tell(QStringLiteral("clipboard"), clipboardIsSilent(), {}, NoticeArea::briefly); });
    setTabOrder(Command1, Command2);
    selectWhatIsCurrent(*List1);
    stopAtEntriesOnly(*List1);
    const auto* removing = new QShortcut(QKeySequence::Delete, List1, nullptr, nullptr, Qt::WidgetShortcut);
    connect(removing, &QShortcut::activated, this, &Fr_options::removeSelected);
}

void Fr_options::addEntry(const std::string& entry) {
    auto* item = new QListWidgetItem(QString::fromStdString(shownEntry(entry)), List1);
    item->setData(Qt::UserRole, QByteArray::fromStdString(entry));
}

void Fr_options::addTyped() {
    auto [entry, lossy] = documentBytes(txt_enter->text());
    const auto replaced = QStringLiteral("replaced");
    if (lossy)
        notices->tell(replaced, tr("Some characters are none of these files. Each was replaced by \"?\"."));
    else
        notices->withdraw(replaced);
    if (Check1->isChecked()) {
        Check1->setChecked(false);
        entry += endOfItsLine;
    }
    addEntry(entry);
    List1->scrollToBottom();
    txt_enter->clear();
}

void Fr_options::removeSelected() {
    const QList<QListWidgetItem*> selected = List1->selectedItems();
    if (!selected.isEmpty())
        delete List1->takeItem(List1->row(selected.first()));
}

void Fr_options::closeEvent(QCloseEvent* event) {
    event->accept();
    Q_EMIT closed();
    EntryList listed;
    for (int row = 0; row < List1->count(); ++row)
        listed.add(List1->item(row)->data(Qt::UserRole).toByteArray().toStdString());
    const EntryList before = std::exchange(jumps_, std::move(listed));
    save_(jumps_, before);
    tell(this, tr("Saved"));
}

} // namespace blockhouse
