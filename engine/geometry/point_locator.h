// How often a mesh winds round a point.
//
// A ray from the point meets the triangles over it; each counts +1 where its outer side
// looks along the ray and -1 where it looks back. The ray runs along one axis, so that a
// grid over the plane of the other two finds the triangles at one look.
//
// The triangles in the column over a cell of that grid leave gaps between them. No triangle
// passes through a gap, so that all of it is wound round alike: what is known of one of its
// points, by exact orientations when the locator is made, holds for all. Each cell keeps
// its widest gap, beside those over and under all of its triangles. A point in none of
// them is held against the triangles of the cell above or below the gap, with three exact
// orientations in the plane for each and one in space for those that are met.
//
// A point in special position, over an edge or on the surface, is taken as moved by the tie
// rule of orientation.h: it is inside or outside as that nearby point is, and on a common
// face of two solids it is inside exactly one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "engine/geometry/large_vector.h"
#include "engine/geometry/mesh_view.h"
#include "engine/geometry/picture_grid.h"

namespace zol::engine::geometry {

class PointLocator {
public:
    /// Of a mesh whose edges have an even number of triangles each (edges.h); of others
    /// the answers mean nothing. O(n log n) in time where most triangles lie over each
    /// other, else O(n); some 70 bytes a triangle, and as much again while it is made. The
    /// ray's axis is the one along which the pictures of the triangles overlap least: for
    /// a steep body, across it.
    explicit PointLocator(const MeshView& mesh);

    /// What a ray from the point meets.
    struct Sheets {
        /// The winding number, where the mesh is a cycle (edges.h).
        int winding = 0;
        /// How many sheets, but for an even number: odd inside, where the mesh is closed but
        /// its triangles are not oriented alike.
        unsigned crossings = 0;
    };

    /// Expected O(1) where triangles are of like size; O(n) where most are as long as the
    /// mesh. A point that is not finite meets nothing. May run in several threads.
    Sheets SheetsOver(const Point& point) const;

private:
    /// The column over a cell, small because waiting for memory is what a query does most.
    /// Heights are levels; where the level of a point is over that of a triangle, so is the
    /// point.
    struct Column {
        std::uint16_t highest = 0;
        std::uint16_t lowest = kTopLevel;
        /// The gap lies between these, both not in it. A column without one has all of its
        /// triangles below.
        std::uint16_t gap_upper = kTopLevel;
        std::uint16_t gap_lower = kTopLevel;
        std::int16_t gap_winding = 0;
        /// In candidates_ those above the gap come first, then those below; these end where
        /// the next column's begin.
        std::uint16_t n_above = 0;
        std::uint32_t first = 0;
    };
    /// A triangle over a cell. Its corners stand here once more, so that a query need not
    /// wait for which triangles before it can wait for which corners.
    struct Candidate {
        Triangle corners;
        /// Points of higher level are over it.
        std::uint16_t upper;
        /// A bit for each part of the cell that it may be over.
        std::uint16_t parts;
    };
    struct Entry;

    static constexpr std::uint16_t kTopLevel = 0xFFFF;

    LargeVector<Entry> PlaceTriangles();
    void AddColumns(LargeVector<Entry>& entries);
    Column MakeColumn(std::span<Entry> entries);
    std::uint16_t LevelOf(double height) const {
        return static_cast<std::uint16_t>(levels_.Of(height));
    }

    template <std::size_t U, std::size_t V>
    Sheets Met(const Point& point, std::span<const Candidate> candidates, unsigned level,
               unsigned part, Sheets sheets) const;

    MeshView mesh_;
    std::size_t axis_ = 2;
    Point lower_{};
    Point upper_{};
    PictureGrid grid_;
    /// Along the ray.
    CellsOnAxis levels_;
    /// Of each cell, and one that ends the last.
    LargeVector<Column> columns_;
    /// Column by column.
    LargeVector<Candidate> candidates_;
};

}  // namespace zol::engine::geometry
