// Whether points, segments and triangles of one plane meet, as seen along an axis.
#pragma once

#include <algorithm>

#include "engine/geometry/mesh_view.h"
#include "engine/geometry/orientation.h"
#include "engine/geometry/triangle_meet.h"

namespace zol::engine::geometry {

inline bool is_one_sided(int a, int b, int c) {
    return std::min({a, b, c}) >= 0 || std::max({a, b, c}) <= 0;
}

inline bool is_between(double value, double a, double b) {
    return std::min(a, b) <= value && value <= std::max(a, b);
}

/// Questions about points of one plane, seen along an axis.
template <std::size_t U, std::size_t V>
struct InPlane {
    static int Side(const Point& a, const Point& b, const Point& p) {
        return orient2d<U, V>(a, b, p);
    }

    static bool PointMeets(const Point& p, const Corners& t) {
        return is_one_sided(Side(t.a, t.b, p), Side(t.b, t.c, p), Side(t.c, t.a, p));
    }

    /// For a p on the line of a and b.
    static bool IsWithin(const Point& a, const Point& b, const Point& p) {
        return is_between(p[U], a[U], b[U]) && is_between(p[V], a[V], b[V]);
    }

    static bool SegmentsMeet(const Point& p, const Point& q, const Point& a, const Point& b) {
        const int side_a = Side(p, q, a);
        const int side_b = Side(p, q, b);
        const int side_p = Side(a, b, p);
        const int side_q = Side(a, b, q);
        if (side_a * side_b < 0 && side_p * side_q < 0) return true;
        return (side_a == 0 && IsWithin(p, q, a)) || (side_b == 0 && IsWithin(p, q, b)) ||
               (side_p == 0 && IsWithin(a, b, p)) || (side_q == 0 && IsWithin(a, b, q));
    }

    static bool SegmentMeets(const Point& p, const Point& q, const Corners& t) {
        return PointMeets(p, t) || SegmentsMeet(p, q, t.a, t.b) || SegmentsMeet(p, q, t.b, t.c) ||
               SegmentsMeet(p, q, t.c, t.a);
    }

    /// Whether p and q lie to the same side of the line of a and b.
    static bool AreTogether(const Point& a, const Point& b, const Point& p, const Point& q) {
        return Side(a, b, p) * Side(a, b, q) > 0;
    }
};

}  // namespace zol::engine::geometry
