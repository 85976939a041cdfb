// The directory list editor: a small window above all others in which the user picks the directories to work in. The
// list itself changes when the window closes.
#pragma once

#include "tools/DirectoryList.h"
#include "tools/SaveEntries.h"

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QWidget>

namespace blockhouse {

class Fr_Directory : public QWidget {
    Q_OBJECT

public:
    // `Dirs` must outlive the window.
    Fr_Directory(EntryList& Dirs, SaveEntries save);

    // Keeps a window above all others from when it is shown next.
    static void MakeTopmost(QWidget& window);

    QLabel* Label1;
    QComboBox* Drive1;
    DirectoryList* Dir1;
    QListWidget* List2; // the last part of each path in List1, in the same order
    QListWidget* List1; // hidden; Qt::UserRole holds a path's bytes
    QLabel* Lab_stat;
    QPushButton* Command1;
    QPushButton* Command2;

Q_SIGNALS:
    // The window is going away.
    void closed();
    // The list has been taken over and written.
    void directoriesSaved();

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void makeControls();
    void makeButtons();
    void fillDrives();
    void changeDrive();
    void showDrive();
    void tellPath(const QString& text);
    void addEntry(const std::string& path);
    void addCurrent();
    void removeSelected();
    void showPath(int row);
    [[nodiscard]] std::string pathAt(int row) const;

    EntryList& Dirs_;
    const SaveEntries save_;
    int drive_ = 0; // the entry of Drive1 that holds the current folder
};

} // namespace blockhouse
