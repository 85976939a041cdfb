#pragma once

#include "platform/text/units.h"

#include <QTimer>
#include <QWidget>

class QPushButton;

namespace blockhouse {

class DirectoryTreeModel;
class DirectoryView;

// The panel at the main window's right edge: the tree of directories, a close button, and at its left edge a strip
// that is dragged to change the panel's width.
class ExplorerPanel : public QWidget {
    Q_OBJECT

public:
    explicit ExplorerPanel(QWidget* parent);

    [[nodiscard]] DirectoryView* tree() const { return tree_; }

    [[nodiscard]] DirectoryTreeModel& model() const { return *model_; }

    [[nodiscard]] QSize sizeHint() const override { return {width_.value, 0}; }

    // The main window may be made narrower than the panel is.
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, 0}; }

Q_SIGNALS:
    void closeWanted();

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeTree();
    void makeCloseButton();
    void makeHandle();
    void followCursor();

    DirectoryTreeModel* model_;
    DirectoryView* tree_;
    QPushButton* closeButton_;
    QWidget* handle_;
    QTimer resizing_;
    Pixels width_; // the width asked of the layout
    Pixels lastCursorX_;
};

} // namespace blockhouse
