// Replaces operator new and delete. In a file of its own, so that the compiler can't
// look into them where they are called, and leave a pair of calls out.
#include "tests/api/allocations.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t count = 0;

}  // namespace

std::size_t zol::testing::allocations() {
    return count;
}

void* operator new(std::size_t size) {
    ++count;
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
