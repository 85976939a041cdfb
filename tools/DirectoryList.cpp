#include "tools/DirectoryList.h"

#include "platform/system/files.h"
#include "platform/system/folders.h"
#include "platform/text/paths.h"
#include "platform/widgets/clipboard.h"
#include "platform/widgets/qt_text.h"

#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QUrl>

#include <algorithm>

namespace blockhouse {
namespace {

constexpr int depthRole = Qt::UserRole;

// Folders stand further right the deeper they are.
class Indented : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        constexpr int indent = 8;
        QStyleOptionViewItem shifted = option;
        // However deep, most of the row is the name's.
        const int deepest = option.rect.width() / 4;
        shifted.rect.setLeft(option.rect.left() + std::min(indent * index.data(depthRole).toInt(), deepest));
        QStyledItemDelegate::paint(painter, shifted, index);
    }
};

} // namespace

void DirectoryList::Rows::set(std::vector<FolderRow> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
}

int DirectoryList::Rows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant DirectoryList::Rows::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const FolderRow& row = at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return displayed(row.name);
    case depthRole:
        return row.depth;
    case Qt::ToolTipRole:
        return displayed(row.path);
    case Qt::DecorationRole:
        return QApplication::style()->standardIcon(row.isOpen ? QStyle::SP_DirOpenIcon : QStyle::SP_DirClosedIcon);
    default:
        return {};
    }
}

DirectoryList::DirectoryList(QWidget* parent) : QListView(parent), rows_(new Rows(this)) {
    setModel(rows_);
    setItemDelegate(new Indented(this));
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setIconSize({16, 16});
    connect(this, &QListView::doubleClicked, this, &DirectoryList::walkInto);
}

bool DirectoryList::walkTo(const std::string& folder) {
    const Result<std::vector<std::string>> folders = folderNamesIn(folder);
    if (!folders) {
        Q_EMIT refused(displayed(folder), QString::fromStdString(folders.error().cause));
        return false;
    }
    const std::string before = std::exchange(path_, withoutTrailingSeparators(folder));
    rows_->set(folderRows(path_, folders.value()));
    // Who went up finds the folder he came from; who went down, the one he is in.
    const int cameFrom = rowOf(before);
    const QModelIndex current = rows_->index(cameFrom >= 0 ? cameFrom : rowOf(path_));
    setCurrentIndex(current);
    // As much as possible of what is inside the folder.
    scrollTo(rows_->index(rowOf(path_)), PositionAtTop);
    scrollTo(current);
    Q_EMIT walked();
    return true;
}

int DirectoryList::rowOf(const std::string& path) const {
    for (int row = rows_->rowCount() - 1; row >= 0; --row)
        if (rows_->at(row).path == path && (path == path_ || !rows_->at(row).isOpen))
            return row;
    return -1;
}

void DirectoryList::walkInto(const QModelIndex& index) {
    if (!index.isValid())
        return;
    const std::string folder = rows_->at(index.row()).path;
    walkTo(folder);
}

void DirectoryList::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        walkInto(currentIndex());
    else if (event->key() == Qt::Key_Backspace)
        walkTo(folderAbove(path_));
    else
        QListView::keyPressEvent(event);
}

// File managers put a path there in quotes, as an address, or as it is.
void DirectoryList::walkToClipboard() {
    const std::optional<QString> clipboard = clipboardText();
    if (!clipboard) {
        Q_EMIT refused(tr("The clipboard"), tr("the program that holds it does not answer"));
        return;
    }
    QString text = clipboard->section(QLatin1Char('\n'), 0, 0).trimmed();
    if (text.size() >= 2 && text.front() == text.back() &&
        (text.front() == QLatin1Char('"') || text.front() == QLatin1Char('\'')))
        text = text.mid(1, text.size() - 2);
    if (const QUrl address(text); address.isLocalFile())
        text = address.toLocalFile();
    if (!QDir::isAbsolutePath(text))
        return;
    // On Windows a path may lack its drive. That of a file means the folder that it is in.
    const std::string path = absoluteFolder(pathOf(QDir::cleanPath(text)));
    walkTo(FileExists(path) ? folderAbove(path) : path);
}

} // namespace blockhouse
