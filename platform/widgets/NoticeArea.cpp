#include "platform/widgets/NoticeArea.h"

#include "platform/widgets/controls.h"

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace blockhouse {

NoticeArea::NoticeArea(QWidget& over) : QFrame(over.parentWidget()), over_(over), lines_(new QVBoxLayout) {
    setObjectName(QStringLiteral("notices"));
    setAccessibleName(tr("Notices"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
    close_ = named(new QToolButton(this), "closeNotices", tr("Close the notices"));
    close_->setText(QStringLiteral("\u00d7"));
    close_->setAutoRaise(true);
    close_->setFocusPolicy(Qt::NoFocus);
    close_->setToolTip(tr("Close (Escape)"));
    connect(close_, &QToolButton::clicked, this, &NoticeArea::dismiss);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 3, 3, 3);
    row->addLayout(lines_, 1);
    row->addWidget(close_, 0, Qt::AlignTop);
    over_.installEventFilter(this);
    if (const auto* scrolled = qobject_cast<QAbstractScrollArea*>(&over_))
        scrolled->horizontalScrollBar()->installEventFilter(this);
    hide();
}

void NoticeArea::tell(const QString& topic, const QString& text, const QString& toolTip,
                      std::chrono::milliseconds lasting) {
    const Notice& notice = noticeOf(topic);
    notice.label->setText(text);
    notice.label->setToolTip(toolTip);
    notice.timer->stop();
    if (lasting != untilDismissed)
        notice.timer->start(lasting);
    layOut();
    QAccessibleEvent alert(notice.label, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

NoticeArea::Notice& NoticeArea::noticeOf(const QString& topic) {
    const auto known =
        std::find_if(notices_.begin(), notices_.end(), [&](const Notice& notice) { return notice.topic == topic; });
    if (known != notices_.end())
        return *known;
    auto* label = new QLabel(this);
    label->setObjectName(topic);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setForegroundRole(QPalette::ToolTipText);
    lines_->addWidget(label);
    label->show(); // the layout leaves out what is hidden, and shows it only later
    auto* timer = new QTimer(label);
    timer->setSingleShot(true);
    connect(timer, &QTimer::timeout, this, [this, topic] { withdraw(topic); });
    return notices_.emplace_back(Notice{topic, label, timer});
}

void NoticeArea::withdraw(const QString& topic) {
    const auto gone =
        std::find_if(notices_.begin(), notices_.end(), [&](const Notice& notice) { return notice.topic == topic; });
    if (gone == notices_.end())
        return;
    lines_->removeWidget(gone->label);
    gone->label->hide();
    gone->label->deleteLater(); // its timer may be the one that calls
    notices_.erase(gone);
    layOut();
}

bool NoticeArea::dismiss() {
    const bool any = !notices_.empty();
    while (!notices_.empty())
        withdraw(notices_.back().topic);
    return any;
}

QString NoticeArea::textOf(const QString& topic) const {
    for (const Notice& notice : notices_)
        if (notice.topic == topic)
            return notice.label->text();
    return {};
}

void NoticeArea::layOut() {
    int height = 0;
    if (!notices_.empty()) {
        QRect room = over_.geometry();
        const auto* scrolled = qobject_cast<QAbstractScrollArea*>(&over_);
        if (scrolled && scrolled->horizontalScrollBar()->isVisibleTo(&over_))
            room.setBottom(room.bottom() - scrolled->horizontalScrollBar()->height());
        layout()->activate(); // its heights are kept until then
        height = std::min(layout()->totalHeightForWidth(room.width()), room.height());
        setGeometry(room.left(), room.bottom() + 1 - height, room.width(), height);
        raise();
    }
    setVisible(height > 0);
    if (std::exchange(told_, height) != height)
        Q_EMIT heightChanged(height);
}

bool NoticeArea::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Resize:
    case QEvent::Move:
    case QEvent::Show:
    case QEvent::Hide:
        if (!notices_.empty())
            layOut();
        break;
    case QEvent::KeyPress:
        if (watched == &over_ && static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Escape)
            return dismiss();
        break;
    default:
        break;
    }
    return QFrame::eventFilter(watched, event);
}

void NoticeArea::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        layOut();
}

} // namespace blockhouse
