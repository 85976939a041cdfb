#include "platform/widgets/DropDownList.h"

#include <QListView>
#include <QStylePainter>
#include <QTimer>

#include <algorithm>

namespace blockhouse {

DropDownList::DropDownList(QWidget* parent) : QComboBox(parent) {
    // Measuring every entry would take seconds on a long list.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    auto* list = new QListView(this);
    list->setUniformItemSizes(true);
    setView(list);
    connect(this, &QComboBox::currentTextChanged, this, &QWidget::setToolTip);
    connect(this, &QComboBox::activated, this, [this] {
        if (listWasOpen_)
            Q_EMIT pickedInList();
    });
}

// Wide enough for the longest of the names at hand, as far as the box may reach.
void DropDownList::widenList() {
    constexpr int looksAt = 2000;
    constexpr int widest = 480;
    constexpr int beside = 32; // margins and scroll bar
    int width = 0;
    const int first = std::max(0, currentIndex() - looksAt / 2);
    for (int entry = first; entry < std::min(count(), first + looksAt); ++entry)
        width = std::max(width, fontMetrics().horizontalAdvance(itemText(entry)));
    view()->setMinimumWidth(std::clamp(width + beside, 0, widest));
}

void DropDownList::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    if (currentIndex() < 0) {
        // Not the theme's own colour for it: dark ones tend to leave the light one's.
        QColor faint = option.palette.color(QPalette::ButtonText);
        faint.setAlphaF(0.65F);
        option.palette.setColor(QPalette::ButtonText, faint);
        option.currentText = placeholderText();
    }
    const QRect room = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    option.currentText = fontMetrics().elidedText(option.currentText, Qt::ElideRight, room.width() - 2);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

void DropDownList::showPopup() {
    listWasOpen_ = true;
    widenList();
    QComboBox::showPopup();
}

// The choice is announced after the list has closed.
void DropDownList::hidePopup() {
    QComboBox::hidePopup();
    QTimer::singleShot(0, this, [this] { listWasOpen_ = false; });
}

} // namespace blockhouse
