// Lets memory run out: link memory_faults, and the whole process, its libraries included, allocates through it.
#pragma once

#include <cstddef>

namespace blockhouse {

// While it lives, an allocation of `size` bytes or more throws std::bad_alloc; the first `spared` ones do not.
class MemoryFault {
public:
    explicit MemoryFault(std::size_t size, int spared = 0);
    ~MemoryFault();
    MemoryFault(const MemoryFault&) = delete;
    MemoryFault& operator=(const MemoryFault&) = delete;

    [[nodiscard]] static int failures();
};

} // namespace blockhouse
