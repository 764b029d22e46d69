// What is computed of a mesh: each thing when it is first asked for, and once.
#pragma once

#include <optional>
#include <vector>

#include "engine/geometry/edges.h"
#include "engine/geometry/mesh_view.h"
#include "engine/geometry/point_locator.h"
#include "engine/geometry/triangle_tree.h"

namespace zol::engine::tri {

class Shape {
public:
    /// The mesh must outlive the shape.
    explicit Shape(const geometry::MeshView& mesh) : mesh_(mesh) {}
    Shape(const Shape&) = delete;
    Shape& operator=(const Shape&) = delete;

    /// The enclosed volume. Where the triangles are closed but not oriented alike, that of
    /// the mesh with its parts oriented; 0 for one that is open or can't be oriented.
    double Volume();
    bool IsSolid();
    bool IsSurface();
    bool IsCrossing();
    bool IsConsistent();
    /// Every edge has an even number of triangles, and there are edges.
    bool IsClosed();
    /// Inside means that the surface winds round the point, or, where the triangles are
    /// closed but not oriented alike, that an odd number of sheets is over it.
    bool IsPointInside(const geometry::Point& point);
    bool IsPointOn(const geometry::Point& point, double tolerance);

private:
    const geometry::EdgeFacts& Edges();
    /// The mesh over its distinct points.
    const geometry::MeshView& Welded();
    const geometry::TriangleTree& Tree();
    double ComputeVolume();

    geometry::MeshView mesh_;
    /// Empty where the mesh repeats no point.
    std::vector<geometry::Triangle> welded_triangles_;
    std::optional<geometry::MeshView> welded_;
    std::optional<geometry::EdgeFacts> edges_;
    std::optional<double> volume_;
    std::optional<bool> is_surface_;
    std::optional<bool> is_crossing_;
    std::optional<geometry::TriangleTree> tree_;
    std::optional<geometry::PointLocator> locator_;
};

}  // namespace zol::engine::tri
