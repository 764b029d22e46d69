// Points and boxes in a mesh answered in rational numbers, triangle by triangle.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "engine/geometry/triangle_tree.h"
#include "tests/engine/geometry/exact_geometry.h"
#include "tests/engine/geometry/solids.h"

namespace zol::testing {

using Whole = boost::multiprecision::cpp_int;

/// A coordinate of at most 60 binary places in whole units, far finer than these.
inline Whole whole(double coordinate) {
    return Whole(std::ldexp(coordinate, 60)) << 200;
}

/// Of the point p against the line from a to b in plan.
inline int whole_side_in_plan(const std::array<Whole, 3>& a, const std::array<Whole, 3>& b,
                              const std::array<Whole, 3>& p) {
    return Whole((b[0] - a[0]) * (p[1] - a[1]) - (b[1] - a[1]) * (p[0] - a[0])).sign();
}

/// The facings of the triangles over a point moved by the tie rule, added up. In whole
/// numbers, which are faster than rational ones.
inline int exact_winding_over(const Mesh& mesh, const Point& point) {
    std::array<Whole, 3> p;
    for (unsigned axis = 0; axis < 3; ++axis) {
        p[axis] = whole(point[axis]) + (Whole(1) << (140 - 60 * axis));
    }
    int winding = 0;
    for (const Triangle& t : mesh.triangles) {
        std::array<std::array<Whole, 3>, 3> corners;
        for (std::size_t i = 0; i < 3; ++i) {
            const Point& corner = mesh.points[static_cast<std::size_t>(t[i])];
            corners[i] = {whole(corner[0]), whole(corner[1]), whole(corner[2])};
        }
        const auto& [a, b, c] = corners;
        const int facing = whole_side_in_plan(a, b, c);
        if (facing == 0 || whole_side_in_plan(a, b, p) != facing ||
            whole_side_in_plan(b, c, p) != facing || whole_side_in_plan(c, a, p) != facing) {
            continue;
        }
        const auto minor = [&](std::size_t i, std::size_t j) -> Whole {
            return (b[i] - a[i]) * (c[j] - a[j]) - (b[j] - a[j]) * (c[i] - a[i]);
        };
        const Whole side =
            minor(1, 2) * (p[0] - a[0]) + minor(2, 0) * (p[1] - a[1]) + minor(0, 1) * (p[2] - a[2]);
        if (side.sign() != facing) winding += facing;
    }
    return winding;
}

/// What of a convex polygon lies on one side of a wall.
inline std::vector<RationalPoint> exact_cut(const std::vector<RationalPoint>& polygon,
                                            std::size_t axis, const Rational& wall, int side) {
    std::vector<RationalPoint> kept;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const RationalPoint& from = polygon[i];
        const RationalPoint& to = polygon[(i + 1) % polygon.size()];
        const Rational start = (from[axis] - wall) * side;
        const Rational end = (to[axis] - wall) * side;
        if (start >= 0) kept.push_back(from);
        if (start.sign() * end.sign() < 0) {
            const Rational part = start / (start - end);
            RationalPoint crossing;
            for (std::size_t k = 0; k < 3; ++k) crossing[k] = from[k] + part * (to[k] - from[k]);
            kept.push_back(crossing);
        }
    }
    return kept;
}

/// The volume that a mesh winds round in a box: by the lengths along x of all that faces
/// along it, so another way round than the tested one.
inline Rational exact_volume_in(const Mesh& mesh, const engine::geometry::Box& box) {
    Rational twice_three = 0;
    const Rational west(box.lower[0]);
    const Rational east(box.upper[0]);
    for (const Triangle& t : mesh.triangles) {
        const auto is_beside = [&](std::size_t axis) {
            const auto [least, greatest] =
                std::minmax({mesh.points[static_cast<std::size_t>(t[0])][axis],
                             mesh.points[static_cast<std::size_t>(t[1])][axis],
                             mesh.points[static_cast<std::size_t>(t[2])][axis]});
            return greatest < box.lower[axis] || (axis != 0 && least > box.upper[axis]);
        };
        if (is_beside(0) || is_beside(1) || is_beside(2)) continue;
        std::vector<RationalPoint> polygon;
        for (const std::int32_t corner : t) {
            polygon.push_back(rational(mesh.points[static_cast<std::size_t>(corner)]));
        }
        for (const std::size_t axis : {1U, 2U}) {
            polygon = exact_cut(polygon, axis, Rational(box.lower[axis]), 1);
            polygon = exact_cut(polygon, axis, Rational(box.upper[axis]), -1);
        }
        std::vector<RationalPoint> beyond = exact_cut(polygon, 0, east, 1);
        // A face in the wall has been counted with what lies in the box.
        if (std::none_of(beyond.begin(), beyond.end(),
                         [&](const RationalPoint& corner) { return corner[0] > east; })) {
            beyond.clear();
        }
        for (RationalPoint& corner : beyond) corner[0] = east;
        for (const auto& part : {exact_cut(exact_cut(polygon, 0, west, 1), 0, east, -1), beyond}) {
            for (std::size_t i = 2; i < part.size(); ++i) {
                const Rational area2 = cross(part[i - 1] - part[0], part[i] - part[0])[0];
                twice_three += area2 * (part[0][0] + part[i - 1][0] + part[i][0] - 3 * west);
            }
        }
    }
    return twice_three / 6;
}

}  // namespace zol::testing
