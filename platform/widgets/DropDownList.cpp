#include "platform/widgets/DropDownList.h"

#include "platform/widgets/LongWork.h"

#include <QListView>
#include <QScopedValueRollback>
#include <QStylePainter>

#include <algorithm>
#include <utility>

namespace blockhouse {

DropDownList::DropDownList(const QString& whatItLists, QWidget* parent) : QComboBox(parent) {
    setAccessibleName(whatItLists);
    // Measuring every entry would take seconds on a long list.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    auto* list = new QListView(this);
    list->setUniformItemSizes(true);
    setView(list);
    standInForFilter(*list);
    standInForFilter(*list->viewport());
    connect(this, &QComboBox::currentTextChanged, this, &DropDownList::showSelectedAsToolTip);
    connect(this, &QComboBox::currentIndexChanged, this, &DropDownList::onSelected);
    connect(this, &QComboBox::activated, this, &DropDownList::onActivated);
    showSelectedAsToolTip();
}

void DropDownList::fill(const std::function<void()>& changeEntries) {
    {
        const QScopedValueRollback<bool> unannounced(filling_, true);
        changeEntries();
        setCurrentIndex(-1);
    }
    // A model that is set anew drops the selection without a word.
    showSelectedAsToolTip();
}

void DropDownList::showSelectedAsToolTip() {
    setToolTip(currentIndex() < 0 ? accessibleName() : currentText());
}

// --- Announcing a choice ------------------------------------------------------------------------------------------
// The toolkit says "selected" whenever the selected entry changes, whoever changes it, and after it "activated"
// whenever the user has picked an entry. Of a user's pick only the second counts, of the program's only the first.

// The open list's container acts as the event filter of the list. Standing in for it, we know when it does.
void DropDownList::standInForFilter(QObject& part) {
    part.removeEventFilter(view()->parent());
    part.installEventFilter(this);
}

bool DropDownList::eventFilter(QObject* watched, QEvent* event) {
    bool handled = false;
    whileUserPicks(Pick::InOpenList, [&] { handled = view()->parent()->eventFilter(watched, event); });
    return handled;
}

void DropDownList::keyPressEvent(QKeyEvent* event) {
    whileUserPicks(Pick::Otherwise, [&] { QComboBox::keyPressEvent(event); });
}

void DropDownList::wheelEvent(QWheelEvent* event) {
    whileUserPicks(Pick::Otherwise, [&] { QComboBox::wheelEvent(event); });
}

void DropDownList::whileUserPicks(Pick how, const std::function<void()>& handle) {
    // What is handled may lead to further events, which must not end it: the list is hidden before the pick is made.
    const std::optional<Pick> before = std::exchange(userPick_, how);
    if (stillOpenAfter(*this, handle))
        userPick_ = before;
}

void DropDownList::onSelected(int index) {
    if (index >= 0 && !filling_ && !userPick_)
        Q_EMIT chosen(index, Pick::Otherwise);
}

void DropDownList::onActivated(int index) {
    // Whoever listens may serve events, or select an entry in turn.
    Q_EMIT chosen(index, std::exchange(userPick_, std::nullopt).value_or(Pick::Otherwise));
}

// --- Looks --------------------------------------------------------------------------------------------------------

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
    widenList();
    QComboBox::showPopup();
}

} // namespace blockhouse
