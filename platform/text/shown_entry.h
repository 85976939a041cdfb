// How an entry of the jump list is shown, wherever it is.
#pragma once

#include <string>
#include <string_view>

namespace blockhouse {

// What an entry ends in that is found only where it ends its line.
inline constexpr std::string_view endOfItsLine = "\r\n";

// As UTF-8. An entry that must end its line has a mark behind its name that says so.
[[nodiscard]] std::string shownEntry(std::string_view entry);

} // namespace blockhouse
