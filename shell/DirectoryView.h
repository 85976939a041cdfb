#pragma once

#include <QTreeView>

namespace blockhouse {

// A tree view that says when its user picks the selected node: by a double-click anywhere in it, on a node or not,
// or by the Enter key.
class DirectoryView : public QTreeView {
    Q_OBJECT

public:
    explicit DirectoryView(QWidget* parent);

Q_SIGNALS:
    void picked();

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;
};

} // namespace blockhouse
