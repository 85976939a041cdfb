// The search once more, slow and obvious: every block read and searched alone, one position after the other.
#pragma once

#include "platform/text/codepage.h"

#include <string>

namespace blockhouse {

inline std::string hitsBlockByBlock(const std::string& name, const std::string& bytes, const std::string& what) {
    std::string hits;
    for (std::size_t offset = 0; offset < bytes.size(); offset += 1024) {
        const std::string block = codepage::lowered(bytes.substr(offset, 1024));
        for (std::size_t p = 0; (p = block.find(codepage::lowered(what), p)) != std::string::npos; ++p)
            hits += name + " :" + std::to_string(offset + p + 1) + "\n";
    }
    return hits;
}

} // namespace blockhouse
