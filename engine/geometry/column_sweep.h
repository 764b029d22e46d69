// Which points of a grid lie inside a mesh, a whole column of them at one go.
//
// A vertical line through a column of points meets the triangles that it crosses once each;
// between two crossings all points of the column answer alike (Schwarz and Seidel, "Fast
// Parallel Surface and Solid Voxelization on GPUs", 2010). Lines and points in special
// position are taken as moved by the tie rule of orientation.h, so that the answer for each
// point is that of a PointLocator, to the last tie.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "engine/geometry/column_sort.h"
#include "engine/geometry/mesh_view.h"
#include "engine/geometry/ticks.h"

namespace zol::engine::geometry {

/// Every x with every y with every z. Columns are numbered with x fastest, layers upwards;
/// both numbers fit 30 bits.
struct PointGrid {
    Ticks x;
    Ticks y;
    Ticks z;

    std::size_t Columns() const { return x.Count() * y.Count(); }
};

/// What the sheets over a point tell of it.
enum class InsideRule {
    /// Inside where the facings of the sheets over it do not add up to 0: for cycles of
    /// triangles (edges.h).
    NonZero,
    /// Inside where an odd number of sheets is over it: for closed meshes whose triangles
    /// are not oriented alike.
    Odd
};

inline bool is_inside(InsideRule rule, int winding) {
    return rule == InsideRule::Odd ? winding % 2 != 0 : winding != 0;
}

/// Where the line of a column meets a triangle.
struct Crossing {
    std::uint32_t column;
    /// The first layer that lies above the triangle; the number of layers where none does.
    /// Never 0: what lies below all points of a column says nothing about them.
    std::uint32_t layer;
    /// 1 where the triangle faces upwards, -1 where it faces downwards.
    std::int32_t facing;
};

/// Adds the crossings of a mesh to `crossings`, in the order of its triangles. False when
/// there are more than `most`; the list is of no use then. O(triangles + crossings + rows
/// that the pictures of the triangles touch).
bool add_crossings(const MeshView& mesh, const PointGrid& grid, std::size_t most,
                   std::vector<Crossing>& crossings);

/// Calls `visit(first, end)` for each run of layers of one column that lie inside, upwards.
/// Sorts the crossings, which are all those of the column.
template <class Visit>
void for_each_run(std::span<Crossing> column, InsideRule rule, Visit visit) {
    int winding = 0;
    for (const Crossing& crossing : column) winding += crossing.facing;
    sort_few(column, [](const Crossing& a, const Crossing& b) { return a.layer < b.layer; });
    std::uint32_t first = 0;
    bool inside = is_inside(rule, winding);
    for (std::size_t i = 0; i < column.size();) {
        const std::uint32_t layer = column[i].layer;
        for (; i < column.size() && column[i].layer == layer; ++i) winding -= column[i].facing;
        const bool inside_above = is_inside(rule, winding);
        if (inside && !inside_above) visit(first, layer);
        if (!inside) first = layer;
        inside = inside_above;
    }
}

}  // namespace zol::engine::geometry
