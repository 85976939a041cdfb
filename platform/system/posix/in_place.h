// Writing over the bytes of a file.
#pragma once

#include <string>
#include <string_view>

namespace blockhouse {

// The last resort, when nothing may take the file's place. Room is set aside first, so that a full disk is found before
// the old bytes are touched. 0 or the error.
[[nodiscard]] int writeInPlace(const std::string& path, std::string_view bytes);

} // namespace blockhouse
