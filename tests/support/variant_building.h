// Values in few words, and what they are in a message of a test.
#pragma once

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <ostream>
#include <utility>

#include "support/variant.h"

namespace zol::testing_support {

inline MVariant vector_of(std::initializer_list<MVariant> elements) {
    MVariant vector(MV_VECTOR);
    for (const MVariant& element : elements) {
        vector[vector.Size()] = element;
    }
    return vector;
}

inline MVariant map_of(std::initializer_list<std::pair<const char*, MVariant>> entries) {
    MVariant map(MV_MAP);
    for (const auto& [key, value] : entries) {
        map[key] = value;
    }
    return map;
}

/// A text, vector or map that says so and has none, as another library may leave it.
inline MVariant null_of(MVariantKind kind) {
    MVariant value;
    const std::uint32_t code = kind;
    std::memcpy(static_cast<void*>(&value), &code, sizeof code);
    return value;
}

/// As many vectors, each but the innermost with one element.
inline MVariant nested_vectors(int depth) {
    MVariant value(MV_VECTOR);
    while (--depth > 0) {
        MVariant outer(MV_VECTOR);
        outer[0] = std::move(value);
        value = std::move(outer);
    }
    return value;
}

/// As many maps, each but the innermost with one entry, "k".
inline MVariant nested_maps(int depth) {
    MVariant value(MV_MAP);
    while (--depth > 0) {
        MVariant outer(MV_MAP);
        outer["k"] = std::move(value);
        value = std::move(outer);
    }
    return value;
}

}  // namespace zol::testing_support

inline void PrintTo(const MVariant& value, std::ostream* out) {
    *out << "kind " << value.Kind() << ": " << value.AsString();
}
