// The jump list editor: a child window inside the main window in which the user lists the settings to jump to. The
// list itself changes when the window closes.
#pragma once

#include "tools/SaveEntries.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QWidget>

#include <string>

namespace blockhouse {

class NoticeArea;

class Fr_options : public QWidget {
    Q_OBJECT

public:
    // `jumps` must outlive the window. Its entries are in the documents' code page.
    Fr_options(EntryList& jumps, SaveEntries save);

    // Of the frame that the main window puts around it.
    static Qt::WindowFlags frameFlags();

    QLabel* Label1;
    QListWidget* List1; // Qt::UserRole holds an entry's bytes
    QPushButton* Command1;
    QPushButton* Command2;
    QLineEdit* txt_enter;
    QCheckBox* Check1;
    NoticeArea* notices; // at the foot of the list

Q_SIGNALS:
    // The window is going away.
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void makeControls();
    void addEntry(const std::string& entry);
    void addTyped();
    void removeSelected();

    EntryList& jumps_;
    const SaveEntries save_;
};

} // namespace blockhouse
