#include "platform/DropDownList.h"

#include <QListView>
#include <QTimer>

namespace blockhouse {

DropDownList::DropDownList(QWidget* parent) : QComboBox(parent) {
    // Measuring every entry would take seconds on a long list.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    auto* list = new QListView(this);
    list->setUniformItemSizes(true);
    setView(list);
    connect(this, &QComboBox::activated, this, [this] {
        if (listWasOpen_)
            Q_EMIT pickedInList();
    });
}

void DropDownList::showPopup() {
    listWasOpen_ = true;
    QComboBox::showPopup();
}

// The choice is announced after the list has closed.
void DropDownList::hidePopup() {
    QComboBox::hidePopup();
    QTimer::singleShot(0, this, [this] { listWasOpen_ = false; });
}

} // namespace blockhouse
