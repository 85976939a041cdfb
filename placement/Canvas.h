// The square that a side's structures lie on. It paints a board and says what the mouse does on it, in canvas units.
#pragma once

#include "placement/mark_board.h"

#include <QFont>
#include <QWidget>

namespace blockhouse {

class Canvas : public QWidget {
    Q_OBJECT

public:
    // The board must outlive the canvas; update() shows its changes.
    Canvas(const MarkBoard& board, QWidget* parent);

Q_SIGNALS:
    // Between a press and a release the pointer may be anywhere, also outside the canvas.
    void pressed(blockhouse::CanvasPoint pointer);
    void moved(blockhouse::CanvasPoint pointer, blockhouse::MouseButtons held);
    void released(blockhouse::CanvasPoint pointer);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void paintMark(QPainter& painter, const Mark& mark) const;
    void paintLabel(QPainter& painter, const MarkLabel& label) const;

    const MarkBoard& board_;
    const QFont labelFont_;
};

} // namespace blockhouse
