// What a save leaves behind if its process is killed.
#pragma once

#include <string>

namespace blockhouse {

// Removes the ".blockhouse-<process>-<n>.tmp" files from the folder whose process has ended and that are older than a
// day: the process may run on another machine that shares the folder. Once for each folder. `folder` ends in a
// separator, or is empty for the current one.
void removeStaleFiles(const std::string& folder);

} // namespace blockhouse
