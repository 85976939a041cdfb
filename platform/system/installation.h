// Whether the program was installed for its users, or merely lies somewhere.
#pragma once

#include <string>

namespace blockhouse {

// True if the program in that folder belongs to an installation, whether or not whoever runs it could write there.
[[nodiscard]] bool isInstalled(const std::string& programFolder);

} // namespace blockhouse
