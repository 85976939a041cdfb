#pragma once

#include "platform/text/EntryList.h"

#include <functional>

namespace blockhouse {

// Sees to it that the list's file holds the list, which was `before` until it was edited. Tells the user of a failure.
using SaveEntries = std::function<void(const EntryList& entries, const EntryList& before)>;

} // namespace blockhouse
