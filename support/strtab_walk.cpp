// What goes over all entries of a table: copies, counts, lists of keys, iteration.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "support/strtab.h"
#include "support/strtab_entry.h"

namespace {

using namespace zol::support;

// The first entry at or behind a place, as an iterator.
strtab_iter settled(const strtab_t* table, std::uint32_t bucket, std::uint32_t index) {
    for (; bucket <= table->mask; ++bucket, index = 0) {
        const array_t* const entries = bucket_at(*table, bucket);
        if (index < static_cast<std::uint32_t>(array_Count(entries))) {
            const StrtabEntry& entry = *entries_of(*entries)[index];
            return {table, static_cast<std::int32_t>(bucket), index, entry.key, entry.value};
        }
    }
    return {table, -1, 0, nullptr, nullptr};
}

}  // namespace

strtab_t* strtab_Clone(const strtab_t* table) {
    strtab_t* const copy = table == nullptr ? nullptr : strtab_New();
    if (copy == nullptr) {
        return nullptr;
    }
    strtab_SetCallbacks(copy, table->clone, table->destroy);
    bool whole = array_Touch(copy->buckets, static_cast<std::int32_t>(table->mask)) == 1;
    if (whole) {
        copy->mask = table->mask;
        for_each_entry(*table, [&](const StrtabEntry* entry) {
            array_t* const bucket = whole ? bucket_made(*copy, entry->hash & copy->mask) : nullptr;
            whole = bucket != nullptr && append_copy(*copy, *bucket, *entry);
        });
    }
    if (!whole) {
        strtab_Free(copy);
        return nullptr;
    }
    return copy;
}

std::int32_t strtab_Count(const strtab_t* table) {
    std::int32_t count = 0;
    for (std::uint32_t i = 0; table != nullptr && i <= table->mask; ++i) {
        count += array_Count(bucket_at(*table, i));
    }
    return count;
}

char** strtab_Keys(const strtab_t* table, int sorted, std::int32_t* count) {
    const auto keys = static_cast<std::size_t>(strtab_Count(table));
    if (count != nullptr) {
        *count = 0;
    }
    auto** const list = static_cast<char**>(std::calloc(keys + 1, sizeof(char*)));
    if (list == nullptr) {
        return nullptr;
    }
    std::size_t filled = 0;
    bool whole = true;
    if (table != nullptr) {
        for_each_entry(*table, [&](const StrtabEntry* entry) {
            list[filled] = whole ? ::strdup(entry->key) : nullptr;
            whole = list[filled++] != nullptr;
        });
    }
    if (!whole) {
        strtab_FreeKeys(list);
        return nullptr;
    }
    if (sorted != 0) {
        std::sort(list, list + keys, [](const char* left, const char* right) {
            // NOLINTNEXTLINE(clang-analyzer-core.NonNullParamChecker): the list is whole
            return std::strcmp(left, right) < 0;
        });
    }
    if (count != nullptr) {
        *count = static_cast<std::int32_t>(keys);
    }
    return list;
}

void strtab_FreeKeys(char** keys) {
    for (char** key = keys; key != nullptr && *key != nullptr; ++key) {
        std::free(*key);
    }
    std::free(keys);
}

strtab_iter strtab_Begin(const strtab_t* table) {
    return table == nullptr ? strtab_iter{nullptr, -1, 0, nullptr, nullptr} : settled(table, 0, 0);
}

bool strtab_Next(strtab_iter* place) {
    if (place->bucket >= 0) {
        *place = settled(place->table, static_cast<std::uint32_t>(place->bucket), place->index + 1);
    }
    return place->bucket >= 0;
}
