// Whether a mesh passes by a point.
#pragma once

#include "engine/geometry/mesh_view.h"
#include "engine/geometry/triangle_tree.h"

namespace zol::engine::geometry {

/// Whether some point of the mesh is no farther from `point` than `tolerance`. A tolerance
/// of 0 asks for a point exactly on a triangle and is answered exactly; any other compares
/// a distance computed in doubles against the point. False for a tolerance below 0 or NaN,
/// and for a point that is not finite. Over the tree of the boxes of the mesh in space.
bool is_within(const MeshView& mesh, const TriangleTree& tree, const Point& point,
               double tolerance);

/// The squared distance from a point to a triangle, also one without area (after Ericson,
/// "Real-Time Collision Detection", 2004, section 5.1.5).
double squared_distance(const Point& point, const Point& a, const Point& b, const Point& c);

}  // namespace zol::engine::geometry
