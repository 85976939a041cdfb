#include "app/Program.h"

#include "editor/fr_edit.h"
#include "findref/Form1.h"
#include "findref/fr_findref.h"
#include "findref/word_at_caret.h"
#include "placement/Form2.h"
#include "platform/system/files.h"
#include "platform/system/process.h"
#include "platform/text/paths.h"
#include "platform/widgets/message_box.h"
#include "platform/widgets/NoticeArea.h"
#include "platform/widgets/PictureBox.h"
#include "platform/widgets/qt_text.h"
#include "shell/DrawProgress.h"
#include "shell/Fr_main.h"
#include "shell/list_file.h"
#include "shell/Splash.h"
#include "tools/Fr_Directory.h"
#include "tools/Fr_options.h"

#include <QCoreApplication>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace blockhouse {
namespace {

const auto closedText = QStringLiteral("closedText");
const auto closedTextGone = QStringLiteral("closedTextGone");
const auto noWord = QStringLiteral("noWord");

const std::string& pathOf(const ClosedTexts::Closed& closed) {
    return std::visit([](const auto& text) -> const std::string& { return text.path; }, closed);
}

} // namespace

Program::Program(std::string applicationFolder) : Program(ApplicationFolder(std::move(applicationFolder))) {}

Program::Program(ApplicationFolder files) : files_(std::move(files)), lists_(files_) {
    configureProcess();
}

Program::~Program() {
    delete splash_;
    delete fr_directory_;
    delete form1_;
    delete form2_;
}

void Program::start() {
    splash_ = new Splash;
    splash_->setAttribute(Qt::WA_DeleteOnClose);
    connect(splash_, &Splash::mainWindowWanted, this, [this] { fr_main().show(); });
    splash_->show();
}

Fr_main& Program::fr_main() {
    if (!fr_main_) {
        fr_main_ = std::make_unique<Fr_main>(Dirs, files_);
        connectMainWindow();
    }
    return *fr_main_;
}

void Program::connectMainWindow() {
    const Fr_main* window = fr_main_.get();
    connect(window, &Fr_main::fileChosen, this, [this](const std::string& path) { openEditor(path); });
    connect(window, &Fr_main::findReferenceWanted, this, [this] { fr_findref().present(); });
    connect(window, &Fr_main::directoryEditorWanted, this, [this] { bringUp(&fr_directory()); });
    connect(window, &Fr_main::optionsWanted, this, [this] { fr_main().front().bringUp(fr_options()); });
    connect(window, &Fr_main::placementEditorWanted, this, [this] { bringUp(&form2()); });
    connect(window, &Fr_main::placementWanted, this, [this](const std::string& path) { form2().Openfile(path); });
    connect(window, &Fr_main::closedTextWanted, this, &Program::reopenClosedText);
    connect(window, &Fr_main::closed, this, [] { QCoreApplication::exit(); });
}

fr_edit* Program::openEditor(const std::string& path, TextPosition Startout) {
    fr_edit& editor = addEditor();
    return editor.Openfile(path, Startout) ? &editor : nullptr;
}

fr_edit& Program::addEditor() {
    auto* editor = new fr_edit(*this);
    QMdiArea* area = fr_main().mdiArea();
    const QMdiSubWindow* before = fr_main().front().frame();
    const bool maximised = before && before->isMaximized();
    QMdiSubWindow* frame = area->addSubWindow(editor);
    const QRect room = roomForEditor(area->viewport()->rect());
    frame->setGeometry(QRect(room.topLeft(), frame->sizeHint().boundedTo(room.size())));
    // Who works with one window at a time goes on doing so.
    if (maximised)
        frame->showMaximized();
    fr_main().front().bringUp(*editor);
    return *editor;
}

// The other editors are about to be minimised, so a new one need not keep out of their way; but the list of hits is
// wanted again after each of them.
QRect Program::roomForEditor(const QRect& area) const {
    constexpr QSize useful(480, 320);
    const QWidget* hits = fr_findref_ ? fr_findref_->parentWidget() : nullptr;
    if (!hits || !hits->isVisible() || hits->isMinimized() || hits->isMaximized())
        return area;
    QRect right = area;
    right.setLeft(hits->geometry().right() + 1);
    QRect below = area;
    below.setTop(hits->geometry().bottom() + 1);
    for (const QRect& beside : {right, below})
        if (beside.width() >= useful.width() && beside.height() >= useful.height())
            return beside;
    return area;
}

void Program::openHit(const std::string& path, TextPosition position, const std::string& text) {
    if (fr_edit* editor = openEditor(path, position))
        editor->showFound(position, text);
}

void Program::reopenClosedText() {
    std::optional<ClosedTexts::Closed> closed = closedTexts_.takeLast();
    tellClosedTexts();
    if (!closed)
        fr_main().notices()->tell(closedText, tr("No text was closed that its file does not hold."), {},
                                  NoticeArea::briefly);
    else if (auto* drops = std::get_if<UnsavedDrops>(&*closed))
        form2().bringBack(std::move(*drops));
    else
        reopenEditor(std::get<ClosedText>(std::move(*closed)));
}

void Program::reopenEditor(ClosedText text) {
    fr_edit& editor = addEditor();
    try {
        editor.bringBack(text);
    } catch (const std::bad_alloc&) {
        editor.parentWidget()->close();
        keepClosedText(std::move(text));
        tell(&fr_main(), tr("There is not enough memory to bring the text back. It is still kept."));
    }
}

void Program::unsavedTextChanged(WindowHandle window, bool unsaved) {
    fr_main().Toolbar1->markUnsaved(window, unsaved);
}

void Program::unsavedTextClosed(ClosedText text) {
    keepClosedText(std::move(text));
}

