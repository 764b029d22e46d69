#include "support/c_variant.h"

#include <bit>

#include "support/array.h"
#include "support/strtab.h"

namespace {

constexpr CVariant kEmpty{};

const array_t* vector_of(const CVariant* record) {
    return record != nullptr && record->kind == MV_VECTOR
               ? std::bit_cast<const array_t*>(record->payload)
               : nullptr;
}

const strtab_t* map_of(const CVariant* record) {
    return record != nullptr && record->kind == MV_MAP
               ? std::bit_cast<const strtab_t*>(record->payload)
               : nullptr;
}

}  // namespace

std::int32_t cvariant_Count(const CVariant* record) {
    return array_Count(vector_of(record));
}

const CVariant* cvariant_At(const CVariant* record, std::int32_t index) {
    // An index below 0 is no element either; the array would print a line for it.
    if (index < 0 || index >= cvariant_Count(record)) {
        return &kEmpty;
    }
    return static_cast<const CVariant*>(array_Nth(vector_of(record), index));
}

const CVariant* cvariant_Get(const CVariant* record, const char* key) {
    const void* const found = strtab_Get(map_of(record), key);
    return found != nullptr ? static_cast<const CVariant*>(found) : &kEmpty;
}

char** cvariant_Keys(const CVariant* record, std::int32_t* count) {
    if (count != nullptr) {
        *count = 0;
    }
    const strtab_t* const map = map_of(record);
    return map != nullptr ? strtab_Keys(map, 0, count) : nullptr;
}
