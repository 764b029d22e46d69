// What the operations on an array share: where its elements lie, and how one is cleared.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "support/array.h"

namespace zol::support {

/// Elements that have storage. Fewer than the count only after an array_Add that found no
/// memory; the last slot of the storage is never an element.
inline std::int32_t stored(const array_t& array) {
    return array.data == nullptr ? 0 : std::min(array.count, array.capacity - 1);
}

inline std::byte* slot(const array_t& array, std::int32_t index) {
    return static_cast<std::byte*>(array.data) +
           static_cast<std::size_t>(index) * array.elementSize;
}

inline std::size_t bytes(const array_t& array, std::int32_t elements) {
    return static_cast<std::size_t>(elements) * array.elementSize;
}

inline void zero_slots(const array_t& array, std::int32_t first, std::int32_t elements) {
    std::memset(slot(array, first), 0, bytes(array, elements));
}

/// Moves elements within the storage; the places may overlap.
inline void move_slots(const array_t& array, std::int32_t to, std::int32_t from,
                       std::int32_t elements) {
    std::memmove(slot(array, to), slot(array, from), bytes(array, elements));
}

inline void clear_element(const array_t& array, std::int32_t index) {
    const bool own = array.destroyList != nullptr && array.destroyList[index] != nullptr;
    const array_ClearElement clear = own ? array.destroyList[index] : array.clearElement;
    if (clear != nullptr) {
        clear(slot(array, index));
    }
}

}  // namespace zol::support
