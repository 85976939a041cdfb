// A list of folders to walk through: from the drive down to the current folder, and what is inside it.
#pragma once

#include "tools/folder_rows.h"

#include <QAbstractListModel>
#include <QListView>

#include <string>
#include <vector>

namespace blockhouse {

class DirectoryList : public QListView {
    Q_OBJECT

public:
    explicit DirectoryList(QWidget* parent);

    // The folder walked into; empty before the first one.
    [[nodiscard]] const std::string& path() const { return path_; }

    // False, with everything as it was, when the folder cannot be read.
    bool walkTo(const std::string& folder);
    // To the folder whose path is on the clipboard. Does nothing if that is no path.
    void walkToClipboard();

Q_SIGNALS:
    // The current folder is another one now, or has been read again.
    void walked();
    // A folder cannot be read; everything is as it was.
    void refused(const QString& folder, const QString& cause);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    class Rows : public QAbstractListModel {
    public:
        using QAbstractListModel::QAbstractListModel;

        void set(std::vector<FolderRow> rows);

        [[nodiscard]] const FolderRow& at(int row) const { return rows_.at(static_cast<std::size_t>(row)); }

        int rowCount(const QModelIndex& parent = {}) const override;
        QVariant data(const QModelIndex& index, int role) const override;

    private:
        std::vector<FolderRow> rows_;
    };

    void walkInto(const QModelIndex& index);
    [[nodiscard]] int rowOf(const std::string& path) const;

    Rows* rows_;
    std::string path_;
};

} // namespace blockhouse
