// The entries of a directory as the operating system gives them; files.h orders and filters them.
#pragma once

#include "platform/text/Result.h"

#include <string>
#include <vector>

namespace blockhouse {

// Names of the directory's normal files without hidden ones, or of its directories (links to directories count) without
// the system's own, in no particular order.
Result<std::vector<std::string>> fileEntriesOf(const std::string& directory);
Result<std::vector<std::string>> folderEntriesOf(const std::string& directory);

} // namespace blockhouse
