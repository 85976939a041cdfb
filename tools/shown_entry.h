// How an entry of the jump list is shown.
#pragma once

#include <string>
#include <string_view>

namespace blockhouse {

// An entry that ends in CR LF is found only where it ends its line.
inline constexpr std::string_view lineEnd = "\r\n";

// As UTF-8. An entry that must end its line has a mark behind its name that says so.
[[nodiscard]] std::string shownEntry(std::string_view entry);

} // namespace blockhouse
