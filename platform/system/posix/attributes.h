// Who may do what with a file, and what else is known of it beside its bytes.
#pragma once

#include <string>
#include <sys/stat.h>

namespace blockhouse {

// The open file `file`, which nobody else may read yet, gets owner, group, permissions, access list and extended
// attributes of the file at `path`, whose status is `original`. False where access list or attributes cannot be kept.
[[nodiscard]] bool takeAttributes(int file, const std::string& path, const struct stat& original);

} // namespace blockhouse
