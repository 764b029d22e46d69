// The volume and the area of a mesh.
#pragma once

#include <cstddef>
#include <span>

#include "engine/geometry/mesh_view.h"

namespace zol::engine::geometry {

/// The volume that the surface winds round, each part of space times its winding number,
/// in cubed units: signed tetrahedra from the triangles to one point, which is Gauss's
/// theorem for the field (x, y, z) / 3. Only for a cycle of triangles (edges.h); positive
/// where they are counter-clockwise seen from outside.
///
/// The point is the middle of the mesh, rounded to whole units, and the sum is compensated
/// (Neumaier, 1974) over chunks of fixed size: far from the origin as exact as at it.
double signed_volume(const MeshView& mesh, std::span<const Triangle> triangles);

/// The summed area of all triangles, in squared units.
double surface_area(const MeshView& mesh);

}  // namespace zol::engine::geometry
