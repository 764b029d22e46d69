// Life, growth and access. All arithmetic on sizes is done in 64 bits and stored in 32,
// so that no request, however large, overflows on its way to a refusal.
#include "support/array.h"

#include <cstdlib>
#include <limits>

#include "support/array_storage.h"
#include "support/err_print.h"

namespace {

using namespace zol::support;

constexpr std::int32_t kFirstGrain = 10;
// A growth step of more bytes than this is cut back.
constexpr std::int32_t kStepBytes = 200'000'000;
constexpr std::int32_t kMostElements = std::numeric_limits<std::int32_t>::max();

void release(array_t& array) {
    for (std::int32_t i = 0; i < stored(array); ++i) {
        clear_element(array, i);
    }
    std::free(array.data);
    std::free(array.destroyList);
    array.data = nullptr;
    array.destroyList = nullptr;
    array.count = 0;
    array.capacity = 0;
}

std::int32_t wrapped(std::int64_t number) {
    return static_cast<std::int32_t>(number);
}

// The capacity for `size` elements that the present one has no room for; moves the grain.
std::int64_t next_capacity(array_t& array, std::int32_t size) {
    const std::int64_t wanted = std::int64_t{size} + 1;
    if (size > std::int64_t{array.capacity} - 1 + array.grain) {
        array.grain = std::max(array.grain, size / 2);
        return wanted;
    }
    const std::int64_t capacity = wanted + array.grain;
    array.grain = wrapped(std::int64_t{array.grain} * 2);
    // The step in bytes is judged by its low 32 bits: a product beyond them can look small.
    const auto step =
        static_cast<std::int32_t>(static_cast<std::uint32_t>(array.grain) * array.elementSize);
    if (step > kStepBytes) {
        array.grain = static_cast<std::int32_t>(kStepBytes / array.elementSize);
    }
    return capacity;
}

// Room for `capacity` items of `size` bytes at least; null when there is no memory.
void* grown(void* data, std::int64_t capacity, std::size_t size) {
    if (capacity > kMostElements) {
        return nullptr;
    }
    const auto items = static_cast<std::size_t>(capacity);
    // Memory that comes fresh from the system is zero without being touched.
    return data == nullptr ? std::calloc(items, std::max<std::size_t>(size, 1))
                           : std::realloc(data, std::max<std::size_t>(items * size, 1));
}

int refuse(std::int64_t capacity, std::size_t size) {
    err_Print("Array resize failed for %d x %d.", wrapped(capacity),
              static_cast<std::int32_t>(size));
    return 0;
}

int grow(array_t& array, std::int32_t size) {
    const std::int64_t capacity = next_capacity(array, size);
    const bool fresh = array.data == nullptr;
    void* const data = grown(array.data, capacity, array.elementSize);
    if (data == nullptr) {
        return refuse(capacity, array.elementSize);
    }
    array.data = data;
    const auto now = static_cast<std::int32_t>(capacity);
    if (!fresh) {
        zero_slots(array, array.capacity, now - array.capacity);
    }
    if (array.destroyList != nullptr) {
        void* const list = grown(array.destroyList, capacity, sizeof(array_ClearElement));
        if (list == nullptr) {
            // The capacity stays at what both have room for.
            return refuse(capacity, sizeof(array_ClearElement));
        }
        array.destroyList = static_cast<array_ClearElement*>(list);
        std::fill(array.destroyList + std::min(array.count, array.capacity),
                  array.destroyList + now, nullptr);
    }
    array.capacity = now;
    return 1;
}

}  // namespace

array_t* array_New(std::uint32_t element_size) {
    auto* const array = static_cast<array_t*>(std::calloc(1, sizeof(array_t)));
    if (array == nullptr) {
        err_Print("Error mallocing new array type.");
        return nullptr;
    }
    array->elementSize = element_size;
    array->grain = kFirstGrain;
    return array;
}

void array_SetCallbacks(array_t* array, array_ClearElement clear, array_CopyElement copy) {
    if (array != nullptr) {
        array->clearElement = clear;
        array->copyElement = copy;
    }
}

int array_Free(array_t* array) {
    if (array != nullptr) {
        release(*array);
        std::free(array);
    }
    return 0;
}

std::int32_t array_Count(const array_t* array) {
    return array == nullptr ? 0 : array->count;
}

void* array_Nth(const array_t* array, std::int32_t index) {
    if (array == nullptr) {
        err_Print("Requesting N on NULL array.");
        return nullptr;
    }
    if (index < 0 || index >= array->count) {
        err_Print("Array index out of bounds : %d.", index);
        return nullptr;
    }
    if (index >= stored(*array)) {
        err_Print("Array storage failure indexing %d-th element.\n", index);
        return nullptr;
    }
    return slot(*array, index);
}

void* array_Last(const array_t* array) {
    if (array == nullptr) {
        err_Print("Attempt to access NULL array.");
        return nullptr;
    }
    return array_Nth(array, array->count - 1);
}

int array_Resize(array_t* array, std::int32_t size) {
    if (array == nullptr) {
        return 0;
    }
    if (size < 0) {
        release(*array);
        return 1;
    }
    return size <= array->capacity - 1 ? 1 : grow(*array, size);
}

int array_Touch(array_t* array, std::int32_t index) {
    if (array == nullptr) {
        return 0;
    }
    if (index == kMostElements) {
        return refuse(std::int64_t{index} + 2, array->elementSize);
    }
    if (array_Resize(array, index + 1) == 0) {
        return 0;
    }
    array->count = std::max(array->count, index + 1);
    return 1;
}

int array_SetCount(array_t* array, std::int32_t count) {
    if (array == nullptr) {
        return 0;
    }
    if (array->count < count) {
        array_Touch(array, count - 1);
    }
    while (array->count > std::max(count, 0)) {
        array_DeleteFast(array, array->count - 1);
    }
    return 1;
}

void* array_Add(array_t* array) {
    if (array == nullptr) {
        return nullptr;
    }
    if (array->count == kMostElements) {
        refuse(std::int64_t{kMostElements} + 2, array->elementSize);
        return nullptr;
    }
    ++array->count;
    return array_Resize(array, array->count) == 0 ? nullptr : slot(*array, array->count - 1);
}
