// The two containers of values as they cross the boundary to other libraries: each has
// one virtual operation, its destructor, and begins with the pointer to its storage.
#pragma once

#include <cstdint>
#include <new>

#include "support/array.h"
#include "support/variant.h"

/// A vector of values that stand in place in an array_t.
template <typename T>
class VVector {
public:
    /// Throws std::bad_alloc.
    VVector() : array_(array_New(sizeof(T))) {
        if (array_ == nullptr) {
            throw std::bad_alloc();
        }
        array_SetCallbacks(array_, ClearElement, CopyElement);
    }
    virtual ~VVector() { array_Free(array_); }
    VVector(const VVector&) = delete;
    VVector& operator=(const VVector&) = delete;

    array_t& Array() { return *array_; }
    const array_t& Array() const { return *array_; }
    std::int32_t Count() const { return array_Count(array_); }
    T* begin() { return static_cast<T*>(array_->data); }
    T* end() { return begin() + Count(); }
    const T* begin() const { return static_cast<const T*>(array_->data); }
    const T* end() const { return begin() + Count(); }

private:
    static void ClearElement(void* element) { *static_cast<T*>(element) = T(); }
    static void CopyElement(void* slot, const void* source) {
        *static_cast<T*>(slot) = *static_cast<const T*>(source);
    }

    array_t* array_;
};

/// The vector that copies of a value share. Whoever lowers the count to 0 deletes it.
class VARIANTVECTOR : public VVector<MVariant> {
public:
    std::int32_t references = 0;
};

// Elements are moved by copying their bytes, and a slot of zeros is an empty value.
static_assert(sizeof(MVariant) == 16 && alignof(MVariant) == 8);
static_assert(sizeof(VVector<MVariant>) == 16 && sizeof(VARIANTVECTOR) == 24);
