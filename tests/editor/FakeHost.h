// Stands in for the program around an editor window and remembers what it was asked.
#pragma once

#include "editor/EditorHost.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace blockhouse {

class FakeHost : public EditorHost {
public:
    void drawProgress(PictureBox&, double, double) override {}

    void windowOpened(WindowHandle, const QString&) override {}

    void windowClosed(WindowHandle) override {}

    void unsavedTextChanged(WindowHandle, bool unsaved) override { marked = unsaved; }

    void unsavedTextClosed(ClosedText text) override { closedTexts.push_back(std::move(text)); }

    const EntryList& jumps() const override { return jumpList; }

    bool explorerVisible() const override { return explorer; }

    void setExplorerVisible(bool visible) override { explorer = visible; }

    void countCharacters(std::string_view text) override { counted = text; }

    void findReferences(std::string_view, CaretPosition) override {
        if (duringSearch)
            duringSearch();
    }

    EntryList jumpList;
    bool explorer = true;
    bool marked = false; // with a dot
    std::vector<ClosedText> closedTexts;
    std::string counted;
    std::function<void()> duringSearch;
};

} // namespace blockhouse
