// What an editor window needs from the program around it.
#pragma once

#include "editor/ClosedText.h"
#include "platform/text/EntryList.h"
#include "platform/text/units.h"
#include "platform/widgets/window_handles.h"

#include <QString>

#include <string_view>

namespace blockhouse {

class PictureBox;

class EditorHost {
public:
    virtual ~EditorHost() = default;

    // Repaints the box with the share value / maximum of a bar. Serves events.
    virtual void drawProgress(PictureBox& box, double value, double maximum) = 0;

    // The window bar gets the window's button, pressed; every other editor window is minimised.
    virtual void windowOpened(WindowHandle window, const QString& caption) = 0;
    // The names of the settings that the user jumps to.
    [[nodiscard]] virtual const EntryList& jumps() const = 0;

    [[nodiscard]] virtual bool explorerVisible() const = 0;
    virtual void setExplorerVisible(bool visible) = 0;

    // Shows the character-count window with this text in it.
    virtual void countCharacters(std::string_view text) = 0;

    // Shows the reference search and starts it for the word that the caret stands in.
    virtual void findReferences(std::string_view text, CaretPosition caret) = 0;

    // The window's text and its file have become different, or the same.
    virtual void unsavedTextChanged(WindowHandle window, bool unsaved) = 0;
    // A window is going away with this text, which its file does not hold.
    virtual void unsavedTextClosed(ClosedText text) = 0;

    // The window is going away: its button goes too.
    virtual void windowClosed(WindowHandle window) = 0;
};

} // namespace blockhouse
