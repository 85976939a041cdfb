// What an editor window needs from the program around it.
#pragma once

#include "platform/window_handles.h"

#include <QString>

namespace blockhouse {

class PictureBox;

class EditorHost {
public:
    virtual ~EditorHost() = default;

    // Repaints the box with the share value / maximum of a bar. Serves events.
    virtual void drawProgress(PictureBox& box, double value, double maximum) = 0;

    // The window bar gets the window's button, pressed; every other editor window is minimised.
    virtual void windowOpened(WindowHandle window, const QString& caption) = 0;
    // The window is going away: its button goes too.
    virtual void windowClosed(WindowHandle window) = 0;
};

} // namespace blockhouse
