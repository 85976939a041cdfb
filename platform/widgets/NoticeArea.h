// Notices: lines over the foot of a window that tell what happened without stopping anybody. They take no keyboard and
// ask nothing. Each stays until it is dismissed, replaced by one of the same topic, or withdrawn.
#pragma once

#include <QFrame>
#include <QPointer>

#include <chrono>
#include <vector>

class QLabel;
class QTimer;
class QToolButton;
class QVBoxLayout;

namespace blockhouse {

class NoticeArea : public QFrame {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds untilDismissed{0};
    static constexpr std::chrono::seconds briefly{10};

    // Lies over the foot of `over`, above its horizontal scroll bar, inside the widget that holds `over`. Hidden while
    // there is nothing to tell. Escape that nothing inside `over` takes dismisses it.
    explicit NoticeArea(QWidget& over);

    // The notice of a topic replaces the one before it. Times are for what nobody needs to answer.
    void tell(const QString& topic, const QString& text, const QString& toolTip = {},
              std::chrono::milliseconds lasting = untilDismissed);
    // Does nothing when the topic is not told.
    void withdraw(const QString& topic);
    // Withdraws every notice. False when there was none.
    bool dismiss();

    // Empty when the topic is not told.
    [[nodiscard]] QString textOf(const QString& topic) const;

Q_SIGNALS:
    // The notices take this much of the foot, in pixels; 0 when there is none.
    void heightChanged(int height);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Notice {
        QString topic;
        QLabel* label;
        QTimer* timer;
    };

    [[nodiscard]] Notice& noticeOf(const QString& topic);
    void layOut();

    QWidget& over_;
    QVBoxLayout* lines_;
    QToolButton* close_;
    std::vector<Notice> notices_;
    int told_ = 0; // the height announced last
};

} // namespace blockhouse
