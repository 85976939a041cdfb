// What a key press is for, by its modifiers.
#pragma once

#include <QKeyEvent>

namespace blockhouse {

// Held with Ctrl, Alt or Meta a key types nothing. Ctrl and Alt together are the right Alt key of some keyboards, which
// types text.
[[nodiscard]] inline bool isCommand(const QKeyEvent& event) {
    return event.modifiers().testFlag(Qt::ControlModifier) != event.modifiers().testFlag(Qt::AltModifier) ||
           event.modifiers().testFlag(Qt::MetaModifier);
}

// A modifier, a dead key or another key that only has a say in what the next one does.
[[nodiscard]] inline bool isPartOfAnotherPress(const QKeyEvent& event) {
    const int key = event.key();
    return event.text().isEmpty() &&
           ((key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock) || key == Qt::Key_Super_L || key == Qt::Key_Super_R ||
            (key >= Qt::Key_AltGr && key <= Qt::Key_Dead_Longsolidusoverlay) || key == Qt::Key_unknown);
}

} // namespace blockhouse
