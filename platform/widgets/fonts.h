// The fonts that windows ask for by design.
#pragma once

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

} // namespace blockhouse
