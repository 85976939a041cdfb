#include "platform/system/process.h"

#include <cstdlib>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace blockhouse {

void configureProcess() {
#ifdef __GLIBC__
    // The text engine's table of lines grows in many steps. Left to itself, the allocator maps every step freshly and
    // unmaps the one before it, so that each page of each step costs a page fault.
    constexpr int megabyte = 1 << 20;
    mallopt(M_MMAP_THRESHOLD, 4 * megabyte);
    mallopt(M_TRIM_THRESHOLD, 2 * megabyte);
#endif
}

} // namespace blockhouse
