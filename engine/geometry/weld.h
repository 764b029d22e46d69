// Which points of a mesh are one and the same.
//
// Files repeat a point where it has two colours or normals; only the welded triangles
// tell what is joined to what.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "engine/geometry/mesh_view.h"

namespace zol::engine::geometry {

/// For each point the first one of the same coordinates; empty where no two are the same.
/// Coordinates are the same when they compare equal, so that -0 is 0. There is no
/// tolerance: what a file keeps apart by a last place stays apart.
///
/// O(n) in time, O(n log n) for points that were made to be slow; 16 bytes a point while it
/// runs.
std::vector<std::int32_t> first_of_same(std::span<const Point> points);

/// The triangles of a mesh over its distinct points, in the same order. Empty where the
/// mesh repeats no point, and its own triangles say it already.
std::vector<Triangle> welded_triangles(const MeshView& mesh);

/// True for a triangle that has less than three corners; a welded one may.
inline bool repeats_corner(const Triangle& triangle) {
    return triangle[0] == triangle[1] || triangle[1] == triangle[2] || triangle[2] == triangle[0];
}

}  // namespace zol::engine::geometry
