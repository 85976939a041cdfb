// A drop-down list that shows its names whole, or says that they go on, stays quick with a hundred thousand entries and
// announces each choice once.
#pragma once

#include <QComboBox>

#include <functional>
#include <optional>

namespace blockhouse {

// How an entry was chosen. Otherwise: by keys or wheel on the closed list, or by the program.
enum class Pick { InOpenList, Otherwise };

class DropDownList : public QComboBox {
    Q_OBJECT

public:
    // `whatItLists` tells people what the entries are: its accessible name, and its tool tip while none is selected.
    DropDownList(const QString& whatItLists, QWidget* parent);

    // Runs `changeEntries`, during which nothing is announced and after which nothing is selected.
    void fill(const std::function<void()>& changeEntries);

    void showPopup() override;

Q_SIGNALS:
    // The entry `index` was chosen: by the user, also if it is the selected one already, or by the program's selecting
    // another one. Selecting none is no choice.
    void chosen(int index, blockhouse::Pick how);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void standInForFilter(QObject& part);
    void whileUserPicks(Pick how, const std::function<void()>& handle);
    void onSelected(int index);
    void onActivated(int index);
    void showSelectedAsToolTip();
    void widenList();

    std::optional<Pick> userPick_; // while a key, the wheel or the mouse is handled that may choose an entry
    bool filling_ = false;
};

} // namespace blockhouse
