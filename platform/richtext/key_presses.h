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

} // namespace blockhouse
