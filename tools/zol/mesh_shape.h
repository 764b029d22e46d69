// Where the shape of a mesh keeps it from being what one wants of it: asked of the geometry
// that answers the interface's own questions, which only tells yes from no.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "engine/geometry/crossing_count.h"
#include "engine/geometry/edges.h"
#include "tools/zol/mesh.h"

namespace zol::tool {

/// Edges that are not as they should be.
struct EdgeFault {
    std::size_t number = 0;
    /// The ends of the first one.
    std::optional<std::pair<Point, Point>> first;
};

struct EdgeReport {
    std::size_t edges = 0;
    /// With one triangle.
    EdgeFault border;
    /// With more than two.
    EdgeFault crowded;
    /// With two that run along it in the same direction.
    EdgeFault misdirected;
    /// No edge has an odd number of triangles, and there are edges.
    bool is_closed = false;
};

struct CrossingReport {
    std::size_t number = 0;
    /// False when there are as many pairs of triangles, or more.
    bool is_complete = true;
    /// The triangles of the first pair, and a point where they meet.
    std::pair<std::size_t, std::size_t> first;
    Point near;
};

/// What keeps a mesh from being a surface: a vertical line that meets two triangles at
/// different heights.
struct SecondHeight {
    /// The same twice for one that stands vertical.
    std::pair<std::size_t, std::size_t> triangles;
    /// Where the line stands.
    double x = 0;
    double y = 0;
    /// Of the first triangle and of the second; the lower one first where they are the same.
    std::pair<double, double> heights;
};

/// A copy of a mesh, in one piece.
class MeshShape {
public:
    explicit MeshShape(const Mesh& mesh);
    MeshShape(const MeshShape&) = delete;
    MeshShape& operator=(const MeshShape&) = delete;

    /// Around all points, those of no triangle too.
    Box Extent() const;
    double Area() const;
    /// Triangles without area.
    std::size_t NDegenerate() const;
    EdgeReport Edges() const;
    /// For a mesh that crosses itself. May take long.
    CrossingReport Crossings() const;
    /// Nothing for a mesh that no vertical line meets at two heights.
    std::optional<SecondHeight> FindSecondHeight() const;

private:
    engine::geometry::MeshView Mesh() const { return {points_, triangles_}; }

    std::vector<engine::geometry::Point> points_;
    /// Over distinct points.
    std::vector<engine::geometry::Triangle> triangles_;
};

}  // namespace zol::tool
