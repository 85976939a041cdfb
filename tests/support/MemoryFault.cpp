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

// All that belong together, as a sanitizer would notice one that is missing.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    auto& fault = blockhouse::fault;
    if (size >= fault.size && fault.spared-- <= 0) {
        ++fault.failures;
        return nullptr;
    }
    return std::malloc(size > 0 ? size : 1);
}

void* operator new(std::size_t size) {
    if (void* memory = operator new(size, std::nothrow))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
