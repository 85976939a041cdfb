// Message boxes: the application's title, no icon.
#pragma once

#include "platform/text/Result.h"

#include <QString>

class QWidget;

namespace blockhouse {

inline constexpr const char* applicationTitle = "Blockhouse";

// An OK button only; returns when it is closed. `parent` may go away meanwhile.
void tell(QWidget* parent, const QString& text);

// The same for one of many messages in a row. False when it was left by Escape or its close button instead of OK: the
// user wants no more of them.
[[nodiscard]] bool tellOneOfMany(QWidget* parent, const QString& text);

// Says which file, what was attempted ("could not be opened") and the cause.
void tellFileError(QWidget* parent, const QString& attempt, const FileError& error);

// Yes and No; closing the box counts as No.
[[nodiscard]] bool askYesNo(QWidget* parent, const QString& question);

// A path or file name as text to show: bytes that are no text in the platform's encoding become a replacement mark.
[[nodiscard]] QString displayed(const std::string& path);

} // namespace blockhouse
