#pragma once

#include "platform/text/Result.h"
#include "shell/directory_tree.h"

#include <QAbstractItemModel>

namespace blockhouse {

// The tree of directories and files for an item view: one column, text as people read it.
class DirectoryTreeModel : public QAbstractItemModel {
    Q_OBJECT

public:
    static constexpr int keyRole = Qt::UserRole; // the node's key as a QByteArray

    using QAbstractItemModel::QAbstractItemModel;

    // Adds an entry of the directory list: its node and those of its files, each unless it is there already. An entry
    // that cannot be listed adds nothing and is an error; an empty one adds nothing.
    Result<Done> addDirectory(const std::string& entry);

    // The node's key; empty for an invalid index.
    [[nodiscard]] std::string keyOf(const QModelIndex& index) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    DirectoryTree tree_;
};

} // namespace blockhouse
