#include "placement/Form2.h"

#include "placement/Canvas.h"
#include "placement/location_line.h"
#include "platform/system/files.h"
#include "platform/text/paths.h"
#include "platform/widgets/DropDownList.h"
#include "platform/widgets/message_box.h"
#include "platform/widgets/NoticeArea.h"
#include "platform/widgets/pictures.h"
#include "platform/widgets/qt_text.h"
#include "platform/widgets/window_handles.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QStringListModel>

#include <utility>

namespace blockhouse {
namespace {

template <typename Entry>
QStringList namesOf(const std::vector<Entry>& entries) {
    QStringList names;
    names.reserve(static_cast<qsizetype>(entries.size()));
    for (const Entry& entry : entries)
        names.append(documentText(entry.name));
    return names;
}

} // namespace

void Form2::Openfile(const std::string& Txt_path, TextPosition) {
    bringUp(this);
    Result<StampedBytes> file = readStampedFile(Txt_path, largestDocument);
    if (!file)
        return tellFileError(this, tr("could not be opened."), file.error());
    const std::string before = handOverUnsavedDrops() ? Filepath : std::string();
    const FileStamp stamp = file.value().stamp;
    showText(Txt_path, std::move(file).value().bytes, stamp, {});
    if (!before.empty())
        notices->tell(QStringLiteral("unsavedDrops"),
                      tr("The drops in \"%1\" were not saved. Ctrl+Shift+T brings them back.")
                          .arg(displayed(LastPathPart(before))),
                      displayed(before));
}

void Form2::bringBack(UnsavedDrops left) {
    bringUp(this);
    static_cast<void>(handOverUnsavedDrops());
    showText(std::move(left.path), std::move(left.text), left.known, std::move(left.drops));
    lookAtFile();
}

bool Form2::handOverUnsavedDrops() {
    lookAtFile();
    if (isSaved())
        return false;
    Q_EMIT unsavedDropsLeft({Filepath, Filetext, file_.state(), drops_});
    return true;
}

void Form2::showText(std::string path, std::string text, std::optional<FileStamp> known, DropHistory drops) {
    Filepath = std::move(path);
    Filetext = std::move(text);
    drops_ = std::move(drops);
    labelWritten->hide();
    notices->dismiss();
    file_.is(known, *notices);
    showWhetherSaved();
    setWindowTitle(displayed(captionOf(Filepath)));
    m_save_->setEnabled(true);

    sides_ = sidesOf(Filetext);
    Combo1->fill([this] { sideNames_->setStringList(namesOf(sides_)); });
    Combo1->setPlaceholderText(sides_.empty() ? tr("no build lists in it") : tr("choose a side"));
    listStructures({});
    board_.showStructures({});
    Picture1->update();
}

void Form2::save() {
    const Result<Replaced> written = replaceKnownFile(Filepath, Filetext, file_.state());
    if (!written)
        return tellFileError(this, tr("could not be saved."), written.error());
    file_.is(written.value().stamp, *notices);
    drops_.saved();
    showWhetherSaved();
    tellBackup(written.value().backup, *notices);
}

void Form2::showWhetherSaved() {
    setWindowIcon(QIcon());
    if (!isSaved())
        setWindowIcon(withDot(windowIcon()));
}

void Form2::lookAtFile() {
    if (!Filepath.empty() && file_.look(Filepath, *notices))
        showWhetherSaved();
}

void Form2::open() {
    if (const auto path = askForFileToOpen(*this, tr("Open"), displayed(Filepath)))
        Openfile(*path);
}

void Form2::chooseSide() {
    const SearchRange range = chosenRange();
    loadcombo2(range.startSearch, range.endSearch);
}

// Without a chosen side, structures are listed only if somebody else asked for a range of the text.
SearchRange Form2::chosenRange() const {
    if (Combo1->currentIndex() < 0)
        return listedRange_;
    return searchRangeOf(sides_, static_cast<std::size_t>(Combo1->currentIndex()), Filetext);
}

void Form2::loadcombo2(TextPosition startSearch, TextPosition endSearch) {
    listedRange_ = {startSearch, endSearch};
    const BuildListScan scan = structuresOf(Filetext, startSearch, endSearch);
    listStructures(scan);
    board_.showStructures(scan.structures);
    Picture1->update();
    tellFailures(scan.failures);
}

void Form2::loadcombopart2(TextPosition startSearch, TextPosition endSearch, int tindex) {
    const BuildListScan scan = structuresOf(Filetext, startSearch, endSearch);
    listStructures(scan);
    board_.refill(scan.structures.size());
    if (tindex < Combo2->count())
        Combo2->setCurrentIndex(tindex);
    tellFailures(scan.failures);
}

void Form2::listStructures(const BuildListScan& scan) {
    structures_.clear();
    structures_.reserve(scan.structures.size());
    for (const ScannedStructure& structure : scan.structures)
        structures_.push_back(structure.entry);
    Combo2->fill([this] { structureNames_->setStringList(namesOf(structures_)); });
}

void Form2::tellFailures(const std::vector<ScanFailure>& failures) {
    const auto topic = QStringLiteral("unreadable");
    if (failures.empty())
        return notices->withdraw(topic);
    notices->tell(topic, documentText(unreadableStructures(Filetext, failures)));
    for (const ScanFailure& failure : failures)
        if (!tellOneOfMany(*this, documentText(failure.message())))
            return;
}

void Form2::chooseStructure(int index) {
    if (board_.select(static_cast<std::size_t>(index)))
        Picture1->update();
}

void Form2::press(CanvasPoint pointer) {
    isPressed_ = true;
    const MarkBoard::Press press = board_.press(pointer);
    if (press.hit)
        Combo2->setCurrentIndex(static_cast<int>(*press.hit));
    if (board_.selected())
        pressedMark_ = board_.marks()[*board_.selected()].topLeft;
    if (press.changed)
        Picture1->update();
}

void Form2::move(CanvasPoint pointer, MouseButtons held) {
    Label2->setText(QString::fromStdString(statusText(pointer)));
    Label2->adjustSize();
    if (board_.move(pointer, held))
        Picture1->update();
}

void Form2::release(CanvasPoint pointer) {
    isPressed_ = false;
    const auto drop = board_.release(pointer);
    if (!drop)
        return;
    const auto line = replaceLocation(Filetext, structures_[drop->index].position, drop->point);
    if (!line)
        return;
    const QString written = QString::fromStdString(line->after);
    const std::string name = structures_[drop->index].name;
    drops_.add({Combo1->currentIndex(), drop->index, name, pressedMark_, board_.marks()[drop->index].topLeft, *line});
    log1->moveCursor(QTextCursor::End);
    log1->insertPlainText(written + QLatin1Char('\n'));
    tellWritten(documentText(name), written, true);
    showWhetherSaved();
    Picture1->update();
    const SearchRange range = chosenRange();
    loadcombopart2(range.startSearch, range.endSearch, static_cast<int>(drop->index));
}

// The strip has room for the coordinates; the tool tip tells the rest.
void Form2::tellWritten(const QString& name, const QString& line, bool canUndo) {
    const QString what = tr("%1: %2").arg(name, line);
    labelWritten->setText(tr("%1: %2").arg(name, line.section(QLatin1Char('='), 1).trimmed()));
    labelWritten->setToolTip(canUndo ? tr("Written into the text: %1. Ctrl+Z takes it back.").arg(what)
                                     : tr("In the text again: %1").arg(what));
    labelWritten->adjustSize();
    labelWritten->show();
}

void Form2::undo() {
    const auto drop = isPressed_ ? std::nullopt : drops_.undo(Filetext);
    if (!drop)
        return;
    // The log lists the lines that are in the text.
    const QString last = QString::fromStdString(drop->line.after) + QLatin1Char('\n');
    if (const QString log = log1->toPlainText(); log.endsWith(last))
        log1->setPlainText(log.chopped(last.size()));
    showDrop(*drop, drop->markBefore);
    tellWritten(documentText(drop->name), documentText(drop->line.before), false);
}

void Form2::redo() {
    const auto drop = isPressed_ ? std::nullopt : drops_.redo(Filetext);
    if (!drop)
        return;
    const QString line = QString::fromStdString(drop->line.after);
    log1->moveCursor(QTextCursor::End);
    log1->insertPlainText(line + QLatin1Char('\n'));
    showDrop(*drop, drop->markAfter);
    tellWritten(documentText(drop->name), line, true);
}

// A side that is chosen only now has its marks where the text says.
void Form2::showDrop(const DroppedStructure& drop, CanvasPoint mark) {
    if (Combo1->currentIndex() == drop.side) {
        const SearchRange range = chosenRange();
        loadcombopart2(range.startSearch, range.endSearch, static_cast<int>(drop.structure));
        static_cast<void>(board_.put(drop.structure, mark));
    } else {
        Combo1->setCurrentIndex(drop.side);
        Combo2->setCurrentIndex(static_cast<int>(drop.structure));
    }
    showWhetherSaved();
    Picture1->update();
}

bool Form2::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate)
        lookAtFile();
    return QWidget::event(event);
}

// The log has no undo of its own, so the window's undo keys work there too.
bool Form2::eventFilter(QObject* watched, QEvent* event) {
    if (watched != log1 || event->type() != QEvent::ShortcutOverride)
        return QWidget::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (!key->matches(QKeySequence::Undo) && !key->matches(QKeySequence::Redo))
        return false;
    event->ignore();
    return true;
}

void Form2::closeEvent(QCloseEvent* event) {
    static_cast<void>(handOverUnsavedDrops());
    event->accept();
    Q_EMIT closed();
}

} // namespace blockhouse
