#pragma once

#include "platform/text/EntryList.h"

#include <functional>

namespace blockhouse {

// Writes a list to its file. What becomes of it is its own business.
using SaveEntries = std::function<void(const EntryList&)>;

} // namespace blockhouse
