// Carries out on the text box what the typing rules answer to a key.
#include "editor/BoxText.h"
#include "editor/FindPanel.h"
#include "editor/fr_edit.h"
#include "platform/richtext/key_presses.h"

namespace blockhouse {
namespace {

// By the character typed, so that any keyboard layout works and ":" begins no comment.
Key typedKeyOf(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return Key::Tab;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return Key::Enter;
    case Qt::Key_Space:
        return Key::Space;
    default:
        break;
    }
    // An input method brings a blank without its key.
    const QString text = event.text();
    if (text == QLatin1String(" "))
        return Key::Space;
    return text == QLatin1String(";") ? Key::Semicolon : Key::Other;
}

Key keyOf(const QKeyEvent& event) {
    // Arrows and Backspace act on the text with Ctrl too; with Alt or Meta they do nothing.
    const bool actsOnText = !(event.modifiers() & (Qt::AltModifier | Qt::MetaModifier));
    switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
        return actsOnText ? Key::Arrow : Key::Other;
    case Qt::Key_Backspace:
        return actsOnText ? Key::Backspace : Key::Other;
    default:
        return isCommand(event) ? Key::Other : typedKeyOf(event);
    }
}

template <typename... Handlers>
struct Overloaded : Handlers... {
    using Handlers::operator()...;
};

} // namespace

bool fr_edit::assistTyping(const QKeyEvent& event) {
    if (txt_edit->isReadOnly())
        return false;
    const TextRange selection{txt_edit->selStart().value, txt_edit->selLength()};
    const KeyAnswer answer = typing_.keyPressed(keyOf(event), selection, BoxText(*txt_edit));
    for (const TextBoxAction& action : answer.actions)
        carryOut(action);
    if (event.key() == Qt::Key_Escape && FindFrame->isVisible())
        FindFrame->dismiss();
    return answer.cancelKey;
}

void fr_edit::carryOut(const TextBoxAction& action) {
    const Overloaded carry{
        [this](const SetSelColor& set) { txt_edit->setSelColor(set.colour); },
        [this](const SetTextColor& set) {
            txt_edit->setTextColor({&set.range, 1}, set.colour);
        },
        [this](const SetSelStart& set) { txt_edit->setSelStart(set.caret); },
        [this](const SetText& set) {
            txt_edit->setSelStart(set.range.start);
            txt_edit->setSelLength(set.range.length);
            txt_edit->setSelText(set.text);
            // Afterwards, so that undoing brings the old text back in its old colour.
            const TextRange written{set.range.start, static_cast<std::ptrdiff_t>(set.text.size())};
            txt_edit->setTextColor({&written, 1}, set.colour);
            txt_edit->setSelColor(set.colour);
        },
    };
    std::visit(carry, action);
}

} // namespace blockhouse
