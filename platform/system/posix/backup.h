// Where the content goes that a save found in its place.
#pragma once

#include <string>

namespace blockhouse {

// Gives the file `from`, in the folder of `target`, the name "<stem> <date> <time>.bak" after the target's, in local
// time; numbered where that is taken. The file has lost its old name then. 0 or the error.
[[nodiscard]] int renameToBackup(const std::string& from, const std::string& target, std::string& backup);

// The same with a copy of the target itself, which stays as it is.
[[nodiscard]] int copyToBackup(const std::string& target, std::string& backup);

} // namespace blockhouse
