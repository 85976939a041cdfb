// What listFiles() and listFolders() ask of the operating system. The one file that implements this and the reading and writing half
// of files.h holds all calls that differ between systems.
#pragma once

#include "platform/Result.h"

#include <string>
#include <vector>

namespace blockhouse {

// Names of the directory's normal files or of its directories (links to such count), hidden ones left out, in no
// particular order.
Result<std::vector<std::string>> normalFilesIn(const std::string& directory);
Result<std::vector<std::string>> foldersIn(const std::string& directory);

} // namespace blockhouse
