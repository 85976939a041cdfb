// Message boxes and file dialogs. Message boxes have the application's title and no icon. While a dialog is open its
// window is not deleted, whatever closes it. Every dialog lies above the window that is kept on top of all others, if
// that is shown.
#pragma once

#include "platform/text/Result.h"

#include <QString>

#include <functional>
#include <optional>
#include <string>

class QWidget;

namespace blockhouse {

inline constexpr const char* applicationTitle = "Blockhouse";

// An OK button only; returns when it is closed. `window` may be null.
void tell(QWidget* window, const QString& text);

// The same for one of many messages in a row. False when the user wants no more of them: the box was left by Escape or
// its close button instead of OK, or the window was closed.
[[nodiscard]] bool tellOneOfMany(QWidget& window, const QString& text);

// Says which file, what was attempted ("could not be opened") and the cause.
void tellFileError(QWidget* window, const QString& attempt, const FileError& error);

// What the user answers, or nothing when there is nobody left to use the answer: the window was closed meanwhile.
template <typename Answer>
using Answered = std::optional<Answer>;

// Yes and No; closing the box counts as No.
[[nodiscard]] Answered<bool> askYesNo(QWidget& window, const QString& question);

// A path as the platform's bytes; nothing also when the dialog is cancelled. `proposed` is a path as text.
[[nodiscard]] Answered<std::string> askForFileToSave(QWidget& window, const QString& title, const QString& proposed);
[[nodiscard]] Answered<std::string> askForFileToOpen(QWidget& window, const QString& title, const QString& proposed);

} // namespace blockhouse
