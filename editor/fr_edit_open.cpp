// Opening a file: from its bytes to a coloured text and a list of its blocks.
#include "editor/BlockListModel.h"
#include "editor/EditorHost.h"
#include "editor/fr_edit.h"
#include "editor/keyword_table.h"
#include "editor/OpeningColours.h"
#include "editor/textboxbas.h"
#include "platform/system/files.h"
#include "platform/text/paths.h"
#include "platform/widgets/message_box.h"
#include "platform/widgets/NoticeArea.h"
#include "platform/widgets/qt_text.h"
#include "platform/widgets/window_lock.h"

#include <memory>
#include <new>
#include <optional>

namespace blockhouse {
namespace {

constexpr std::size_t enoughBlocks = 3;

// In tenths of the opening. There is none after the FX lists.
constexpr double progressAfter(HeaderKind kind) {
    switch (kind) {
    case HeaderKind::Object:
        return 6;
    case HeaderKind::Weapon:
        return 7;
    case HeaderKind::SpecialPower:
        return 8;
    case HeaderKind::SkirmishBuildList:
        return 9;
    case HeaderKind::FXList:
    case HeaderKind::None:
        break;
    }
    return 0;
}

const std::shared_ptr<const ColouringRule>& openingColours() {
    static const std::shared_ptr<const ColouringRule> rule =
        std::make_shared<OpeningColours>(KeywordList(), KeywordColor, CommentDelimiter, CommentHighlight);
    return rule;
}

} // namespace

bool fr_edit::Openfile(const std::string& Txt_path, TextPosition Startout) {
    const auto unreadable = std::make_shared<std::optional<FileError>>();
    txt_edit->setReadOnly(true);
    opening_ = true;
    LongWork::Outcome outcome = LongWork::Outcome::Abandoned;
    try {
        outcome = work_.run(stepsOfOpening(Txt_path, Startout, unreadable), LongWork::Pointer::Hourglass);
    } catch (const std::bad_alloc&) {
        *unreadable = FileError{Txt_path, "Cannot allocate memory"};
    }
    if (*unreadable) {
        refuse(**unreadable);
        return false;
    }
    if (outcome != LongWork::Outcome::Finished)
        return false;
    opening_ = false;
    txt_edit->setReadOnly(false);
    return true;
}

LongWork::Steps fr_edit::stepsOfOpening(const std::string& path, TextPosition startout,
                                        const std::shared_ptr<std::optional<FileError>>& unreadable) {
    using Then = LongWork::Then;
    LongWork::Steps steps;
    steps.emplace_back([this] {
        progress(1, 10);
        return Then::NextStep;
    });
    steps.emplace_back([this, path, unreadable] { return readFile(path, *unreadable); });
    steps.emplace_back([this, path] {
        announce(path);
        return Then::NextStep;
    });
    const auto blocks = std::make_shared<std::vector<BlockEntry>>();
    for (const HeaderKind kind : headerKinds)
        steps.emplace_back([this, blocks, kind] {
            lookForBlocks(*blocks, kind);
            // Whether or not the kind was looked for.
            if (const double tenths = progressAfter(kind); tenths > 0)
                progress(tenths, 10);
            return Then::NextStep;
        });
    steps.emplace_back([this, blocks, startout] {
        listBlocks(std::move(*blocks), startout);
        progress(10, 10);
        return Then::NextStep;
    });
    steps.emplace_back([this] {
        colourFile();
        thebar->Cls();
        return Then::End;
    });
    return steps;
}

LongWork::Then fr_edit::readFile(const std::string& path, std::optional<FileError>& unreadable) {
    (parentWidget() ? parentWidget() : this)->show();
    Filepath = path;
    Result<StampedBytes> file = readStampedFile(path, largestDocument);
    if (!file) {
        unreadable = file.error();
        return LongWork::Then::End;
    }
    if (!RichTextBox::canHold(file.value().bytes)) {
        unreadable = FileError{path, "File too large"};
        return LongWork::Then::End;
    }
    if (!RichTextBox::canShow(file.value().bytes)) {
        unreadable = FileError{path, "A line of it is too long"};
        return LongWork::Then::End;
    }
    Filetext = std::move(file).value().bytes;
    file_.is(file.value().stamp, *notices);
    progress(1, 5);
    return LongWork::Then::NextStep;
}

void fr_edit::announce(const std::string& path) {
    setWindowTitle(displayed(captionOf(path)));
    setAccessibleName(displayed(LastPathPart(path)));
    setWindowFilePath(displayed(path));
    host_.windowOpened(handle_, displayed(LastPathPart(path)));
}

void fr_edit::progress(double value, double maximum) {
    host_.drawProgress(*thebar, value, maximum);
}

void fr_edit::refuse(const FileError& error) {
    QWidget* frame = parentWidget() ? parentWidget() : this;
    QWidget* mainWindow = window();
    frame->close();
    tellFileError(mainWindow == this ? nullptr : mainWindow, tr("could not be opened."), error);
}

void fr_edit::lookForBlocks(std::vector<BlockEntry>& blocks, HeaderKind kind) {
    if (blocks.size() >= enoughBlocks)
        return;
    blocks = blockPass(Filetext, kind);
    if (!blocks.empty())
        BlockKind = kind;
}

void fr_edit::listBlocks(std::vector<BlockEntry> blocks, TextPosition startout) {
    if (blocks.size() < enoughBlocks)
        blocks.clear();
    List1->setEnabled(!blocks.empty());
    List1->fill([&] { blocks_->setBlocks(std::move(blocks)); });
    List1->setCurrentIndex(blockToSelect(startout));
}

int fr_edit::blockToSelect(TextPosition startout) const {
    constexpr int second = 1;
    if (blocks_->blocks().empty())
        return -1;
    const auto name = blockNameBefore(Filetext, BlockKind, startout);
    const int found = name ? Findin(*name) : -1;
    return found >= 0 ? found : second;
}

void fr_edit::colourFile() {
    Combo1->clear();
    txt_edit->setText(Filetext, openingColours());
    // As the comment pass leaves it.
    if (txt_edit->contains(CommentDelimiter))
        ReadColorTable(*txt_edit);
}

void fr_edit::colourAgain() {
    if (!isOpening())
        txt_edit->colourBy(openingColours());
}

void fr_edit::FormatBox() {
    if (!work_.isRunning()) // opening a file does it anyway
        work_.run(stepsOfFormatting(), LongWork::Pointer::Hourglass);
}

// One lock for all of it: in between, the window would show the text without colours, or without its comments'.
LongWork::Steps fr_edit::stepsOfFormatting() {
    using Then = LongWork::Then;

    struct Formatting {
        explicit Formatting(QWidget* window) : lock(window) {}

        WindowUpdateLock lock;
        std::optional<KeywordPass> keywords;
    };

    const auto formatting = std::make_shared<std::optional<Formatting>>();
    return {[this, formatting] {
                formatting->emplace(this);
                Combo1->clear();
                (*formatting)->keywords.emplace(*txt_edit, KeywordColor, KeywordList());
                return Then::NextStep;
            },
            [formatting] { return (*formatting)->keywords->colourNext() ? Then::Again : Then::NextStep; },
            [this, formatting] {
                (*formatting)->keywords->restoreView(this);
                HighlightFromChar(this, *txt_edit, CommentHighlight, CommentDelimiter, false);
                formatting->reset();
                return Then::NextStep;
            }};
}

} // namespace blockhouse
