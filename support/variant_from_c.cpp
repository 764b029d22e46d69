// Conversion from the plain record, with a list of what is still to be done in place of
// recursion.
#include <bit>
#include <memory>
#include <new>
#include <vector>

#include "support/c_variant.h"
#include "support/strtab.h"
#include "support/value_vector.h"
#include "support/variant.h"

namespace {

struct Conversion {
    const CVariant* from;
    MVariant* to;
};

using Conversions = std::vector<Conversion>;

void convert_vector(const CVariant& from, MVariant& to, Conversions& waiting) {
    to = MVariant(MV_VECTOR);
    const std::int32_t count = cvariant_Count(&from);
    if (count == 0) {
        return;
    }
    // All elements are made at once: none of them moves any more.
    MVariant* element = &to[count - 1] - (count - 1);
    for (std::int32_t i = 0; i < count; ++i) {
        waiting.push_back({cvariant_At(&from, i), element + i});
    }
}

void convert_map(const CVariant& from, MVariant& to, Conversions& waiting) {
    to = MVariant(MV_MAP);
    std::int32_t count = 0;
    const std::unique_ptr<char*, decltype(&strtab_FreeKeys)> keys(cvariant_Keys(&from, &count),
                                                                  strtab_FreeKeys);
    if (keys == nullptr && from.payload != 0) {
        throw std::bad_alloc();
    }
    for (std::int32_t i = 0; i < count; ++i) {
        const char* const key = keys.get()[i];
        waiting.push_back({cvariant_Get(&from, key), &to[key]});
    }
}

void convert(const CVariant& from, MVariant& to, Conversions& waiting) {
    switch (from.kind) {
        case MV_STRING:
            to = std::bit_cast<const char*>(from.payload);
            break;
        case MV_VECTOR:
            convert_vector(from, to, waiting);
            break;
        case MV_MAP:
            convert_map(from, to, waiting);
            break;
        default:
            to = MVariant::OfWord(static_cast<MVariantKind>(from.kind), from.payload);
    }
}

}  // namespace

MVariant::MVariant(const CVariant* source) : MVariant() {
    if (source == nullptr) {
        return;
    }
    Conversions waiting{{source, this}};
    while (!waiting.empty()) {
        const Conversion next = waiting.back();
        waiting.pop_back();
        convert(*next.from, *next.to, waiting);
    }
}
