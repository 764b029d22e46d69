// The point that a mesh is computed against, so that coordinates of seven digits before
// the point keep theirs behind it.
#pragma once

#include <algorithm>
#include <cmath>
#include <span>

#include "engine/geometry/mesh_view.h"

namespace zol::engine::geometry {

/// The middle of the box around the points, in whole units: subtracting it from
/// coordinates of like size is exact.
inline Point local_origin(std::span<const Point> points) {
    Point origin{};
    if (points.empty()) return origin;
    Point least = points.front();
    Point greatest = least;
    for (const Point& point : points) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            least[axis] = std::min(least[axis], point[axis]);
            greatest[axis] = std::max(greatest[axis], point[axis]);
        }
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
        origin[axis] = std::nearbyint(least[axis] / 2 + greatest[axis] / 2);
    }
    return origin;
}

}  // namespace zol::engine::geometry
