// A hash table from texts to owned values: chains in arrays, which grow the table only
// when a single chain holds more entries than there are chains. See
// docs/support/string_table.md for what that costs.
//
// A table belongs to one thread at a time.
#pragma once

#include <cstdint>

#include "support/array.h"

/// Makes the table's own copy of a value; null when it can't.
using strtab_CloneValue = void* (*)(const void* value);
/// Releases such a copy.
using strtab_DestroyValue = void (*)(void* value);

struct strtab_t {
    array_t* buckets;             // of array_t*, each null or an array of entry pointers
    std::uint32_t mask;           // the number of buckets, a power of two, less 1
    strtab_CloneValue clone;      // strdup by default
    strtab_DestroyValue destroy;  // free by default
};

/// A place in a table. Valid until the table changes.
struct strtab_iter {
    const strtab_t* table;
    std::int32_t bucket;  // -1 past the end
    std::uint32_t index;  // in the bucket
    const char* key;      // null past the end
    void* value;          // null past the end
};

/// An empty table, or null when memory is short. Owned by the caller; end with strtab_Free.
strtab_t* strtab_New();
/// To be set before the first entry. Null stands for the default, which is for values
/// that are texts: strdup and free.
void strtab_SetCallbacks(strtab_t* table, strtab_CloneValue clone, strtab_DestroyValue destroy);
/// Destroys every value and releases the table. Always 0; null is allowed.
int strtab_Free(strtab_t* table);
/// A table with copies of all entries, in the same order. Owned by the caller. Null for
/// null and when memory is short.
strtab_t* strtab_Clone(const strtab_t* table);

std::int32_t strtab_Count(const strtab_t* table);
/// The table's value under exactly this key, which stays the table's; null without one.
void* strtab_Get(const strtab_t* table, const char* key);
/// Stores a copy of the value under a copy of the key and destroys the value that was
/// there before. 1, or 0 when memory is short.
int strtab_Set(strtab_t* table, const char* key, const void* value);
/// Destroys the entry, if there is one.
void strtab_Remove(strtab_t* table, const char* key);

/// Copies of all keys, ended by a null pointer, in the order of iteration or, with
/// `sorted`, of their bytes. `count` receives their number unless it is null. Owned by the
/// caller; end with strtab_FreeKeys. Null when memory is short.
char** strtab_Keys(const strtab_t* table, int sorted, std::int32_t* count);
void strtab_FreeKeys(char** keys);

/// The first entry: bucket by bucket, and in a bucket in the order of insertion.
strtab_iter strtab_Begin(const strtab_t* table);
/// The entry of this key, or past the end.
strtab_iter strtab_Find(const strtab_t* table, const char* key);
/// Steps on; false when that leads past the end.
bool strtab_Next(strtab_iter* place);
