// What stands behind JsonDocument and JsonValue; only their sources include it.
#pragma once

#include <rapidjson/document.h>

#include <cstddef>
#include <cstdlib>
#include <new>

namespace zol::engine::json_tree {

// RapidJSON's own allocator answers null when memory runs out, and its parser
// then writes through it.
struct ThrowingAllocator {
    void* Malloc(std::size_t size) {
        if (size == 0) return nullptr;
        return Checked(std::malloc(size));
    }
    void* Realloc(void* old, std::size_t, std::size_t size) {
        if (size == 0) {
            std::free(old);
            return nullptr;
        }
        return Checked(std::realloc(old, size));
    }
    static void Free(void* memory) noexcept { std::free(memory); }

private:
    static void* Checked(void* memory) {
        if (memory == nullptr) throw std::bad_alloc();
        return memory;
    }
};

using Pool = rapidjson::MemoryPoolAllocator<ThrowingAllocator>;
using Document = rapidjson::GenericDocument<rapidjson::UTF8<>, Pool, ThrowingAllocator>;
using Value = Document::ValueType;

}  // namespace zol::engine::json_tree
