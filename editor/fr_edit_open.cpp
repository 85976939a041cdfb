// Opening a file: from its bytes to a coloured text and a list of its blocks.
#include "editor/BlockListModel.h"
#include "editor/EditorHost.h"
#include "editor/fr_edit.h"
#include "editor/keyword_table.h"
#include "editor/textboxbas.h"
#include "platform/system/files.h"
#include "platform/text/paths.h"
#include "platform/widgets/message_box.h"
#include "platform/widgets/window_lock.h"

#include <QPointer>

namespace blockhouse {
namespace {

constexpr std::size_t enoughBlocks = 3;

// What the text engine and its undo history still count without overflow.
constexpr std::size_t largestFile = 1'000'000'000;

} // namespace

void fr_edit::Openfile(const std::string& Txt_path, std::ptrdiff_t Startout) {
    QWidget* frame = parentWidget() ? parentWidget() : this;
    loading_ = true;
    frame->show();
    if (!progress(1, 10))
        return;
    Filepath = Txt_path;
    Result<std::string> file = readWholeFile(Txt_path, largestFile);
    if (!file)
        return refuse(file.error());
    if (!progress(1, 5))
        return;
    const std::size_t separator = lastPathSeparator(Txt_path);
    const QString caption = displayed(separator == Txt_path.npos ? Txt_path : Txt_path.substr(separator));
    setWindowTitle(caption);
    setAccessibleName(displayed(LastPathPart(Txt_path)));
    setWindowFilePath(displayed(Txt_path));
    host_.windowOpened(handle_, displayed(LastPathPart(Txt_path)));
    Filetext = std::move(file).value();

    if (!fillBlockList())
        return;
    List1->setEnabled(!blocks_->blocks().empty());
    selectBlock(Startout);
    if (!progress(10, 10))
        return;
    txt_edit->setText(Filetext);
    const QPointer<fr_edit> self(this);
    FormatBox();
    if (!self || closing_)
        return;
    loading_ = false;
    thebar->Cls();
    txt_edit->setFocus();
}

bool fr_edit::progress(double value, double maximum) {
    const QPointer<fr_edit> self(this);
    host_.drawProgress(*thebar, value, maximum);
    return self && !closing_;
}

void fr_edit::refuse(const FileError& error) {
    QWidget* frame = parentWidget() ? parentWidget() : this;
    QWidget* mainWindow = window();
    const FileError told = error;
    frame->close();
    tellFileError(mainWindow == this ? nullptr : mainWindow, tr("could not be opened."), told);
}

bool fr_edit::fillBlockList() {
    // Progress goes on after a kind whether or not it was looked for.
    constexpr double progressAfter[blockKinds] = {6, 7, 8, 0, 9};
    std::vector<BlockEntry> blocks;
    for (int kind = 1; kind <= blockKinds; ++kind) {
        if (blocks.size() < enoughBlocks) {
            blocks = blockPass(Filetext, kind);
            if (!blocks.empty())
                BlockKind = kind;
        }
        if (progressAfter[kind - 1] > 0 && !progress(progressAfter[kind - 1], 10))
            return false;
    }
    if (blocks.size() < enoughBlocks)
        blocks.clear();
    blocks_->setBlocks(std::move(blocks));
    List1->setCurrentIndex(-1);
    return true;
}

void fr_edit::selectBlock(std::ptrdiff_t startout) {
    if (blocks_->blocks().empty())
        return;
    constexpr int second = 1;
    int index = second;
    if (startout >= 1) {
        const auto name = blockNameBefore(Filetext, BlockKind, TextPosition{startout});
        const int found = name ? Findin(*name) : -1;
        index = found >= 0 ? found : second;
    }
    List1->setCurrentIndex(index);
}

void fr_edit::FormatBox() {
    const QPointer<fr_edit> self(this);
    const Hourglass hourglass;
    Combo1->clear();
    ColorKeywords(this, *txt_edit, KeywordColor, KeywordList(), false);
    if (self && !closing_)
        HighlightFromChar(this, *txt_edit, CommentHighlight, CommentDelimiter, false);
}

} // namespace blockhouse
