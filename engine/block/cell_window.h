// Which cells of a part of a lattice a match selects: all of them at one go.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "engine/block/lattice.h"
#include "engine/block/match_region.h"
#include "engine/geometry/block_selection.h"

namespace zol::engine::block {

using Axes = std::array<Axis, 3>;

/// Cells from `first` on, `end` left out on each axis.
struct CellRange {
    Cell first;
    Cell end;

    std::int64_t Count(std::size_t axis) const { return end[axis] - first[axis]; }
    bool IsEmpty() const { return Count(0) <= 0 || Count(1) <= 0 || Count(2) <= 0; }
    bool Holds(const Cell& cell) const {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            if (cell[axis] < first[axis] || cell[axis] >= end[axis]) return false;
        }
        return true;
    }
    CellRange And(const CellRange& other) const;
};

/// The cells that the extent of a match leaves over.
CellRange cells_within_limits(const MatchRegion& region, const Axes& axes);

class CellWindow {
public:
    /// Whether so many cells along x, y and z are not too many columns for one window.
    static bool MayHold(const Cell& counts);

    /// The cells of a range within the limits, which may hold so many, of a region that has
    /// meshes. Nothing when the surfaces cross them in more places than `most` multiples
    /// of what is usual, and the range had better be halved.
    static std::optional<CellWindow> Over(const MatchRegion& region, const Axes& axes,
                                          const CellRange& range, std::size_t most);

    const CellRange& Range() const { return range_; }
    /// The columns of the range, numbered with x fastest; layers count from its first.
    const geometry::ColumnStretches& Columns() const { return columns_; }
    std::size_t ColumnOf(std::int64_t i, std::int64_t j) const {
        return static_cast<std::size_t>((j - range_.first[1]) * range_.Count(0) + i -
                                        range_.first[0]);
    }
    /// The stretch that holds a cell of the range, or null.
    const geometry::Stretch* Find(const Cell& cell) const {
        return columns_.Find(ColumnOf(cell[0], cell[1]),
                             static_cast<std::uint32_t>(cell[2] - range_.first[2]));
    }

private:
    CellWindow(const CellRange& range, geometry::ColumnStretches columns)
        : range_(range), columns_(std::move(columns)) {}

    CellRange range_;
    geometry::ColumnStretches columns_;
};

}  // namespace zol::engine::block
