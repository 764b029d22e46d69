#include "engine/geometry/nearness.h"

#include <algorithm>
#include <cmath>

#include "engine/geometry/orientation.h"
#include "engine/geometry/triangle_meet.h"
#include "engine/geometry/vector.h"

namespace zol::engine::geometry {

namespace {

/// A vector as one of moderate size times a power of two: of four such vectors the product
/// is in the range of doubles.
struct Scaled {
    explicit Scaled(const Vector& vector) : part(vector) {
        const double size =
            std::max({std::fabs(vector[0]), std::fabs(vector[1]), std::fabs(vector[2])});
        if ((size > 0x1p-200 && size < 0x1p200) || size == 0.0) return;
        // What is smaller is no normal number.
        constexpr int kLeastExponent = -1022;
        power = std::ldexp(1.0, std::max(std::ilogb(size), kLeastExponent));
        for (double& coordinate : part) coordinate /= power;
    }

    Vector part;
    double power = 1.0;
};

double length(const Vector& vector) {
    const Scaled scaled(vector);
    return std::sqrt(dot(scaled.part, scaled.part)) * scaled.power;
}

/// From the origin to the segment from a to b, which is a + along.
double distance_to_segment(const Vector& a, const Vector& b, const Vector& along) {
    const Scaled from(a);
    const Scaled way(along);
    const double square = dot(way.part, way.part);
    const double part =
        square > 0.0 ? -dot(from.part, way.part) / square * from.power / way.power : 0.0;
    if (!(part > 0.0)) return length(a);
    return part < 1.0 ? length(plus(a, part, along)) : length(b);
}

bool is_in_box(const Point& p, const Point& a, const Point& b, const Point& c) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (p[axis] < std::min({a[axis], b[axis], c[axis]}) ||
            p[axis] > std::max({a[axis], b[axis], c[axis]})) {
            return false;
        }
    }
    return true;
}

bool is_on_segment(const Point& p, const Point& a, const Point& b) {
    return is_in_box(p, a, b, b) && is_degenerate(a, b, p);
}

bool is_on(const Point& p, const Point& a, const Point& b, const Point& c) {
    // It also keeps from the predicates what is farther out than they bear.
    if (!is_in_box(p, a, b, c)) return false;
    if (is_degenerate(a, b, c)) {
        return is_on_segment(p, a, b) || is_on_segment(p, b, c) || is_on_segment(p, c, a);
    }
    return point_meets(p, {a, b, c});
}

}  // namespace

double distance(const Point& point, const Point& a, const Point& b, const Point& c) {
    // Corners against the point, and edges against their own ends: so nothing is lost of a
    // short distance to a long triangle, nor of a small triangle far away.
    const Vector pa = minus(a, point);
    const Vector pb = minus(b, point);
    const Vector pc = minus(c, point);
    const Vector ab = minus(b, a);
    const Vector bc = minus(c, b);
    const Vector ca = minus(a, c);
    const Vector normal = cross(Scaled(ca).part, Scaled(ab).part);
    const double square = dot(normal, normal);
    const auto is_within_edge = [&](const Vector& from, const Vector& along) {
        return dot(cross(Scaled(from).part, Scaled(along).part), normal) >= 0.0;
    };
    if (square > 0.0 && is_within_edge(pa, ab) && is_within_edge(pb, bc) &&
        is_within_edge(pc, ca)) {
        const Scaled height(pa);
        return std::fabs(dot(height.part, normal)) / std::sqrt(square) * height.power;
    }
    return std::min({distance_to_segment(pa, pb, ab), distance_to_segment(pb, pc, bc),
                     distance_to_segment(pc, pa, ca)});
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
        // Rounding may take the distance of a point on a slope from 0.
        return (tolerance > 0.0 && distance(point, a, b, c) <= tolerance) || is_on(point, a, b, c);
    });
}

}  // namespace zol::engine::geometry
