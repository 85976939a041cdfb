// The fonts that windows ask for by design, and the room that texts take in a control's font: what has a design size
// grows where the desktop's font is too large for it.
#pragma once

#include <QEvent>
#include <QFont>
#include <QWidget>

namespace blockhouse {

[[nodiscard]] inline QFont arial(double points, QFont::Weight weight = QFont::Normal) {
    QFont font(QStringLiteral("Arial"));
    font.setPointSizeF(points);
    font.setWeight(weight);
    return font;
}

// The control's own font in the small letters that the places of such controls are made for; what the control holds
// has them too.
inline void useSmallLetters(QWidget& control) {
    QFont small = control.font();
    small.setPixelSize(11);
    control.setFont(small);
}

// After it, texts take another room.
[[nodiscard]] inline bool changesRoomOfTexts(const QEvent& event) {
    return event.type() == QEvent::FontChange || event.type() == QEvent::StyleChange;
}

// The height of a line.
[[nodiscard]] inline int textHeight(const QWidget& control) {
    return control.fontMetrics().height();
}

// How far one line reaches from where it begins. A "&" is no letter of it.
[[nodiscard]] inline int textWidth(const QWidget& control, const QString& text) {
    return control.fontMetrics().tightBoundingRect(QString(text).remove(QLatin1Char('&'))).right() + 1;
}

} // namespace blockhouse
