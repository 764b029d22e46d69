// A map from null-terminated texts to values. One virtual operation, the destructor, and
// one field: this is how maps cross the boundary to other libraries.
#pragma once

#include <cstdint>
#include <new>
#include <utility>

#include "support/strtab.h"
#include "support/strtab_entry.h"

/// Owns its values. Keys are told apart by case; the order of iteration is the table's.
template <typename T>
class VStringMap {
public:
    /// Throws std::bad_alloc.
    VStringMap() : table_(Checked(strtab_New())) {
        strtab_SetCallbacks(table_, CloneValue, DestroyValue);
    }
    /// Copies every entry. Throws std::bad_alloc.
    VStringMap(const VStringMap& other) : table_(Checked(strtab_Clone(other.table_))) {}
    VStringMap& operator=(const VStringMap&) = delete;
    virtual ~VStringMap() { strtab_Free(table_); }

    const strtab_t& Table() const { return *table_; }
    std::int32_t Count() const { return strtab_Count(table_); }
    T* Get(const char* key) { return static_cast<T*>(strtab_Get(table_, key)); }
    const T* Get(const char* key) const { return static_cast<const T*>(strtab_Get(table_, key)); }
    /// The value under this key, a fresh one where there was none; stays where it is until
    /// it is removed. Throws std::bad_alloc.
    T& Entry(const char* key) {
        if (T* const found = Get(key)) {
            return *found;
        }
        return *Add(key).second;
    }
    /// A fresh value under a key that is not there yet, and the map's own copy of the key.
    /// Throws std::bad_alloc.
    std::pair<const char*, T*> Add(const char* key) {
        const T fresh{};
        const zol::support::StrtabEntry* const entry =
            zol::support::add_entry(*table_, key, &fresh);
        if (entry == nullptr) {
            throw std::bad_alloc();
        }
        return {entry->key, static_cast<T*>(entry->value)};
    }
    void Remove(const char* key) { strtab_Remove(table_, key); }

    /// Calls `work` with each key and value, in the order of the table.
    template <typename Work>
    void ForEach(Work work) const {
        for (std::uint32_t i = 0; i <= table_->mask; ++i) {
            const array_t* const bucket = zol::support::bucket_at(*table_, i);
            for (std::int32_t j = 0; bucket != nullptr && j < bucket->count; ++j) {
                const zol::support::StrtabEntry& entry = *zol::support::entries_of(*bucket)[j];
                work(static_cast<const char*>(entry.key), *static_cast<T*>(entry.value));
            }
        }
    }

private:
    static strtab_t* Checked(strtab_t* table) {
        if (table == nullptr) {
            throw std::bad_alloc();
        }
        return table;
    }
    // Through the table no exception may pass.
    static void* CloneValue(const void* value) {
        try {
            return new T(*static_cast<const T*>(value));
        } catch (const std::bad_alloc&) {
            return nullptr;
        }
    }
    static void DestroyValue(void* value) { delete static_cast<T*>(value); }

    strtab_t* table_;
};
