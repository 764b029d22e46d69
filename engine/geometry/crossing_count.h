// How often, and where, a mesh crosses itself: for a person who has to mend it.
#pragma once

#include <cstddef>
#include <optional>

#include "engine/geometry/crossing.h"
#include "engine/geometry/mesh_view.h"
#include "engine/geometry/triangle_tree.h"

namespace zol::engine::geometry {

/// Whether a triangle has an area: three corners that do not lie on one line. Exact.
bool has_area(const MeshView& mesh, std::size_t triangle);

struct CrossingCount {
    std::size_t number = 0;
    /// Of those counted, the pair with the lowest numbers.
    std::optional<TrianglePair> first;
    /// False where the count was given up: there are as many, or more.
    bool is_complete = true;
};

/// Counts the pairs of triangles that some_crossing looks for, up to `most` of them, since a
/// mesh of n triangles in one place has n^2 / 2.
CrossingCount count_crossings(const MeshView& mesh, const TriangleTree& tree, std::size_t most);

/// A point where a pair of triangles that cross meet, rounded to doubles. Where they have
/// more than a point in common, one of those.
Point meeting_point(const MeshView& mesh, const TrianglePair& pair);

}  // namespace zol::engine::geometry
