// Stops the process before anything in it, the toolkit included, writes, renames, makes or removes a file outside one
// folder. Reading is free.
#pragma once

#include <string>

namespace blockhouse {

// From here on. `folder` is absolute and exists.
void guardFilesOutside(const std::string& folder);

} // namespace blockhouse
