// Folders as the operating system names and makes them. Paths are the platform's bytes.
#pragma once

#include <string>

namespace blockhouse {

// From the drive on, no separator at its end unless it is a drive. Empty stays empty, and is what comes back where
// the system cannot tell.
[[nodiscard]] std::string absoluteFolder(const std::string& path);

// With all folders above it. A failure shows when something is written there.
void makeFolder(const std::string& path);

[[nodiscard]] bool takesNewFiles(const std::string& folder);

} // namespace blockhouse
