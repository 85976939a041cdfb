// One line for a path that may be longer than the label: what does not fit is left out in the middle when it is drawn.
#pragma once

#include <QLabel>
#include <QPainter>

namespace blockhouse {

class PathLabel : public QLabel {
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent*) override {
        QString line = text();
        line.replace(QLatin1Char('\n'), QLatin1Char(' ')); // a folder's name may hold one
        QPainter painter(this);
        painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                         fontMetrics().elidedText(line, Qt::ElideMiddle, width()));
    }
};

} // namespace blockhouse