void Program::keepClosedText(ClosedTexts::Closed text) {
    if (const std::optional<ClosedTexts::Closed> gone = closedTexts_.keep(std::move(text)))
        tellGone(displayed(pathOf(*gone)), displayed(LastPathPart(pathOf(*gone))));
    tellClosedTexts();
}

// Names the texts of earlier notices too, until the notice is dismissed.
void Program::tellGone(const QString& path, const QString& name) {
    NoticeArea& notices = *fr_main().notices();
    if (notices.textOf(closedTextGone).isEmpty())
        gone_ = {};
    gone_.names.append(QLatin1Char('"') + name + QLatin1Char('"'));
    gone_.paths.append(path);
    notices.tell(closedTextGone,
                 tr("Gone: the text of %1. Of the closed texts the last %2 are kept.")
                     .arg(gone_.names.join(QStringLiteral(", ")))
                     .arg(ClosedTexts::most),
                 gone_.paths.join(QLatin1Char('\n')));
}

// About the one that comes back next.
void Program::tellClosedTexts() {
    const ClosedTexts::Closed* last = closedTexts_.last();
    if (last == nullptr)
        return fr_main().notices()->withdraw(closedText);
    const std::string path = pathOf(*last);
    const QString what =
        std::holds_alternative<UnsavedDrops>(*last)
            ? tr("The drops in \"%1\" were not saved. Ctrl+Shift+T brings them back.")
            : tr("\"%1\" was closed with text that its file does not hold. Ctrl+Shift+T brings the text back.");
    const QString more = closedTexts_.count() > 1 ? tr(" (%1 more)").arg(closedTexts_.count() - 1) : QString();
    fr_main().notices()->tell(closedText, what.arg(displayed(LastPathPart(path))) + more, displayed(path));
}

void Program::drawProgress(PictureBox& box, double value, double maximum) {
    DrawProgress(box, value, maximum);
}

void Program::windowOpened(WindowHandle window, const QString& caption) {
    fr_main().front().addToBar(window, caption);
}

void Program::windowClosed(WindowHandle window) {
    fr_main().Toolbar1->removeWindow(window);
}

const EntryList& Program::jumps() const {
    return fr_main_->jumps;
}

bool Program::explorerVisible() const {
    return fr_main_->explorerVisible();
}

void Program::setExplorerVisible(bool visible) {
    fr_main_->setExplorerVisible(visible);
}

void Program::countCharacters(std::string_view text) {
    form1().RichTextBox1->setText(text);
    bringUp(&form1());
}

void Program::findReferences(std::string_view text, CaretPosition caret) {
    // The editor's text may change as soon as events are served.
    const auto found = wordAtCaret(text, caret);
    if (!found)
        return fr_main().notices()->tell(noWord, tr("There is no word before the caret to look for."), {},
                                         NoticeArea::briefly);
    const std::string word(*found);
    if (!word.empty())
        return fr_findref().findRef(word);
    // Without a word nothing is searched, and what was found before stays.
    fr_findref().present();
    fr_findref().notices->tell(noWord, tr("No word stands at the caret: nothing was searched."), {},
                               NoticeArea::briefly);
}

template <typename Window, typename Make>
Window& Program::single(QPointer<Window>& window, Make make) {
    if (!window) {
        window = make();
        // A closed window lives on for a moment, but it is not the one to show again.
        connect(window, &Window::closed, this, [&window] { window.clear(); });
    }
    return *window;
}

Fr_Directory& Program::fr_directory() {
    return single(fr_directory_, [this] {
        auto* window = new Fr_Directory(Dirs, [this](const EntryList& entries, const EntryList& before) {
            directoriesAreOnDisk_ = lists_.save(directoryListFile, entries, before, *fr_main().notices());
        });
        window->setAttribute(Qt::WA_DeleteOnClose);
        // What could not be written is in force all the same, and the old file would take it back.
        connect(window, &Fr_Directory::directoriesSaved, this, [this] {
            if (!directoriesAreOnDisk_)
                directoriesAreOnDisk_ = lists_.save(directoryListFile, Dirs, Dirs, *fr_main().notices());
            directoriesAreOnDisk_ ? fr_main().loaddirs() : fr_main().showDirs();
        });
        return window;
    });
}

Fr_options& Program::fr_options() {
    return single(fr_options_, [this] {
        EntryList& jumps = fr_main().jumps;
        auto* window = new Fr_options(jumps, [this](const EntryList& entries, const EntryList& before) {
            lists_.save(jumpListFile, entries, before, *fr_main().notices());
        });
        fr_main().mdiArea()->addSubWindow(window, Fr_options::frameFlags());
        return window;
    });
}

fr_findref& Program::fr_findref() {
    return single(fr_findref_, [this] {
        auto* window = new class fr_findref(Dirs, &DrawProgress);
        fr_main().mdiArea()->addSubWindow(window);
        connect(window, &fr_findref::hitChosen, this, &Program::openHit);
        connect(window, &fr_findref::frontWanted, this, [this, window] { fr_main().front().bringUp(*window); });
        return window;
    });
}

Form1& Program::form1() {
    return single(form1_, [] {
        auto* window = new Form1;
        window->setAttribute(Qt::WA_DeleteOnClose);
        return window;
    });
}

Form2& Program::form2() {
    return single(form2_, [this] {
        auto* window = new Form2;
        window->setAttribute(Qt::WA_DeleteOnClose);
        connect(window, &Form2::closedTextWanted, this, &Program::reopenClosedText);
        connect(window, &Form2::unsavedDropsLeft, this, [this](const UnsavedDrops& left) { keepClosedText(left); });
        return window;
    });
}

} // namespace blockhouse
