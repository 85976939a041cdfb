// Answers the message boxes that come up while it lives, and keeps what they said.
#pragma once

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>
#include <QTimer>

#include <functional>

namespace blockhouse {

class MessageBoxReader {
public:
    MessageBoxReader() {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
                read(*box);
        });
        timer_.start(0);
    }

    // "title|text" of each.
    [[nodiscard]] const QStringList& messages() const { return messages_; }

    // Instead of pressing the box's first button.
    std::function<void()> onBox;

private:
    void read(const QMessageBox& box) {
        messages_.append(box.windowTitle() + QLatin1Char('|') + box.text());
        if (onBox)
            onBox();
        else
            qobject_cast<QPushButton*>(box.buttons().first())->click();
    }

    QTimer timer_;
    QStringList messages_;
};

} // namespace blockhouse
