#include "shell/DirectoryTreeModel.h"

#include "platform/system/files.h"
#include "platform/system/folders.h"
#include "platform/widgets/qt_text.h"

namespace blockhouse {
namespace {

// An index carries its directory's position plus one; 0 marks the directories themselves.
constexpr quintptr onTopLevel = 0;

std::size_t at(int row) {
    return static_cast<std::size_t>(row);
}

} // namespace

Result<Done> DirectoryTreeModel::addDirectory(const std::string& entry) {
    const std::string path = absoluteFolder(entry);
    if (path.empty())
        return Done{};
    const Result<std::vector<std::string>> names = fileNamesIn(path);
    if (!names)
        return names.error();
    DirectoryTree::Addition addition = tree_.add(path, names.value());
    const int row = static_cast<int>(addition.directory);
    if (addition.directoryIsNew) {
        beginInsertRows({}, row, row);
        tree_.showDirectory(addition);
        endInsertRows();
    }
    if (addition.files.empty())
        return Done{};
    const QModelIndex directory = index(row, 0);
    const int first = rowCount(directory);
    beginInsertRows(directory, first, first + static_cast<int>(addition.files.size()) - 1);
    tree_.showFiles(addition);
    endInsertRows();
    return Done{};
}

std::string DirectoryTreeModel::keyOf(const QModelIndex& index) const {
    if (!index.isValid())
        return {};
    if (index.internalId() == onTopLevel)
        return tree_.directories()[at(index.row())].key;
    return tree_.directories()[index.internalId() - 1].files[at(index.row())].key();
}

QModelIndex DirectoryTreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : onTopLevel);
}

QModelIndex DirectoryTreeModel::parent(const QModelIndex& child) const {
    if (!child.isValid() || child.internalId() == onTopLevel)
        return {};
    return createIndex(static_cast<int>(child.internalId() - 1), 0, onTopLevel);
}

int DirectoryTreeModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid())
        return static_cast<int>(tree_.directories().size());
    if (parent.internalId() != onTopLevel || parent.column() != 0)
        return 0;
    return static_cast<int>(tree_.directories()[at(parent.row())].files.size());
}

int DirectoryTreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

QVariant DirectoryTreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (role == keyRole)
        return QByteArray::fromStdString(keyOf(index));
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    if (index.internalId() == onTopLevel)
        return displayed(keyOf(index));
    const DirectoryTree::File& file = tree_.directories()[index.internalId() - 1].files[at(index.row())];
    return role == Qt::ToolTipRole ? displayed(file.key()) : displayed(std::string(file.text()));
}

} // namespace blockhouse
