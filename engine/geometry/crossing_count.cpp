#include "engine/geometry/crossing_count.h"

#include <algorithm>
#include <array>

#include "engine/geometry/clear_parts.h"
#include "engine/geometry/orientation.h"
#include "engine/geometry/triangle_meet.h"
#include "engine/geometry/vector.h"
#include "engine/geometry/weld.h"

namespace zol::engine::geometry {

namespace {

Corners corners_of(const MeshView& mesh, std::size_t triangle) {
    return {mesh.Corner(triangle, 0), mesh.Corner(triangle, 1), mesh.Corner(triangle, 2)};
}

struct Segment {
    const Point& from;
    const Point& to;

    Point At(double part) const { return plus(from, part, minus(to, from)); }
};

Vector normal_of(const Corners& triangle) {
    return cross(minus(triangle.b, triangle.a), minus(triangle.c, triangle.a));
}

/// Where a segment goes through the plane of a triangle, both of which it meets.
Point through_plane(const Segment& segment, const Corners& triangle) {
    const Vector normal = normal_of(triangle);
    const double from = dot(normal, minus(segment.from, triangle.a));
    const double to = dot(normal, minus(segment.to, triangle.a));
    return segment.At(from == to ? 0.5 : std::clamp(from / (from - to), 0.0, 1.0));
}

/// The middle of what a segment in the plane of a triangle has in common with it (Cyrus and
/// Beck, "Generalized two- and three-dimensional clipping", 1978).
Point within_plane(const Segment& segment, const Corners& triangle) {
    const Vector normal = normal_of(triangle);
    const Vector along = minus(segment.to, segment.from);
    double first = 0.0;
    double last = 1.0;
    const auto clip = [&](const Point& a, const Point& b) {
        const Vector inwards = cross(normal, minus(b, a));
        const double height = dot(inwards, minus(segment.from, a));
        const double rise = dot(inwards, along);
        if (rise > 0.0) first = std::max(first, -height / rise);
        if (rise < 0.0) last = std::min(last, -height / rise);
    };
    clip(triangle.a, triangle.b);
    clip(triangle.b, triangle.c);
    clip(triangle.c, triangle.a);
    return segment.At(std::clamp((first + last) / 2, 0.0, 1.0));
}

Point common_point(const Segment& segment, const Corners& triangle) {
    const bool is_within_plane = orient3d(triangle.a, triangle.b, triangle.c, segment.from) == 0 &&
                                 orient3d(triangle.a, triangle.b, triangle.c, segment.to) == 0;
    return is_within_plane ? within_plane(segment, triangle) : through_plane(segment, triangle);
}

/// Where an edge of one triangle meets another one, edges at a corner of both left out.
std::optional<Point> point_of_edges(const MeshView& mesh, std::size_t one, std::size_t other) {
    const Triangle& left = mesh.triangles[one];
    const Triangle& right = mesh.triangles[other];
    const auto is_shared = [&](std::int32_t corner) {
        return std::find(right.begin(), right.end(), corner) != right.end();
    };
    const Corners triangle = corners_of(mesh, other);
    for (std::size_t corner = 0; corner < 3; ++corner) {
        const std::size_t next = (corner + 1) % 3;
        const Segment edge{mesh.Corner(one, corner), mesh.Corner(one, next)};
        if (is_shared(left[corner]) || is_shared(left[next])) continue;
        if (segment_meets(edge.from, edge.to, triangle)) return common_point(edge, triangle);
    }
    return std::nullopt;
}

/// The middle of the corners that two triangles share.
Point middle_of_shared(const MeshView& mesh, const TrianglePair& pair) {
    const Triangle& right = mesh.triangles[pair.second];
    const Point& start = mesh.Corner(pair.first, 0);
    Vector sum{};
    double shared = 0.0;
    for (const std::int32_t corner : mesh.triangles[pair.first]) {
        if (std::find(right.begin(), right.end(), corner) == right.end()) continue;
        sum = plus(sum, 1.0, minus(mesh.points[static_cast<std::size_t>(corner)], start));
        shared += 1.0;
    }
    return plus(start, 1.0 / std::max(shared, 1.0), sum);
}

}  // namespace

bool has_area(const MeshView& mesh, std::size_t triangle) {
    const auto [a, b, c] = corners_of(mesh, triangle);
    // Mostly the first look is enough.
    return orient2d<0, 1>(a, b, c) != 0 || !is_degenerate(a, b, c);
}

CrossingCount count_crossings(const MeshView& mesh, const TriangleTree& tree, std::size_t most) {
    const TriangleTree::Groups clear(tree, clear_parts(mesh));
    CrossingCount count;
    count.is_complete = !tree.AnyPair(clear, [&](std::uint32_t left, std::uint32_t right) {
        // Few get as far as to be asked for their area.
        if (!meet_beyond_shared(mesh.points, mesh.triangles[left], mesh.triangles[right]) ||
            !has_area(mesh, left) || !has_area(mesh, right)) {
            return false;
        }
        const TrianglePair pair(left, right);
        count.first = std::min(count.first.value_or(pair), pair);
        return ++count.number >= most;
    });
    return count;
}

Point meeting_point(const MeshView& mesh, const TrianglePair& pair) {
    if (const auto point = point_of_edges(mesh, pair.first, pair.second)) return *point;
    if (const auto point = point_of_edges(mesh, pair.second, pair.first)) return *point;
    // They lie on each other along the edge that they share, or are the same three corners.
    return middle_of_shared(mesh, pair);
}

}  // namespace zol::engine::geometry
