// The character-count window: how many characters the text in its box has, counted as the editor counts them.
#pragma once

#include "platform/richtext/RichTextBox.h"

#include <QLabel>
#include <QWidget>

namespace blockhouse {

class Form1 : public QWidget {
    Q_OBJECT

public:
    Form1();

    RichTextBox* RichTextBox1;
    QLabel* Label1;

Q_SIGNALS:
    // The window is going away.
    void closed();

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void layOut();
    void showLength();
};

} // namespace blockhouse
