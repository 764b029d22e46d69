// A growing array of elements of one size, kept as plain bytes, with callbacks for what
// an element holds. Misuse is told through err_Print, and memory that can't be had by a
// result of 0 or null; nothing throws.
//
// An array belongs to one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>

/// Releases what the element at this address holds.
using array_ClearElement = void (*)(void* element);
/// Copies the value at `source` into the zeroed slot at `slot`.
using array_CopyElement = void (*)(void* slot, const void* source);

/// The record of an array. Every byte of the storage that is not in use is zero, and once
/// anything is stored `capacity` is above `count`: the last slot is the scratch space of a
/// deletion.
struct array_t {
    std::int32_t count;               // elements in use
    std::int32_t capacity;            // elements allocated
    std::uint32_t elementSize;        // bytes of an element
    std::int32_t grain;               // by how many elements the next step grows
    void* data;                       // null until the first growth
    array_ClearElement clearElement;  // may be null
    array_CopyElement copyElement;    // null: the bytes are copied
    // One callback an element, each of which overrides clearElement where it isn't null.
    // From the C allocator, as long as the capacity; no operation here installs it.
    array_ClearElement* destroyList;
};
static_assert(sizeof(array_t) == 48 && offsetof(array_t, elementSize) == 8 &&
              offsetof(array_t, grain) == 12 && offsetof(array_t, data) == 16 &&
              offsetof(array_t, clearElement) == 24 && offsetof(array_t, copyElement) == 32 &&
              offsetof(array_t, destroyList) == 40);

/// An empty array, or null when memory is short. Owned by the caller; end with array_Free.
array_t* array_New(std::uint32_t element_size);
/// Either may be null.
void array_SetCallbacks(array_t* array, array_ClearElement clear, array_CopyElement copy);
/// Clears every element and releases the array. Always 0; null is allowed.
int array_Free(array_t* array);

/// The count; 0 for null.
std::int32_t array_Count(const array_t* array);
/// The address of an element, valid until the array changes; null, with a message, when
/// there is no such element.
void* array_Nth(const array_t* array, std::int32_t index);
/// The same for the last element.
void* array_Last(const array_t* array);

/// Makes room for `size` elements and leaves the count alone; a negative size clears every
/// element and frees the storage. 1, or 0 when memory is short: the elements stay.
int array_Resize(array_t* array, std::int32_t size);
/// Makes sure that the element exists; new ones are zero. 1 or 0.
int array_Touch(array_t* array, std::int32_t index);
/// Grows with zeroed elements, or deletes from the end. 1, also when memory is short and
/// the count therefore stays.
int array_SetCount(array_t* array, std::int32_t count);

/// The address of a new zeroed last element. Null when memory is short, and then the count
/// stays raised all the same; an element that has no storage can't be reached.
void* array_Add(array_t* array);
/// The same, with the value at `source` copied in, which must not lie in the array: growing
/// moves what is there.
void* array_AddCopy(array_t* array, const void* source);
/// The address of a new zeroed element at `index`, from 0 to the count; null, with a
/// message, for any other index.
void* array_InsertAt(array_t* array, std::int32_t index);
void* array_InsertCopy(array_t* array, std::int32_t index, const void* source);

/// Clears and removes an element; the order stays.
void array_Delete(array_t* array, std::int32_t index);
/// The same in constant time: the last element moves into the hole.
void array_DeleteFast(array_t* array, std::int32_t index);
/// Clears and removes `count` elements from `index` on; a negative count, or one past the
/// end, means all up to the end.
void array_DeleteRange(array_t* array, std::int32_t index, std::int32_t count);
