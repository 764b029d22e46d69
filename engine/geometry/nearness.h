// Whether a mesh passes by a point.
#pragma once

#include "engine/geometry/mesh_view.h"
#include "engine/geometry/triangle_tree.h"

namespace zol::engine::geometry {

/// Whether some point of the mesh is no farther from `point` than `tolerance`. A point that
/// is exactly on a triangle always is; of any other a distance computed in doubles is held
/// against the tolerance, and with a tolerance of 0 none is near. So what is near stays near
/// when the tolerance grows. False for a tolerance below 0 or NaN, and for a point that is
/// not finite. Over the tree of the boxes of the mesh in space.
bool is_within(const MeshView& mesh, const TriangleTree& tree, const Point& point,
               double tolerance);

/// The distance from a point to a triangle, also one without area (after Ericson, "Real-Time
/// Collision Detection", 2004, section 5.1.5). The point may lie anywhere in the range of
/// doubles, near or far: nothing overflows or underflows that the distance itself does not.
double distance(const Point& point, const Point& a, const Point& b, const Point& c);

}  // namespace zol::engine::geometry
