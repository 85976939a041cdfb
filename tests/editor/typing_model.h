// A text box and the typing assistance in their plainest form: whole strings, one colour a character, every step by
// selecting, colouring and replacing. For texts whose lines end with CR LF. What the editor does is held against it.
#pragma once

#include "editor/typing_assistance.h"
#include "platform/text/codepage.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace blockhouse {

class ModelBox {
public:
    std::string text;
    std::vector<Colour> colours; // of each character
    std::ptrdiff_t selStart = 0;
    std::ptrdiff_t selLength = 0;

    explicit ModelBox(std::string content) : text(std::move(content)), colours(text.size(), 0) {}

    [[nodiscard]] std::ptrdiff_t length() const { return static_cast<std::ptrdiff_t>(text.size()); }

    void select(std::ptrdiff_t start, std::ptrdiff_t count) {
        start = std::clamp<std::ptrdiff_t>(start, 0, length());
        count = std::clamp<std::ptrdiff_t>(count, 0, length() - start);
        if (start != selStart || count != selLength) {
            typing_.reset();
        }
        selStart = start;
        selLength = count;
    }

    void setSelStart(std::ptrdiff_t start) { select(start, 0); }

    void setSelColor(Colour colour) {
        if (selLength == 0) {
            typing_ = colour;
        }
        std::fill_n(colours.begin() + selStart, selLength, colour);
    }

    [[nodiscard]] Colour selColor() const {
        if (selLength > 0) {
            return colours[static_cast<std::size_t>(selStart)];
        }
        return typing_.value_or(selStart > 0 ? colours[static_cast<std::size_t>(selStart - 1)] : 0);
    }

    void setSelText(const std::string& replacement) {
        const Colour colour = selColor();
        text.replace(static_cast<std::size_t>(selStart), static_cast<std::size_t>(selLength), replacement);
        typing_.reset();
        const auto at = colours.erase(colours.begin() + selStart, colours.begin() + selStart + selLength);
        colours.insert(at, replacement.size(), colour);
        setSelStart(selStart + static_cast<std::ptrdiff_t>(replacement.size()));
    }

    // What the box itself does for a key. CR LF is passed and deleted as one.
    void backspace() {
        if (selLength == 0) {
            const std::ptrdiff_t before = stepBefore();
            select(selStart - before, before);
        }
        setSelText("");
    }

    void left() {
        if (selLength > 0 || selStart > 0) {
            setSelStart(selLength > 0 ? selStart : selStart - stepBefore());
        }
    }

    void right() {
        if (selLength > 0 || selStart < length()) {
            const std::ptrdiff_t after = text.compare(static_cast<std::size_t>(selStart), 2, "\r\n") == 0 ? 2 : 1;
            setSelStart(selStart + (selLength > 0 ? selLength : after));
        }
    }

private:
    [[nodiscard]] std::ptrdiff_t stepBefore() const {
        const bool lineBreak = selStart > 1 && text.compare(static_cast<std::size_t>(selStart - 2), 2, "\r\n") == 0;
        return std::min<std::ptrdiff_t>(selStart, lineBreak ? 2 : 1);
    }

    std::optional<Colour> typing_; // set since the caret last moved
};

class TypingModel {
public:
    bool Commentmode = false;
    std::ptrdiff_t Commentstart = 0;

    // True if the key is cancelled.
    bool keyDown(Key key, ModelBox& box) {
        box.setSelColor(0);
        if (key == Key::Tab) {
            box.setSelText("\t");
            return true;
        }
        if (key == Key::Semicolon) {
            Commentmode = true;
            Commentstart = box.selStart;
        }
        const bool commentEnded = key == Key::Enter && Commentmode;
        if (commentEnded) {
            Commentmode = false;
        }
        if (key == Key::Arrow && Commentmode) {
            colourToLineEnd(box, Commentstart, 0x8000);
            box.setSelColor(0);
            Commentmode = false;
        }
        if (key == Key::Backspace && box.selStart > 0 && box.text[static_cast<std::size_t>(box.selStart - 1)] == ';') {
            colourToLineEnd(box, box.selStart, 0);
        }
        if (box.selStart > 0 && (key == Key::Enter || (key == Key::Space && !Commentmode))) {
            processWord(commentEnded, box);
        }
        return false;
    }

private:
    static void colourToLineEnd(ModelBox& box, std::ptrdiff_t start, Colour colour) {
        const std::ptrdiff_t caret = box.selStart;
        box.setSelStart(start);
        const std::size_t lineEnd = box.text.find('\r', static_cast<std::size_t>(box.selStart));
        const std::size_t end = lineEnd == std::string::npos ? box.text.size() : lineEnd + 1;
        box.select(box.selStart, static_cast<std::ptrdiff_t>(end) - box.selStart);
        box.setSelColor(colour);
        box.setSelStart(caret);
    }

    static std::string wordBefore(const std::string& before, bool commentEnded) {
        const std::size_t comment = before.rfind(';');
        if (commentEnded && comment != std::string::npos) {
            return before.substr(comment);
        }
        const std::size_t last = before.find_last_of(" \t\r");
        if (last == std::string::npos) {
            return before;
        }
        return before.substr(std::min(last + (before[last] == '\r' ? 2 : 1), before.size()));
    }

    void processWord(bool commentEnded, ModelBox& box) {
        static const std::map<std::string, std::string> spellings = {
            {"end", "End"},
            {"conditionstate", "ConditionState"},
            {"armorset", "ArmorSet"},
            {"weaponset", "WeaponSet"},
            {"body", "Body"},
            {"behavior", "Behavior"},
            {"attackareadecal", "AttackAreaDecal"},
            {"targetingreticledecal", "TargetIngreticleDecal"},
            {"object", "Object"},
            {"defaultconditionstate", "DefaultConditionState"},
            {"unitspecificsounds", "UnitSpecificSounds"},
            {"turret", "Turret"},
        };
        const std::string before = box.text.substr(0, static_cast<std::size_t>(box.selStart));
        const std::string word = wordBefore(before, commentEnded);
        const std::string lowered = codepage::lowered(word);
        const auto length = static_cast<std::ptrdiff_t>(word.size());
        if (word.starts_with(";")) {
            box.select(box.selStart - length, length);
            box.setSelColor(0x8000);
            box.setSelText(word);
            Commentmode = false;
        } else if (spellings.contains(lowered)) {
            box.select(static_cast<std::ptrdiff_t>(codepage::lowered(before).rfind(lowered)), length);
            box.setSelColor(0xFF0000);
            box.setSelText(spellings.at(lowered));
        }
    }
};

} // namespace blockhouse
