#include "app/Program.h"

#include "editor/fr_edit.h"
#include "findref/Form1.h"
#include "platform/PictureBox.h"
#include "shell/DrawProgress.h"
#include "shell/Fr_main.h"
#include "shell/Splash.h"

#include <QCoreApplication>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace blockhouse {

Program::Program(std::string applicationFolder) : Program(ListFiles(std::move(applicationFolder))) {}

Program::Program(ListFiles files) : files_(std::move(files)) {}

Program::~Program() {
    delete splash_;
    delete form1_;
}

void Program::start() {
    splash_ = new Splash;
    splash_->setAttribute(Qt::WA_DeleteOnClose);
    connect(splash_, &Splash::mainWindowWanted, this, &Program::showMainWindow);
    splash_->show();
}

void Program::showMainWindow() {
    Fr_main& window = fr_main();
    if (!ended_)
        window.show();
}

Fr_main& Program::fr_main() {
    if (!fr_main_) {
        fr_main_ = std::make_unique<Fr_main>(Dirs, files_);
        connect(fr_main_.get(), &Fr_main::fileChosen, this, [this](const std::string& path) { openEditor(path); });
        connect(fr_main_.get(), &Fr_main::closed, this, [this] {
            ended_ = true;
            QCoreApplication::exit();
        });
        // Closed while it loads, the window says so itself.
        if (!fr_main_->load())
            ended_ = true;
    }
    return *fr_main_;
}

void Program::openEditor(const std::string& path, std::ptrdiff_t Startout) {
    auto* editor = new fr_edit(*this);
    QMdiArea* area = fr_main().mdiArea();
    const QMdiSubWindow* before = area->currentSubWindow();
    const bool maximised = before && before->isMaximized();
    QMdiSubWindow* frame = area->addSubWindow(editor);
    // At the top left: the others are about to be minimised, and this one need not keep out of their way.
    frame->setGeometry(QRect(QPoint(), frame->sizeHint().boundedTo(area->viewport()->size())));
    // Who works with one window at a time goes on doing so.
    if (maximised)
        frame->showMaximized();
    editor->Openfile(path, Startout);
}

void Program::drawProgress(PictureBox& box, double value, double maximum) {
    DrawProgress(box, value, maximum);
}

void Program::windowOpened(WindowHandle window, const QString& caption) {
    fr_main().Toolbar1->addWindow(window, caption);
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
    Form1& window = form1();
    window.RichTextBox1->setText(text);
    window.show();
    window.raise();
    window.activateWindow();
}

Form1& Program::form1() {
    if (!form1_) {
        form1_ = new Form1;
        form1_->setAttribute(Qt::WA_DeleteOnClose);
    }
    return *form1_;
}

} // namespace blockhouse
