#include "engine/tri/shape.h"

#include <cmath>
#include <utility>

#include "engine/geometry/crossing.h"
#include "engine/geometry/nearness.h"
#include "engine/geometry/orient_parts.h"
#include "engine/geometry/single_valued.h"
#include "engine/geometry/volume.h"
#include "engine/geometry/weld.h"

namespace zol::engine::tri {

namespace {

/// Makes the value when it is first asked for.
template <class T, class Make>
T& once(std::optional<T>& value, Make make) {
    if (!value) value.emplace(make());
    return *value;
}

}  // namespace

const geometry::MeshView& Shape::Welded() {
    return once(welded_, [this] {
        welded_triangles_ = geometry::welded_triangles(mesh_);
        return welded_triangles_.empty() ? mesh_
                                         : geometry::MeshView{mesh_.points, welded_triangles_};
    });
}

const geometry::EdgeFacts& Shape::Edges() {
    return once(edges_,
                [this] { return geometry::edge_facts(mesh_.points.size(), Welded().triangles); });
}

const geometry::TriangleTree& Shape::Tree() {
    return once(tree_, [this] { return geometry::TriangleTree(mesh_); });
}

double Shape::ComputeVolume() {
    if (!Edges().IsClosed()) return 0.0;
    if (Edges().IsCycle()) return std::fabs(geometry::signed_volume(mesh_, mesh_.triangles));
    const auto turns = geometry::turns_to_orient(Welded().triangles);
    if (!turns) return 0.0;
    std::vector<geometry::Triangle> oriented(mesh_.triangles.begin(), mesh_.triangles.end());
    for (std::size_t t = 0; t < oriented.size(); ++t) {
        if ((*turns)[t]) std::swap(oriented[t][1], oriented[t][2]);
    }
    return std::fabs(geometry::signed_volume(mesh_, oriented));
}

double Shape::Volume() {
    return once(volume_, [this] { return ComputeVolume(); });
}

bool Shape::IsConsistent() {
    return Edges().IsConsistent();
}

bool Shape::IsClosed() {
    return Edges().IsClosed();
}

bool Shape::IsSolid() {
    return IsConsistent() && Edges().IsClosed() && Volume() != 0.0;
}

bool Shape::IsSurface() {
    return once(is_surface_, [this] {
        return !mesh_.triangles.empty() && !IsSolid() && !geometry::some_second_height(Welded());
    });
}

bool Shape::IsCrossing() {
    return once(is_crossing_,
                [this] { return geometry::some_crossing(Welded(), Tree()).has_value(); });
}

bool Shape::IsPointInside(const geometry::Point& point) {
    if (!Edges().IsClosed()) return false;
    const auto sheets =
        once(locator_, [this] { return geometry::PointLocator(mesh_); }).SheetsOver(point);
    return Edges().IsCycle() ? sheets.winding != 0 : sheets.crossings % 2 == 1;
}

bool Shape::IsPointOn(const geometry::Point& point, double tolerance) {
    return geometry::is_within(mesh_, Tree(), point, tolerance);
}

}  // namespace zol::engine::tri
