// Large blocks of memory are asked for in large pages. The text of a large file and the text engine's tables are
// touched byte by byte as they are filled, and with small pages that costs the system more than the filling itself.
//
// For programs, by linking it: it takes the place of the language's own allocation functions. Not together with
// sanitizers, which have theirs.
#include <cstdint>
#include <cstdlib>
#include <new>
#include <sys/mman.h>

namespace {

constexpr std::size_t large = std::size_t{8} << 20;
constexpr std::uintptr_t page = 4096; // the smallest there is

// A hint: where the system has no large pages, or none left, nothing is different.
void hintLargePages(void* block, std::size_t size) {
    const std::uintptr_t begin = (reinterpret_cast<std::uintptr_t>(block) + page - 1) / page * page;
    const std::uintptr_t end = (reinterpret_cast<std::uintptr_t>(block) + size) / page * page;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): only the address was rounded
    static_cast<void>(::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE));
}

void* allocated(std::size_t size) noexcept {
    void* block = std::malloc(size > 0 ? size : 1);
    if (block != nullptr && size >= large)
        hintLargePages(block, size);
    return block;
}

} // namespace

void* operator new(std::size_t size) {
    for (;;) {
        if (void* block = allocated(size))
            return block;
        const std::new_handler handler = std::get_new_handler();
        if (handler == nullptr)
            throw std::bad_alloc();
        handler();
    }
}

void* operator new[](std::size_t size) {
    return ::operator new(size);
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

void operator delete[](void* block) noexcept {
    std::free(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    std::free(block);
}
