#include "engine/geometry/nearness.h"

#include <algorithm>
#include <cmath>

#include "engine/geometry/orientation.h"
#include "engine/geometry/triangle_meet.h"
#include "engine/geometry/vector.h"

namespace zol::engine::geometry {

namespace {

/// From the origin to the segment from a to b.
double squared_distance_to_segment(const Vector& a, const Vector& b) {
    const Vector along = minus(b, a);
    const double length = dot(along, along);
    const double part = length > 0.0 ? std::clamp(-dot(a, along) / length, 0.0, 1.0) : 0.0;
    const Vector nearest = plus(a, part, along);
    return dot(nearest, nearest);
}

bool is_on_segment(const Point& p, const Point& a, const Point& b) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (p[axis] < std::min(a[axis], b[axis]) || p[axis] > std::max(a[axis], b[axis])) {
            return false;
        }
    }
    return is_degenerate(a, b, p);
}

bool is_on(const Point& p, const Point& a, const Point& b, const Point& c) {
    if (is_degenerate(a, b, c)) {
        return is_on_segment(p, a, b) || is_on_segment(p, b, c) || is_on_segment(p, c, a);
    }
    return point_meets(p, {a, b, c});
}

}  // namespace

double squared_distance(const Point& point, const Point& a, const Point& b, const Point& c) {
    // Against the point, so that nothing is lost where it is near.
    const Vector pa = minus(a, point);
    const Vector pb = minus(b, point);
    const Vector pc = minus(c, point);
    const Vector normal = cross(minus(pb, pa), minus(pc, pa));
    const double area = dot(normal, normal);
    const bool is_above_inside = dot(cross(pa, pb), normal) >= 0.0 &&
                                 dot(cross(pb, pc), normal) >= 0.0 &&
                                 dot(cross(pc, pa), normal) >= 0.0;
    if (area > 0.0 && is_above_inside) {
        const double height = dot(pa, normal);
        return height / area * height;
    }
    return std::min({squared_distance_to_segment(pa, pb), squared_distance_to_segment(pb, pc),
                     squared_distance_to_segment(pc, pa)});
}

bool is_within(const MeshView& mesh, const TriangleTree& tree, const Point& point,
               double tolerance) {
    const bool is_finite =
        std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2]);
    if (!is_finite || !(tolerance >= 0.0)) return false;
    Box box{point, point};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        box.lower[axis] -= tolerance;
        box.upper[axis] += tolerance;
    }
    return tree.AnyInBox(box, [&](std::uint32_t t) {
        const Point& a = mesh.Corner(t, 0);
        const Point& b = mesh.Corner(t, 1);
        const Point& c = mesh.Corner(t, 2);
        return tolerance == 0.0 ? is_on(point, a, b, c)
                                : std::sqrt(squared_distance(point, a, b, c)) <= tolerance;
    });
}

}  // namespace zol::engine::geometry
