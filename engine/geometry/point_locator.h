// How often a mesh winds round a point.
//
// A ray from the point meets the triangles over it; each counts +1 where its outer side
// looks along the ray and -1 where it looks back. The ray runs along one axis, so that a
// grid over the plane of the other two finds the triangles at one look, and what is left
// are exact orientations: three in the plane for each candidate, one in space for those
// that are met. A point in special position, over an edge or on the surface, is taken as
// moved by the tie rule of orientation.h: it is inside or outside as that nearby point is,
// and on a common face of two solids it is inside exactly one.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/geometry/mesh_view.h"

namespace zol::engine::geometry {

class PointLocator {
public:
    /// O(n) in time; at most 70 bytes a triangle. The ray's axis is the one along which the
    /// pictures of the triangles overlap least: along the dip of a steep body.
    explicit PointLocator(const MeshView& mesh);

    /// What a ray from the point meets.
    struct Sheets {
        /// The winding number, where the mesh is a cycle (edges.h).
        int winding = 0;
        /// Odd inside, where the mesh is closed but its triangles are not oriented alike.
        std::size_t crossings = 0;
    };

    /// Expected O(1) where triangles are of like size; O(n) where most are as long as the
    /// mesh. A point that is not finite meets nothing. May run in several threads.
    Sheets SheetsOver(const Point& point) const;

private:
    /// Cells along one axis of the plane. Their numbers rise with the coordinate and never
    /// fall, which is all that finding needs.
    struct Cells {
        std::int64_t Of(double coordinate) const;
        /// Bounds of a cell, a little to the outside.
        double Start(std::int64_t cell) const;
        double End(std::int64_t cell) const;

        double lower = 0.0;
        double a_unit = 0.0;
        std::int64_t number = 1;
    };

    /// The cells that the picture of a triangle may touch, ends included.
    struct CellRange {
        std::int64_t first_u;
        std::int64_t last_u;
        std::int64_t first_v;
        std::int64_t last_v;
    };

    /// A triangle in the list of a cell.
    struct Entry {
        std::uint32_t triangle;
        /// Its greatest coordinate along the ray against that of the lowest point, rounded
        /// up: most triangles under a point are passed over without a look at their corners.
        float top;
    };

    void ChooseAxis();
    void LayOutCells();
    void FillCells();
    CellRange RangeOf(std::size_t triangle) const;
    template <class Visit>
    void ForEachEntry(Visit visit) const;

    template <std::size_t U, std::size_t V>
    Sheets SheetsAlong(const Point& point) const;

    MeshView mesh_;
    /// The axis of the ray, and the two of the plane in cyclic order.
    std::size_t axis_ = 2;
    std::size_t u_ = 0;
    std::size_t v_ = 1;
    Point lower_{};
    Point upper_{};
    Cells cells_u_;
    Cells cells_v_;
    /// For each cell where its list begins in entries_, and at the end their number.
    std::vector<std::uint32_t> starts_;
    std::vector<Entry> entries_;
};

}  // namespace zol::engine::geometry
