// Between the toolkit's text and bytes: those of documents, and those of paths.
#pragma once

#include "platform/text/codepage.h"

#include <QString>

#include <string>
#include <string_view>

namespace blockhouse {

// Bytes in the documents' code page as text, and back.
[[nodiscard]] QString documentText(std::string_view bytes);
[[nodiscard]] codepage::Encoded documentBytes(const QString& text);

// A path or file name as text to show: bytes that are no text in the platform's encoding become a replacement mark.
[[nodiscard]] QString displayed(const std::string& path);
// The path that a user typed or chose in a dialog, as the platform's bytes.
[[nodiscard]] std::string pathOf(const QString& text);

} // namespace blockhouse
