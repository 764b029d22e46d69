// What the files of the string table share: the entries and the way to them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "support/strtab.h"

namespace zol::support {

/// An entry and its key are of the C allocator, the value of the table's clone callback.
struct StrtabEntry {
    char* key;
    void* value;
    std::uint32_t keyLength;
    std::uint32_t hash;
};

inline array_t* bucket_at(const strtab_t& table, std::uint32_t bucket) {
    return static_cast<array_t**>(table.buckets->data)[bucket];
}

/// The bucket that a key is in, or would be; null while nothing is.
const array_t* bucket_of(const strtab_t& table, const char* key);

/// A new entry with copies of the key, which must not be in the table, and of the value.
/// Null when memory is short.
StrtabEntry* add_entry(strtab_t& table, const char* key, const void* value);

/// The bucket, made when it is not there yet; null when memory is short.
array_t* bucket_made(strtab_t& table, std::uint32_t bucket);

inline StrtabEntry** entries_of(const array_t& bucket) {
    return static_cast<StrtabEntry**>(bucket.data);
}

/// A new last entry with copies of the key and, by the table's callback, of the value;
/// false when memory is short.
bool append_copy(const strtab_t& table, array_t& bucket, const StrtabEntry& source);

/// Destroys the value, unless it is null, and frees the entry.
void free_entry(const strtab_t& table, StrtabEntry* entry);

/// Calls `work` with each entry, in the order of iteration.
template <typename Work>
void for_each_entry(const strtab_t& table, Work work) {
    for (std::uint32_t i = 0; i <= table.mask; ++i) {
        const array_t* const bucket = bucket_at(table, i);
        for (std::int32_t j = 0; j < array_Count(bucket); ++j) {
            work(entries_of(*bucket)[j]);
        }
    }
}

}  // namespace zol::support
