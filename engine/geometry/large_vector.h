// A vector for arrays of many megabytes.
//
// Its memory is asked for in large pages, where the system gives them: an array that is
// filled once and then looked into at random places spends a good part of its time on
// faults and on finding pages otherwise.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>
#include <vector>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace zol::engine::geometry {

template <class T>
class LargePages {
public:
    using value_type = T;

    LargePages() = default;
    template <class U>
    explicit LargePages(const LargePages<U>&) {}

    T* allocate(std::size_t number) {
        if (number > kMost / sizeof(T)) throw std::bad_array_new_length();
        const std::size_t bytes = number * sizeof(T);
        if (bytes < kLarge) return std::allocator<T>().allocate(number);
        void* const memory = std::aligned_alloc(kPage, (bytes + kPage - 1) / kPage * kPage);
        if (memory == nullptr) throw std::bad_alloc();
#if defined(__linux__)
        // A wish: without it the memory is as good, only slower.
        static_cast<void>(madvise(memory, bytes, MADV_HUGEPAGE));
#endif
        return static_cast<T*>(memory);
    }
    void deallocate(T* memory, std::size_t number) {
        if (number * sizeof(T) < kLarge) {
            std::allocator<T>().deallocate(memory, number);
        } else {
            std::free(memory);
        }
    }

    friend bool operator==(const LargePages&, const LargePages&) {
        return true;
    }

private:
    static constexpr std::size_t kPage = std::size_t{2} << 20U;
    static constexpr std::size_t kLarge = kPage;
    static constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max() / 2;
};

template <class T>
using LargeVector = std::vector<T, LargePages<T>>;

}  // namespace zol::engine::geometry
