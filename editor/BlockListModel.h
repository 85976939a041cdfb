// The block list as a drop-down list shows it: built in one go, however many blocks there are.
#pragma once

#include "editor/block_scan.h"

#include <QAbstractListModel>

namespace blockhouse {

// Qt::UserRole holds an entry's item data, the number of its kind.
class BlockListModel : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    // In blockPass's order.
    void setBlocks(std::vector<BlockEntry> blocks);

    [[nodiscard]] const std::vector<BlockEntry>& blocks() const { return blocks_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    std::vector<BlockEntry> blocks_;
};

} // namespace blockhouse
