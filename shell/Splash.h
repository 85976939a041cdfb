#pragma once

#include <QTimer>
#include <QWidget>

namespace blockhouse {

// The program's first window: a picture, no frame, in the middle of the screen. Two seconds after it is shown, or at
// a click or a key (Enter, Space, Escape), it asks for the main window, once, and closes.
class Splash : public QWidget {
    Q_OBJECT

public:
    Splash();

Q_SIGNALS:
    // Also when the window is closed in any other way. The splash window closes when this returns. It may be deleted
    // meanwhile.
    void mainWindowWanted();

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void waitThenLeave();
    void leave();

    QTimer timer_;
    bool left_ = false;
};

} // namespace blockhouse
