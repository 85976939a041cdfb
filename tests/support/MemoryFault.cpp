#include "tests/support/MemoryFault.h"

#include <cstdint>
#include <cstdlib>
#include <new>

namespace blockhouse {
namespace {

struct {
    std::size_t size = SIZE_MAX;
    int spared = 0;
    int failures = 0;
} fault;

} // namespace

MemoryFault::MemoryFault(std::size_t size, int spared) {
    fault = {size, spared, 0};
}

MemoryFault::~MemoryFault() {
    fault = {};
}

int MemoryFault::failures() {
    return fault.failures;
}

} // namespace blockhouse

void* operator new(std::size_t size) {
    auto& fault = blockhouse::fault;
    if (size >= fault.size && fault.spared-- <= 0) {
        ++fault.failures;
        throw std::bad_alloc();
    }
    if (void* memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
