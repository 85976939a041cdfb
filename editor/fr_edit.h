// The editor window: one per opened file, a child window inside the main window.
#pragma once

#include "editor/block_scan.h"
#include "platform/PictureBox.h"
#include "platform/Result.h"
#include "platform/RichTextBox.h"
#include "platform/window_handles.h"

#include <QComboBox>
#include <QWidget>

#include <string>
#include <string_view>

namespace blockhouse {

class BlockListModel;
class EditorHost;

class fr_edit : public QWidget {
    Q_OBJECT

public:
    // The host must outlive the window.
    explicit fr_edit(EditorHost& host, QWidget* parent = nullptr);
    ~fr_edit() override;

    // Loads the file, fills the block list, colours the text; called once, on a new window that has been added to the
    // main window's area. Startout is the 1-based position of a place in the file whose block is wanted, 0 for none.
    // Serves events: the window may be closed when it returns, and is if the file could not be read (the user has
    // been told then).
    void Openfile(const std::string& Txt_path, std::ptrdiff_t Startout = 0);

    // Colours the block keywords and comments of the whole text.
    void FormatBox();

    // 0-based index of the first entry of the block list equal to `what` ignoring case, or -1.
    [[nodiscard]] int Findin(std::string_view what) const;

    [[nodiscard]] WindowHandle handle() const { return handle_; }

    std::string Filepath;
    std::string Filetext;
    int BlockKind = 0; // of the names in List1; 0 until one has been listed

    RichTextBox* txt_edit;
    QComboBox* List1;
    QComboBox* Combo1;
    PictureBox* Picture1;
    PictureBox* thebar;

    QSize sizeHint() const override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void makeControls();
    void layOut();
    [[nodiscard]] QSize outerSize() const;

    // False when the window is gone or going: the caller returns at once.
    [[nodiscard]] bool progress(double value, double maximum);
    void refuse(const FileError& error);
    [[nodiscard]] bool fillBlockList();
    void selectBlock(std::ptrdiff_t startout);

    EditorHost& host_;
    const WindowHandle handle_;
    BlockListModel* blocks_;
    bool closing_ = false;
};

} // namespace blockhouse
