#include "platform/system/memory.h"

namespace blockhouse {

void reuseFreedMemory() {}

} // namespace blockhouse
