// The plain record of a value, as the preferences are handed out.
#pragma once

#include <cstddef>
#include <cstdint>

#include "support/variant.h"

/// The payload is that of an MVariant, but for the three kinds that own something: an
/// MV_STRING has a null-terminated text, an MV_VECTOR an array_t of CVariant, an MV_MAP
/// a strtab_t of CVariant. Any of them may be null, which is empty. All zero is an empty
/// record.
struct CVariant {
    std::uint64_t payload;
    std::uint32_t kind;  // an MVariantKind
};
static_assert(offsetof(CVariant, payload) == 0 && offsetof(CVariant, kind) == 8);

// The accessors take a record of any kind, and null. What they give belongs to the record.

/// Elements of a vector, else 0.
std::int32_t cvariant_Count(const CVariant* record);
/// An element of a vector; an empty record, always the same, when there is none.
const CVariant* cvariant_At(const CVariant* record, std::int32_t index);
/// The entry of a map; the same empty record when there is none.
const CVariant* cvariant_Get(const CVariant* record, const char* key);
/// The keys of a map in the order of its table, and their number in `count`, which may be
/// null. Owned by the caller, who frees them one by one and then the list, each with
/// `free`. Null and 0 for anything but a map.
char** cvariant_Keys(const CVariant* record, std::int32_t* count);
