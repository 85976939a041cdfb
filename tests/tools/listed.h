// A list as one line of text.
#pragma once

#include "platform/text/EntryList.h"

#include <string>

namespace blockhouse {

inline std::string listed(const EntryList& entries) {
    std::string text;
    for (const std::string& entry : entries)
        text += entry + "|";
    return text;
}

} // namespace blockhouse
