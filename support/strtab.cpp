// Life, look-up and change of a table. Every operation that finds no memory leaves the
// entries that were there.
#include "support/strtab.h"

#include <cstdlib>
#include <cstring>
#include <limits>

#include "support/strtab_entry.h"

namespace zol::support {

namespace {

// Of a bucket, and of an entry in one.
constexpr std::uint32_t kPointerBytes = sizeof(void*);

}  // namespace

array_t* bucket_made(strtab_t& table, std::uint32_t bucket) {
    array_t*& place = static_cast<array_t**>(table.buckets->data)[bucket];
    if (place == nullptr) {
        place = array_New(kPointerBytes);
    }
    return place;
}

bool append_copy(const strtab_t& table, array_t& bucket, const StrtabEntry& source) {
    auto* const entry = static_cast<StrtabEntry*>(std::malloc(sizeof(StrtabEntry)));
    char* const key = ::strdup(source.key);
    void* const value = source.value == nullptr ? nullptr : table.clone(source.value);
    const bool copied =
        entry != nullptr && key != nullptr && (value != nullptr || source.value == nullptr);
    // The room is made ahead, since an addition that fails would leave its mark.
    if (!copied || array_Resize(&bucket, bucket.count + 1) == 0) {
        if (value != nullptr) {
            table.destroy(value);
        }
        std::free(key);
        std::free(entry);
        return false;
    }
    *entry = {key, value, source.keyLength, source.hash};
    array_AddCopy(&bucket, &entry);
    return true;
}

void free_entry(const strtab_t& table, StrtabEntry* entry) {
    if (entry->value != nullptr) {
        table.destroy(entry->value);
    }
    std::free(entry->key);
    std::free(entry);
}

}  // namespace zol::support

namespace {

using namespace zol::support;

constexpr std::uint32_t kFirstMask = 7;

void* clone_text(const void* value) {
    return ::strdup(static_cast<const char*>(value));
}

// A signed byte on every platform, so that the order of iteration is the same.
std::uint32_t signed_byte(char byte) {
    return static_cast<std::uint32_t>(std::int32_t{static_cast<signed char>(byte)});
}

// Each byte is added to 33 times what the bytes before it gave. Four at a time, so that
// only one product in four waits for the one before.
std::uint32_t hash_of(const char* key, std::size_t length) {
    std::uint32_t hash = 0;
    std::size_t at = 0;
    for (; at + 4 <= length; at += 4) {
        hash = hash * (33U * 33 * 33 * 33) + signed_byte(key[at]) * (33U * 33 * 33) +
               signed_byte(key[at + 1]) * (33U * 33) + signed_byte(key[at + 2]) * 33U +
               signed_byte(key[at + 3]);
    }
    for (; at < length; ++at) {
        hash = hash * 33 + signed_byte(key[at]);
    }
    return hash;
}

// A key with its hash and length; the value is not looked at in a search.
StrtabEntry keyed(const char* key, const void* value = nullptr) {
    const std::size_t length = std::strlen(key);
    return {const_cast<char*>(key), const_cast<void*>(value), static_cast<std::uint32_t>(length),
            hash_of(key, length)};
}

constexpr std::int32_t kNotFound = -1;

std::int32_t index_in(const array_t* bucket, const StrtabEntry& wanted) {
    const std::int32_t count = array_Count(bucket);
    for (std::int32_t i = 0; i < count; ++i) {
        const StrtabEntry& entry = *entries_of(*bucket)[i];
        if (entry.hash == wanted.hash && entry.keyLength == wanted.keyLength &&
            std::memcmp(entry.key, wanted.key, wanted.keyLength) == 0) {
            return i;
        }
    }
    return kNotFound;
}

// Splits the upper half off every bucket. All memory is had before any entry moves.
bool double_buckets(strtab_t& table) {
    const std::int32_t before = table.buckets->count;
    if (before > std::numeric_limits<std::int32_t>::max() / 2) {
        return false;
    }
    array_SetCount(table.buckets, before * 2);
    if (table.buckets->count != before * 2) {
        return false;
    }
    const std::uint32_t old_count = table.mask + 1;
    const std::uint32_t mask = old_count * 2 - 1;
    const auto moves = [&](const StrtabEntry* entry) { return (entry->hash & old_count) != 0; };
    bool ready = true;
    for (std::uint32_t i = 0; ready && i < old_count; ++i) {
        const array_t* const bucket = bucket_at(table, i);
        std::int32_t moving = 0;
        for (std::int32_t j = 0; j < array_Count(bucket); ++j) {
            moving += moves(entries_of(*bucket)[j]) ? 1 : 0;
        }
        if (moving > 0) {
            array_t* const upper = bucket_made(table, i + old_count);
            ready = upper != nullptr && array_Resize(upper, moving) == 1;
        }
    }
    if (!ready) {
        for (std::uint32_t i = old_count; i <= mask; ++i) {
            array_Free(bucket_at(table, i));
        }
        array_SetCount(table.buckets, before);
        return false;
    }
    table.mask = mask;
    for (std::uint32_t i = 0; i < old_count; ++i) {
        array_t* const bucket = bucket_at(table, i);
        std::int32_t kept = 0;
        for (std::int32_t j = 0; j < array_Count(bucket); ++j) {
            StrtabEntry** const entries = entries_of(*bucket);
            if (moves(entries[j])) {
                array_AddCopy(bucket_at(table, i + old_count), &entries[j]);
            } else {
                entries[kept++] = entries[j];
            }
        }
        array_SetCount(bucket, kept);
    }
    return true;
}

// `wanted` is in no bucket yet.
StrtabEntry* add(strtab_t& table, const StrtabEntry& wanted) {
    const auto place = [&] { return wanted.hash & table.mask; };
    if (static_cast<std::uint32_t>(array_Count(bucket_at(table, place()))) > table.mask &&
        !double_buckets(table)) {
        return nullptr;
    }
    array_t* const bucket = bucket_made(table, place());
    return bucket != nullptr && append_copy(table, *bucket, wanted)
               ? entries_of(*bucket)[bucket->count - 1]
               : nullptr;
}

}  // namespace

