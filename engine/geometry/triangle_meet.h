// Whether triangles, segments and points meet, exactly: a touch at a single point counts.
#pragma once

#include <span>

#include "engine/geometry/mesh_view.h"

namespace zol::engine::geometry {

/// A triangle in space. The functions here ask for one that has an area.
struct Corners {
    const Point& a;
    const Point& b;
    const Point& c;
};

bool point_meets(const Point& point, const Corners& triangle);
bool segment_meets(const Point& from, const Point& to, const Corners& triangle);

/// Whether two triangles with area of one mesh have more in common than the corner or the
/// edge that they share by their indices. The same three corners twice do.
bool meet_beyond_shared(std::span<const Point> points, const Triangle& left, const Triangle& right);

}  // namespace zol::engine::geometry
