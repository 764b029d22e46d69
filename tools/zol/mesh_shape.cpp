#include "tools/zol/mesh_shape.h"

#include <algorithm>

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
    const std::vector<bool> has_area = geometry::have_area(Mesh());
    return static_cast<std::size_t>(std::count(has_area.begin(), has_area.end(), false));
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

}  // namespace zol::tool
