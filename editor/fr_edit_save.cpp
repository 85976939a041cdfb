// Writing the text back.
#include "editor/fr_edit.h"
#include "editor/save_cut.h"
#include "platform/system/files.h"
#include "platform/text/paths.h"
#include "platform/widgets/message_box.h"

#include <QFile>
#include <QFileDialog>
#include <QPointer>

namespace blockhouse {

void fr_edit::takeSnapshot() {
    txt_edit->endComposition();
    const std::string text = txt_edit->text();
    Filetext = textToWrite(text);
}

void fr_edit::writeTo(const std::string& path) {
    const Result<Done> written = replaceWholeFile(path, Filetext);
    if (!written)
        tellFileError(window(), tr("could not be saved. The text is still in the editor."), written.error());
}

std::string fr_edit::askForFileName() {
    const std::size_t separator = lastPathSeparator(Filepath);
    const std::string folder = separator == Filepath.npos ? std::string() : Filepath.substr(0, separator + 1);
    const QString chosen = QFileDialog::getSaveFileName(this, tr("Save As"), displayed(folder) + windowTitle().mid(1));
    return QFile::encodeName(chosen).toStdString();
}

void fr_edit::Save() {
    if (loading_)
        return;
    takeSnapshot();
    if (Filepath.empty())
        return tell(window(), tr("This text has no file yet. Use \"Save As\"."));
    writeTo(Filepath);
}

void fr_edit::SaveAs() {
    if (loading_)
        return;
    const QPointer<fr_edit> self(this);
    const std::string path = askForFileName();
    if (!self || path.empty())
        return;
    takeSnapshot();
    writeTo(path);
}

void fr_edit::ToolbarSave() {
    if (loading_)
        return;
    const QPointer<fr_edit> self(this);
    if (Filepath.empty()) {
        const std::string path = askForFileName();
        if (!self || path.empty())
            return;
        Filepath = path;
    }
    takeSnapshot();
    writeTo(Filepath);
}

} // namespace blockhouse
