// The text and its file: whether the file holds what the window shows, and what stays of a text that no file holds.
#include "editor/BlockListModel.h"
#include "editor/EditorHost.h"
#include "editor/fr_edit.h"
#include "platform/widgets/NoticeArea.h"
#include "platform/widgets/pictures.h"
#include "platform/widgets/qt_text.h"

#include <QEvent>
#include <QMdiSubWindow>

namespace blockhouse {

void fr_edit::watchFile() {
    connect(txt_edit, &RichTextBox::modifiedChanged, this, &fr_edit::showWhetherSaved);
    connect(notices, &NoticeArea::heightChanged, txt_edit,
            [this](int height) { txt_edit->setBottomMargin(Pixels{height}); });
    txt_edit->installEventFilter(this);
}

bool fr_edit::holdsUnsavedText() const {
    return !isOpening() && (txt_edit->isModified() || fileLacksText_ || file_.wasChangedByOthers());
}

void fr_edit::showWhetherSaved() {
    const bool unsaved = holdsUnsavedText();
    if (unsaved == shownUnsaved_)
        return;
    shownUnsaved_ = unsaved;
    // A frame takes its widget's picture once only.
    QWidget* framed = qobject_cast<QMdiSubWindow*>(parentWidget()) ? parentWidget() : this;
    if (unsaved)
        plainPicture_ = framed->windowIcon();
    framed->setWindowIcon(unsaved ? withDot(plainPicture_) : plainPicture_);
    host_.unsavedTextChanged(handle_, unsaved);
}

void fr_edit::lookAtFile() {
    if (!Filepath.empty() && !isOpening() && file_.look(Filepath, *notices))
        showWhetherSaved();
}

bool fr_edit::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate)
        lookAtFile();
    return QWidget::event(event);
}

bool fr_edit::eventFilter(QObject* watched, QEvent* event) {
    if (watched == txt_edit && event->type() == QEvent::FocusIn)
        lookAtFile();
    return QWidget::eventFilter(watched, event);
}

// --- A text that was closed ---------------------------------------------------------------------------------------

void fr_edit::handOverUnsavedText() {
    txt_edit->endComposition();
    lookAtFile();
    if (holdsUnsavedText() && txt_edit->textLength() > 0)
        host_.unsavedTextClosed(
            {Filepath, txt_edit->colouredText(), txt_edit->caret(), txt_edit->firstVisibleLine(), file_.state()});
}

void fr_edit::bringBack(const ClosedText& closed) {
    Filepath = closed.path;
    Filetext = closed.text.text;
    (parentWidget() ? parentWidget() : this)->show();
    announce(Filepath);
    std::vector<BlockEntry> blocks;
    for (const HeaderKind kind : headerKinds)
        lookForBlocks(blocks, kind);
    listBlocks(std::move(blocks), notFound);
    txt_edit->setColouredText(closed.text);
    txt_edit->setSelStart(closed.caret);
    txt_edit->scrollLines(0, closed.firstVisibleLine - txt_edit->firstVisibleLine());
    fileLacksText_ = true;
    file_.is(closed.known, *notices);
    lookAtFile();
    showWhetherSaved();
}

} // namespace blockhouse
