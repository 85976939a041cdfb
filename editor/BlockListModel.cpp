#include "editor/BlockListModel.h"

#include "platform/widgets/qt_text.h"

namespace blockhouse {

void BlockListModel::setBlocks(std::vector<BlockEntry> blocks) {
    beginResetModel();
    blocks_ = std::move(blocks);
    endResetModel();
}

int BlockListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(blocks_.size());
}

QVariant BlockListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const BlockEntry& block = blocks_[static_cast<std::size_t>(index.row())];
    if (role == Qt::DisplayRole)
        return documentText(block.name);
    if (role == Qt::UserRole)
        return static_cast<int>(block.kind);
    return {};
}

} // namespace blockhouse
