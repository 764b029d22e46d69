// The point that a mesh is computed against, so that coordinates of seven digits before
// the point keep theirs behind it.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

#include "engine/geometry/mesh_view.h"

namespace zol::engine::geometry {

/// The middle of the box around the points, in whole units: subtracting it from
/// coordinates of like size is exact.
inline Point local_origin(std::span<const Point> points) {
    Point origin{};
    for (std::size_t axis = 0; axis < 3 && !points.empty(); ++axis) {
        const auto [least, greatest] = std::minmax_element(
            points.begin(), points.end(),
            [axis](const Point& a, const Point& b) { return a[axis] < b[axis]; });
        origin[axis] = std::nearbyint((*least)[axis] / 2 + (*greatest)[axis] / 2);
    }
    return origin;
}

}  // namespace zol::engine::geometry
