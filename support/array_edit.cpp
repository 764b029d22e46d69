// Insertion, deletion and copies of values.
#include "support/array_storage.h"
#include "support/err_print.h"

namespace {

using namespace zol::support;

void* filled(const array_t* array, void* place, const void* source) {
    if (place != nullptr && source != nullptr) {
        if (array->copyElement != nullptr) {
            array->copyElement(place, source);
        } else {
            std::memcpy(place, source, array->elementSize);
        }
    }
    return place;
}

// Whether there is such an element to delete; tells when there is not.
bool deletable(const array_t* array, std::int32_t index) {
    if (array == nullptr) {
        err_Print("Attempt to delete element from NULL array.");
        return false;
    }
    if (index < 0 || index >= array->count) {
        err_Print("Attempt to delete invalid element.");
        return false;
    }
    return true;
}

enum class Order { kKept, kFree };

void remove_element(array_t* array, std::int32_t index, Order order) {
    if (!deletable(array, index)) {
        return;
    }
    const std::int32_t last = stored(*array) - 1;
    --array->count;
    if (index > last) {
        return;
    }
    array_ClearElement* const own = array->destroyList;
    if (own != nullptr && own[index] != nullptr) {
        own[index](slot(*array, index));
        own[index] = nullptr;
    }
    if (index != last) {
        const std::int32_t scratch = array->capacity - 1;
        move_slots(*array, scratch, index, 1);
        const bool kept = order == Order::kKept;
        move_slots(*array, index, kept ? index + 1 : last, kept ? last - index : 1);
        move_slots(*array, last, scratch, 1);
        zero_slots(*array, scratch, 1);
        if (own != nullptr) {
            // One down in either order, though the elements of the free one don't follow.
            std::copy(own + index + 1, own + last + 1, own + index);
            own[last] = nullptr;
        }
    }
    // The entry at `index` is by now that of the element which moved there, and it
    // decides; an element that was the last has none left, and is cleared both ways.
    if (array->clearElement != nullptr && (own == nullptr || own[index] == nullptr)) {
        array->clearElement(slot(*array, last));
    }
    zero_slots(*array, last, 1);
}

}  // namespace

void* array_AddCopy(array_t* array, const void* source) {
    return filled(array, array_Add(array), source);
}

void* array_InsertAt(array_t* array, std::int32_t index) {
    if (array == nullptr) {
        err_Print("Attempt to insert element into NULL array.");
        return nullptr;
    }
    if (index < 0 || index > array->count) {
        err_Print("Attempt to insert element outside of array.");
        return nullptr;
    }
    const std::int32_t before = array->count;
    if (index == before) {
        return array_Add(array);
    }
    if (array_Add(array) == nullptr) {
        array->count = before;
        return nullptr;
    }
    move_slots(*array, index + 1, index, before - index);
    zero_slots(*array, index, 1);
    if (array->destroyList != nullptr) {
        array_ClearElement* const own = array->destroyList;
        std::copy_backward(own + index, own + before, own + before + 1);
        own[index] = nullptr;
    }
    return slot(*array, index);
}

void* array_InsertCopy(array_t* array, std::int32_t index, const void* source) {
    return filled(array, array_InsertAt(array, index), source);
}

void array_Delete(array_t* array, std::int32_t index) {
    remove_element(array, index, Order::kKept);
}

void array_DeleteFast(array_t* array, std::int32_t index) {
    remove_element(array, index, Order::kFree);
}

void array_DeleteRange(array_t* array, std::int32_t index, std::int32_t count) {
    if (count == 0 || !deletable(array, index)) {
        return;
    }
    const bool to_end = count < 0 || count > array->count - index;
    const std::int32_t removed = to_end ? array->count - index : count;
    const std::int32_t end = stored(*array);
    const std::int32_t behind = std::min(index + removed, end);
    for (std::int32_t i = index; i < behind; ++i) {
        clear_element(*array, i);
    }
    array->count -= removed;
    if (index >= end) {
        return;
    }
    move_slots(*array, index, behind, end - behind);
    const std::int32_t kept = index + (end - behind);
    zero_slots(*array, kept, end - kept);
    if (array->destroyList != nullptr) {
        array_ClearElement* const own = array->destroyList;
        std::fill(std::copy(own + behind, own + end, own + index), own + end, nullptr);
    }
}
