// Writing the text back.
#include "editor/fr_edit.h"
#include "editor/save_cut.h"
#include "platform/system/files.h"
#include "platform/text/paths.h"
#include "platform/widgets/message_box.h"
#include "platform/widgets/NoticeArea.h"
#include "platform/widgets/qt_text.h"

namespace blockhouse {

std::optional<LeftOut> fr_edit::takeSnapshot() {
    txt_edit->endComposition();
    const std::string text = txt_edit->text();
    Filetext = textToWrite(text);
    return leftOutOf(text);
}

void fr_edit::writeTo(const std::string& path) {
    const bool isOwnFile = isSameFile(path, Filepath);
    const std::optional<LeftOut> leftOut = takeSnapshot();
    const Result<Replaced> written = replaceKnownFile(path, Filetext, isOwnFile ? file_.state() : std::nullopt);
    if (!written)
        return tellFileError(window(), tr("could not be saved. The text is still in the editor."), written.error());
    if (isOwnFile) {
        file_.is(written.value().stamp, *notices);
        fileLacksText_ = leftOut.has_value();
        txt_edit->setUnmodified();
        showWhetherSaved();
    }
    tellWhatWasSaved(isOwnFile ? Filepath : path, leftOut, written.value().backup);
}

void fr_edit::tellWhatWasSaved(const std::string& path, const std::optional<LeftOut>& leftOut,
                               const std::string& backup) {
    const auto copy = QStringLiteral("copy");
    if (path != Filepath)
        notices->tell(copy,
                      tr("A copy was written as \"%1\". This window's file is \"%2\", as before.")
                          .arg(displayed(LastPathPart(path)), displayed(LastPathPart(Filepath))),
                      displayed(path));
    else
        notices->withdraw(copy);
    const auto afterTheEnd = QStringLiteral("leftOut");
    if (leftOut)
        notices->tell(afterTheEnd,
                      tr("A file ends with its last \"End\": %n character(s) from line %1 on were not written.",
                         nullptr, static_cast<int>(leftOut->characters))
                          .arg(leftOut->firstLine));
    else
        notices->withdraw(afterTheEnd);
    tellBackup(backup, *notices);
}

std::optional<std::string> fr_edit::askForFileName() {
    const std::size_t separator = lastPathSeparator(Filepath);
    const std::string folder = separator == Filepath.npos ? std::string() : Filepath.substr(0, separator + 1);
    return askForFileToSave(*this, tr("Save As"), displayed(folder) + windowTitle().mid(1));
}

void fr_edit::Save() {
    if (isOpening())
        return;
    if (Filepath.empty()) {
        takeSnapshot();
        return tell(window(), tr("This text has no file yet. Use \"Save As\"."));
    }
    writeTo(Filepath);
}

void fr_edit::SaveAs() {
    if (isOpening())
        return;
    if (const auto path = askForFileName())
        writeTo(*path);
}

void fr_edit::ToolbarSave() {
    if (isOpening())
        return;
    if (Filepath.empty()) {
        const auto path = askForFileName();
        if (!path)
            return;
        Filepath = *path;
    }
    writeTo(Filepath);
}

} // namespace blockhouse
