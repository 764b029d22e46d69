// Parts of a mesh that can't cross themselves, found without a look at pairs of triangles.
//
// Seen along an axis, a part all of whose triangles show their outer side covers every
// point of the view once, if its outline does not meet itself and the part lies but once
// beside it: how often a point is covered changes only across the outline. (Volino and
// Magnenat-Thalmann, "Efficient self-collision detection on smoothly discretized surface
// animations using geometrical shape regularity", 1994, for parts of one outline.) Two of
// its triangles then have no point in common beyond a shared corner or edge, unless on the
// outline: anywhere else, a point of an edge or a corner has triangles all round it
// already, and none is left for another.
#pragma once

#include <cstdint>
#include <vector>

#include "engine/geometry/mesh_view.h"

namespace zol::engine::geometry {

/// For each triangle the number of its part, from 1, such that no two triangles of one part
/// have more in common than the corner or edge that they share by their indices. 0 for
/// those of which that is not known, and for those at the outline of a part. Those without
/// area, which nothing crosses, are a part of their own: a file may hold any number of them
/// at one place. Over a mesh of welded triangles; O(n log n) in time, some 30 bytes a
/// triangle while it runs.
std::vector<std::uint32_t> clear_parts(const MeshView& mesh);

}  // namespace zol::engine::geometry
