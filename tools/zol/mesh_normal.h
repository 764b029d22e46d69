// Where a triangle looks.
#pragma once

#include <array>
#include <cmath>

#include "engine/geometry/vector.h"
#include "tools/zol/block_model.h"

namespace zol::tool {

/// Of length 1, to the side from which the corners turn counter-clockwise; zero for a
/// triangle without area.
inline std::array<float, 3> unit_normal(const std::array<Point, 3>& corners) {
    using engine::geometry::Vector;
    const auto edge_to = [&](const Point& end) {
        const Point& start = corners[0];
        return Vector{end.x - start.x, end.y - start.y, end.z - start.z};
    };
    const Vector normal = engine::geometry::cross(edge_to(corners[1]), edge_to(corners[2]));
    const double length = std::hypot(normal[0], normal[1], normal[2]);
    // Both ends of the range: tiny triangles and coordinates of a hundred digits.
    if (!(length > 0) || !std::isfinite(length)) return {};
    return {static_cast<float>(normal[0] / length), static_cast<float>(normal[1] / length),
            static_cast<float>(normal[2] / length)};
}

}  // namespace zol::tool