namespace zol::support {

const array_t* bucket_of(const strtab_t& table, const char* key) {
    return bucket_at(table, keyed(key).hash & table.mask);
}

StrtabEntry* add_entry(strtab_t& table, const char* key, const void* value) {
    return add(table, keyed(key, value));
}

}  // namespace zol::support

strtab_t* strtab_New() {
    auto* const table = static_cast<strtab_t*>(std::calloc(1, sizeof(strtab_t)));
    if (table == nullptr) {
        return nullptr;
    }
    table->mask = kFirstMask;
    strtab_SetCallbacks(table, nullptr, nullptr);
    table->buckets = array_New(kPointerBytes);
    if (table->buckets == nullptr || array_Touch(table->buckets, kFirstMask) == 0) {
        array_Free(table->buckets);
        std::free(table);
        return nullptr;
    }
    return table;
}

void strtab_SetCallbacks(strtab_t* table, strtab_CloneValue clone, strtab_DestroyValue destroy) {
    if (table != nullptr) {
        table->clone = clone != nullptr ? clone : clone_text;
        table->destroy = destroy != nullptr ? destroy : std::free;
    }
}

int strtab_Free(strtab_t* table) {
    if (table == nullptr) {
        return 0;
    }
    for_each_entry(*table, [&](StrtabEntry* entry) { free_entry(*table, entry); });
    for (std::uint32_t i = 0; i <= table->mask; ++i) {
        array_Free(bucket_at(*table, i));
    }
    array_Free(table->buckets);
    std::free(table);
    return 0;
}

void* strtab_Get(const strtab_t* table, const char* key) {
    return strtab_Find(table, key).value;
}

strtab_iter strtab_Find(const strtab_t* table, const char* key) {
    const strtab_iter nowhere{table, -1, 0, nullptr, nullptr};
    if (table == nullptr || key == nullptr) {
        return nowhere;
    }
    const StrtabEntry wanted = keyed(key);
    const std::uint32_t bucket = wanted.hash & table->mask;
    const std::int32_t index = index_in(bucket_at(*table, bucket), wanted);
    if (index == kNotFound) {
        return nowhere;
    }
    const StrtabEntry& entry = *entries_of(*bucket_at(*table, bucket))[index];
    return {table, static_cast<std::int32_t>(bucket), static_cast<std::uint32_t>(index), entry.key,
            entry.value};
}

int strtab_Set(strtab_t* table, const char* key, const void* value) {
    if (table == nullptr || key == nullptr) {
        return 0;
    }
    const StrtabEntry wanted = keyed(key, value);
    array_t* const bucket = bucket_at(*table, wanted.hash & table->mask);
    const std::int32_t index = index_in(bucket, wanted);
    if (index != kNotFound) {
        // The copy comes first: `value` may be the very value that goes.
        void* const copy = value == nullptr ? nullptr : table->clone(value);
        if (copy == nullptr && value != nullptr) {
            return 0;
        }
        StrtabEntry& entry = *entries_of(*bucket)[index];
        if (entry.value != nullptr) {
            table->destroy(entry.value);
        }
        entry.value = copy;
        return 1;
    }
    return add(*table, wanted) != nullptr ? 1 : 0;
}

void strtab_Remove(strtab_t* table, const char* key) {
    const strtab_iter found = strtab_Find(table, key);
    if (found.bucket < 0) {
        return;
    }
    array_t* const bucket = bucket_at(*table, static_cast<std::uint32_t>(found.bucket));
    const auto index = static_cast<std::int32_t>(found.index);
    free_entry(*table, entries_of(*bucket)[index]);
    array_Delete(bucket, index);
}
