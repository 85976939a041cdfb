#include "shell/DirectoryView.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace blockhouse {

DirectoryView::DirectoryView(QWidget* parent) : QTreeView(parent) {
    setHeaderHidden(true);
    // Without it every row is measured when a directory is opened: noticeable with thousands of files.
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
}

void DirectoryView::mouseDoubleClickEvent(QMouseEvent* event) {
    QTreeView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton)
        Q_EMIT picked();
}

// A press beside the nodes leaves the selected one selected, so that a double-click there opens it.
QItemSelectionModel::SelectionFlags DirectoryView::selectionCommand(const QModelIndex& index,
                                                                    const QEvent* event) const {
    return index.isValid() ? QTreeView::selectionCommand(index, event) : QItemSelectionModel::NoUpdate;
}

void DirectoryView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Q_EMIT picked();
    else
        QTreeView::keyPressEvent(event);
}

} // namespace blockhouse
