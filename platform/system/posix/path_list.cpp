#include "platform/system/path_list.h"

#include <string_view>

namespace blockhouse {

// Paths have no encoding here: they are the bytes that the file holds. A list that comes from another system may have a
// byte order mark, with which no absolute path begins.
std::string pathListFrom(std::string fileBytes) {
    constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
    return fileBytes.starts_with(utf8Mark) ? fileBytes.substr(utf8Mark.size()) : fileBytes;
}

std::string fileBytesOf(std::string pathList) {
    return pathList;
}

} // namespace blockhouse
