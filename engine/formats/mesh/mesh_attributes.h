// The attributes that every mesh has, and how the words of a header become others.
#pragma once

#include <cstdint>
#include <string_view>

#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

/// What a mesh file held before points were merged and faces parted.
struct MeshSource {
    /// A text as in "OBJ".
    std::string_view format;
    std::int64_t parts = 1;
    std::int64_t points = 0;
    std::int64_t faces = 0;
    /// The faces may have more than three corners.
    bool has_polygons = false;
};

/// Puts in front of the other attributes: format (text), parts, source_points,
/// source_triangles, or source_faces where those are polygons, and degenerate_triangles, the
/// number of triangles with two equal corners (all whole numbers).
void add_source(const MeshSource& source, MeshData& mesh);

/// Adds a text, in UTF-8; nothing when it is empty.
void add_text(std::string_view name, std::string_view text, MeshData& mesh);

/// Adds what a header says about a key as the type that it reads as: true and false in any
/// letter case as booleans, whole numbers, other numbers, else as text.
void add_stated(std::string_view name, std::string_view value, MeshData& mesh);

}  // namespace zol::engine
