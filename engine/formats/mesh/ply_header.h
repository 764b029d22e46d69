// The header of a PLY file: which elements its body holds, in which order and form.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/formats/file.h"

namespace zol::engine {

enum class PlyType { Int8, Uint8, Int16, Uint16, Int32, Uint32, Float32, Float64 };

/// Bytes of a number.
std::size_t size_of(PlyType type);
inline bool is_whole(PlyType type) {
    return type < PlyType::Float32;
}

struct PlyProperty {
    std::string name;
    /// Of the number, or of the items of a list.
    PlyType type;
    /// Of the count in front of a list; nothing for a single number.
    std::optional<PlyType> count_type;
};

struct PlyElement {
    std::string name;
    std::uint64_t count;
    std::vector<PlyProperty> properties;

    /// Of properties without one of that name their number.
    std::size_t Find(std::string_view property) const;
};

struct PlyHeader {
    enum class Format { Text, LittleEndian, BigEndian };

    Format format = Format::Text;
    std::vector<PlyElement> elements;
    /// What stands behind "comment" and "obj_info".
    std::vector<std::string> comments;
    /// Where the body begins.
    std::uint64_t body = 0;

    /// Of elements without one of that name their number.
    std::size_t Find(std::string_view element) const;
};

/// True for the beginning of a PLY file.
bool is_ply(std::string_view head);

/// Throws ReadError with the line.
PlyHeader read_ply_header(const File& file);

}  // namespace zol::engine
