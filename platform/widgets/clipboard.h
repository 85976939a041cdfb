// The clipboard's plain text. Another program may hold it, and need not answer.
#pragma once

#include <QString>

#include <functional>
#include <optional>

class QLineEdit;

namespace blockhouse {

// Empty when the clipboard holds no text; nothing when whoever holds it did not answer. Waits for an answer as long as
// the window system does, once.
[[nodiscard]] std::optional<QString> clipboardText();

// False when the clipboard does not have the text afterwards.
[[nodiscard]] bool putOnClipboard(const QString& text);

// What to tell the user then.
[[nodiscard]] QString clipboardIsSilent();

// From here on the line takes pastes by key through clipboardText(); `failed` is called when there is no answer.
void pasteWithin(QLineEdit& line, std::function<void()> failed);

} // namespace blockhouse
