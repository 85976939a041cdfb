#include "platform/system/path_list.h"

namespace blockhouse {

// Paths have no encoding here: they are the bytes that the file holds.
std::string pathListFrom(std::string fileBytes) {
    return fileBytes;
}

std::string fileBytesOf(std::string pathList) {
    return pathList;
}

} // namespace blockhouse
