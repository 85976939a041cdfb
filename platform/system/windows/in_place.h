// Writing over the bytes of a file.
#pragma once

#include "platform/system/windows/windows_file.h"

#include <string>
#include <string_view>

namespace blockhouse {

// The last resort, when nothing may take the file's place. Room is set aside first, so that a full disk is found before
// the old bytes are touched. A link that leads nowhere yet leads to the new file then.
[[nodiscard]] DWORD writeInPlace(const std::string& path, std::string_view bytes);

} // namespace blockhouse
