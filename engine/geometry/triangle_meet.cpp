// Everything comes down to signs of orientations. In space a segment that passes through
// a plane meets a triangle in it when its line passes the three edges on the same side; what
// lies in the plane is looked at along an axis that the plane is not parallel to.
#include "engine/geometry/triangle_meet.h"

#include <algorithm>
#include <array>

#include "engine/geometry/in_plane.h"
#include "engine/geometry/orientation.h"

namespace zol::engine::geometry {

namespace {

/// Calls `ask` with the plane of two axes in which the triangle has an area.
template <class Ask>
bool seen_in_plane(const Corners& t, Ask ask) {
    if (orient2d<0, 1>(t.a, t.b, t.c) != 0) return ask(InPlane<0, 1>());
    if (orient2d<1, 2>(t.a, t.b, t.c) != 0) return ask(InPlane<1, 2>());
    return ask(InPlane<2, 0>());
}

bool point_of_plane_meets(const Point& point, const Corners& triangle) {
    return seen_in_plane(triangle, [&](auto plane) { return plane.PointMeets(point, triangle); });
}

/// The same as segment_meets, where the sides of its ends to the plane are known.
bool segment_meets(const Point& from, const Point& to, int side_from, int side_to,
                   const Corners& t) {
    if (side_from == 0 && side_to == 0) {
        return seen_in_plane(t, [&](auto plane) { return plane.SegmentMeets(from, to, t); });
    }
    if (side_from == 0) return point_of_plane_meets(from, t);
    if (side_to == 0) return point_of_plane_meets(to, t);
    if (side_from == side_to) return false;
    return is_one_sided(orient3d(from, to, t.a, t.b), orient3d(from, to, t.b, t.c),
                        orient3d(from, to, t.c, t.a));
}

/// The sides of the corners of a triangle to the plane of another.
struct Sides {
    Sides(const Corners& of, const Corners& to)
        : a(orient3d(to.a, to.b, to.c, of.a)),
          b(orient3d(to.a, to.b, to.c, of.b)),
          c(orient3d(to.a, to.b, to.c, of.c)) {}

    bool AreApart() const { return a != 0 && a == b && b == c; }

    int a;
    int b;
    int c;
};

bool an_edge_meets(const Corners& of, const Sides& sides, const Corners& other) {
    return segment_meets(of.a, of.b, sides.a, sides.b, other) ||
           segment_meets(of.b, of.c, sides.b, sides.c, other) ||
           segment_meets(of.c, of.a, sides.c, sides.a, other);
}

bool share_a_corner(const Triangle& left, const Triangle& right) {
    // All nine at one go: that none is the same is what is mostly found.
    bool shared = false;
    for (const std::int32_t corner : left) {
        shared |= corner == right[0] || corner == right[1] || corner == right[2];
    }
    return shared;
}

/// The corners of two triangles, turned so that the shared ones come first.
struct Aligned {
    Triangle left;
    Triangle right;
    int shared;
};

Aligned aligned(const Triangle& left, const Triangle& right) {
    Aligned result{left, right, 0};
    for (std::size_t i = 0; i < 3; ++i) {
        const auto begin = result.right.begin() + result.shared;
        const auto same = std::find(begin, result.right.end(), left[i]);
        if (same == result.right.end()) continue;
        std::swap(*same, *begin);
        std::swap(result.left[i], result.left[static_cast<std::size_t>(result.shared)]);
        ++result.shared;
    }
    return result;
}

Corners corners(std::span<const Point> points, const Triangle& triangle) {
    return {points[static_cast<std::size_t>(triangle[0])],
            points[static_cast<std::size_t>(triangle[1])],
            points[static_cast<std::size_t>(triangle[2])]};
}

/// For triangles that share the edge a-b: only folded flat onto each other they have more
/// in common.
bool are_folded(const Corners& left, const Corners& right) {
    if (orient3d(left.a, left.b, left.c, right.c) != 0) return false;
    return seen_in_plane(
        left, [&](auto plane) { return plane.AreTogether(left.a, left.b, left.c, right.c); });
}

bool triangles_meet(const Corners& left, const Corners& right) {
    const Sides left_sides(left, right);
    if (left_sides.AreApart()) return false;
    const Sides right_sides(right, left);
    if (right_sides.AreApart()) return false;
    // Where they have a point in common, the segment or area that they have in common ends
    // on an edge of one of them.
    return an_edge_meets(left, left_sides, right) || an_edge_meets(right, right_sides, left);
}

}  // namespace

bool point_meets(const Point& point, const Corners& triangle) {
    return orient3d(triangle.a, triangle.b, triangle.c, point) == 0 &&
           point_of_plane_meets(point, triangle);
}

bool segment_meets(const Point& from, const Point& to, const Corners& triangle) {
    return segment_meets(from, to, orient3d(triangle.a, triangle.b, triangle.c, from),
                         orient3d(triangle.a, triangle.b, triangle.c, to), triangle);
}

bool meet_beyond_shared(std::span<const Point> points, const Triangle& left,
                        const Triangle& right) {
    if (!share_a_corner(left, right))
        return triangles_meet(corners(points, left), corners(points, right));
    const Aligned pair = aligned(left, right);
    const Corners l = corners(points, pair.left);
    const Corners r = corners(points, pair.right);
    switch (pair.shared) {
        case 1:
            // From the shared corner through any other common point one comes to an edge
            // opposite to it while still in the other triangle.
            return segment_meets(l.b, l.c, r) || segment_meets(r.b, r.c, l);
        case 2:
            return are_folded(l, r);
        default:
            return true;
    }
}

}  // namespace zol::engine::geometry
