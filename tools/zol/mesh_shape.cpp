#include "tools/zol/mesh_shape.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "engine/geometry/in_plane.h"
#include "engine/geometry/single_valued.h"
#include "engine/geometry/volume.h"
#include "engine/geometry/weld.h"

namespace zol::tool {

namespace geometry = engine::geometry;

namespace {

// Seconds of work at most. Who has as many crossings does not mend them one by one.
constexpr std::size_t kMostCrossings = 100'000;

Point as_point(const geometry::Point& point) {
    return {point[0], point[1], point[2]};
}

EdgeFault located(const geometry::EdgeCount& count, const std::vector<geometry::Point>& points) {
    EdgeFault fault;
    fault.number = count.number;
    if (count.first) {
        const auto end = [&](std::int32_t index) {
            return as_point(points[static_cast<std::size_t>(index)]);
        };
        fault.first = {end(count.first->first), end(count.first->second)};
    }
    return fault;
}

using Corners = std::array<geometry::Point, 3>;

using Plan = geometry::InPlane<0, 1>;

bool lies_over(const geometry::Point& point, const Corners& t) {
    return Plan::PointMeets(point, {t[0], t[1], t[2]});
}

/// Twice the area in plan of a triangle, below 0 for one that turns clockwise.
double area_in_plan(const geometry::Point& a, const geometry::Point& b, const geometry::Point& c) {
    return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
}

/// Of the plane of a triangle, rounded.
double height_at(const geometry::Point& place, const Corners& t) {
    const double a = area_in_plan(place, t[1], t[2]);
    const double b = area_in_plan(place, t[2], t[0]);
    const double c = area_in_plan(place, t[0], t[1]);
    const double z = place[2];
    return z + (a * (t[0][2] - z) + b * (t[1][2] - z) + c * (t[2][2] - z)) / (a + b + c);
}

double height_at(const geometry::Point& place, const geometry::Point& from,
                 const geometry::Point& to) {
    const std::size_t axis = std::fabs(to[0] - from[0]) > std::fabs(to[1] - from[1]) ? 0 : 1;
    return from[2] + (place[axis] - from[axis]) / (to[axis] - from[axis]) * (to[2] - from[2]);
}

/// Of places with two heights the one where these are farthest apart.
struct Farthest {
    void Take(const geometry::Point& place, double first, double second) {
        const double next = std::fabs(first - second);
        if (!(next > gap)) return;
        gap = next;
        heights = {first, second};
        x = place[0];
        y = place[1];
    }

    double gap = -1;
    double x = 0;
    double y = 0;
    std::pair<double, double> heights;
};

/// Where an edge of each crosses, seen in plan.
void take_edges(const Corners& left, const Corners& right, Farthest& farthest) {
    for (std::size_t i = 0; i < 3; ++i) {
        const geometry::Point& p = left[i];
        const geometry::Point& q = left[(i + 1) % 3];
        for (std::size_t j = 0; j < 3; ++j) {
            const geometry::Point& a = right[j];
            const geometry::Point& b = right[(j + 1) % 3];
            if (Plan::Side(p, q, a) * Plan::Side(p, q, b) >= 0 ||
                Plan::Side(a, b, p) * Plan::Side(a, b, q) >= 0) {
                continue;
            }
            const double before = area_in_plan(a, b, p);
            const double part = before / (before - area_in_plan(a, b, q));
            const geometry::Point place{p[0] + part * (q[0] - p[0]), p[1] + part * (q[1] - p[1]),
                                        p[2] + part * (q[2] - p[2])};
            farthest.Take(place, place[2], height_at(place, a, b));
        }
    }
}

/// The heights of two planes differ most over a corner of the polygon that the triangles have
/// in common in plan: a corner of one of them, or where two edges cross.
Farthest heights_of_two(const Corners& left, const Corners& right) {
    Farthest farthest;
    for (const geometry::Point& corner : left) {
        if (lies_over(corner, right)) farthest.Take(corner, corner[2], height_at(corner, right));
    }
    for (const geometry::Point& corner : right) {
        if (lies_over(corner, left)) farthest.Take(corner, height_at(corner, left), corner[2]);
    }
    take_edges(left, right, farthest);
    return farthest;
}

/// Under or over the corner that is between the others in plan.
Farthest heights_of_vertical(Corners corners) {
    std::sort(corners.begin(), corners.end());
    const auto& [from, middle, to] = corners;
    const double across = height_at(middle, from, to);
    Farthest farthest;
    farthest.Take(middle, std::min(across, middle[2]), std::max(across, middle[2]));
    return farthest;
}

}  // namespace

MeshShape::MeshShape(const tool::Mesh& mesh) {
    ProgressBar progress(static_cast<long long>(mesh.NPoints()) + mesh.NTriangles(),
                         "points and triangles", ProgressBar::Meanwhile::Nothing);
    points_.reserve(static_cast<std::size_t>(mesh.NPoints()));
    walk_points(mesh, progress, [&](const Point& point) {
        points_.push_back({point.x, point.y, point.z});
    });
    triangles_.reserve(static_cast<std::size_t>(mesh.NTriangles()));
    walk_triangles(mesh, progress,
                   [&](const MeshTriangle& triangle) { triangles_.push_back(triangle); });
    auto welded = geometry::welded_triangles(Mesh());
    if (!welded.empty()) triangles_ = std::move(welded);
}

Box MeshShape::Extent() const {
    Box box{as_point(points_.front()), as_point(points_.front())};
    for (const geometry::Point& point : points_) {
        const auto& [x, y, z] = point;
        box.lower = {std::min(box.lower.x, x), std::min(box.lower.y, y), std::min(box.lower.z, z)};
        box.upper = {std::max(box.upper.x, x), std::max(box.upper.y, y), std::max(box.upper.z, z)};
    }
    return box;
}

double MeshShape::Area() const {
    return geometry::surface_area(Mesh());
}

std::size_t MeshShape::NDegenerate() const {
    std::size_t number = 0;
    for (std::size_t t = 0; t < triangles_.size(); ++t) {
        if (!geometry::has_area(Mesh(), t)) ++number;
    }
    return number;
}

EdgeReport MeshShape::Edges() const {
    const geometry::EdgeFacts facts = geometry::edge_facts(points_.size(), triangles_);
    EdgeReport report;
    report.edges = facts.edges;
    report.border = located(facts.border, points_);
    report.crowded = located(facts.crowded, points_);
    report.misdirected = located(facts.misdirected, points_);
    report.is_closed = facts.IsClosed();
    return report;
}

CrossingReport MeshShape::Crossings() const {
    const geometry::TriangleTree tree(Mesh());
    const geometry::CrossingCount count = geometry::count_crossings(Mesh(), tree, kMostCrossings);
    CrossingReport report;
    report.number = count.number;
    report.is_complete = count.is_complete;
    if (count.first) {
        report.first = *count.first;
        report.near = as_point(geometry::meeting_point(Mesh(), *count.first));
    }
    return report;
}

std::optional<SecondHeight> MeshShape::FindSecondHeight() const {
    const auto pair = geometry::some_second_height(Mesh());
    if (!pair) return std::nullopt;
    const auto corners = [&](std::uint32_t triangle) {
        return Corners{Mesh().Corner(triangle, 0), Mesh().Corner(triangle, 1),
                       Mesh().Corner(triangle, 2)};
    };
    const Farthest farthest = pair->first == pair->second
                                  ? heights_of_vertical(corners(pair->first))
                                  : heights_of_two(corners(pair->first), corners(pair->second));
    return SecondHeight{*pair, farthest.x, farthest.y, farthest.heights};
}

}  // namespace zol::tool
