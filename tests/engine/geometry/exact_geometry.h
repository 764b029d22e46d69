// The questions of orientation answered in rational numbers, by a library that has
// nothing to do with ours.
#pragma once

#include <array>
#include <boost/multiprecision/cpp_int.hpp>

#include "engine/geometry/mesh_view.h"

namespace zol::testing {

using Rational = boost::multiprecision::cpp_rational;
using RationalPoint = std::array<Rational, 3>;

inline RationalPoint rational(const engine::geometry::Point& point) {
    return {Rational(point[0]), Rational(point[1]), Rational(point[2])};
}

inline RationalPoint operator-(const RationalPoint& a, const RationalPoint& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

inline RationalPoint cross(const RationalPoint& a, const RationalPoint& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

inline Rational dot(const RationalPoint& a, const RationalPoint& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

/// Of the point p against the plane of a, b, c.
inline int exact_side(const engine::geometry::Point& a, const engine::geometry::Point& b,
                      const engine::geometry::Point& c, const engine::geometry::Point& p) {
    const RationalPoint origin = rational(a);
    return dot(cross(rational(b) - origin, rational(c) - origin), rational(p) - origin).sign();
}

/// Of the point p against the line from a to b in plan.
inline int exact_side_in_plan(const engine::geometry::Point& a, const engine::geometry::Point& b,
                              const engine::geometry::Point& p) {
    return cross(rational(b) - rational(a), rational(p) - rational(a))[2].sign();
}

}  // namespace zol::testing
