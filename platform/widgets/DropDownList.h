// A drop-down list that shows its names whole, or says that they go on, stays quick with a hundred thousand entries and
// tells when its list was used.
#pragma once

#include <QComboBox>

namespace blockhouse {

class DropDownList : public QComboBox {
    Q_OBJECT

public:
    explicit DropDownList(QWidget* parent);

    void showPopup() override;
    void hidePopup() override;

protected:
    void paintEvent(QPaintEvent* event) override;

Q_SIGNALS:
    // An entry was picked in the open list; stepping through the closed one does not count.
    void pickedInList();

private:
    void widenList();

    bool listWasOpen_ = false; // in this round of the event loop
};

} // namespace blockhouse
