// Writing the text back.
#include "editor/fr_edit.h"
#include "editor/save_cut.h"
#include "platform/system/files.h"
#include "platform/text/paths.h"
#include "platform/widgets/message_box.h"
#include "platform/widgets/qt_text.h"

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

std::optional<std::string> fr_edit::askForFileName() {
    const std::size_t separator = lastPathSeparator(Filepath);
    const std::string folder = separator == Filepath.npos ? std::string() : Filepath.substr(0, separator + 1);
    return askForFileToSave(*this, tr("Save As"), displayed(folder) + windowTitle().mid(1));
}

void fr_edit::Save() {
    if (work_.isRunning())
        return;
    takeSnapshot();
    if (Filepath.empty())
        return tell(window(), tr("This text has no file yet. Use \"Save As\"."));
    writeTo(Filepath);
}

void fr_edit::SaveAs() {
    if (work_.isRunning())
        return;
    if (const auto path = askForFileName()) {
        takeSnapshot();
        writeTo(*path);
    }
}

void fr_edit::ToolbarSave() {
    if (work_.isRunning())
        return;
    if (Filepath.empty()) {
        const auto path = askForFileName();
        if (!path)
            return;
        Filepath = *path;
    }
    takeSnapshot();
    writeTo(Filepath);
}

} // namespace blockhouse
