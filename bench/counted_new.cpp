// Replaces operator new and delete. In a file of its own, so that the compiler can't look
// into them where they are called.
#include "bench/counted_new.h"

#include <cstdlib>
#include <new>

namespace {

std::int64_t count = 0;

}  // namespace

std::int64_t allocations() {
    return count;
}

void* operator new(std::size_t size) {
    ++count;
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
