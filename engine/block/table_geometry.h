// Geometry of models whose blocks are listed row by row.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>

#include "engine/block/block_rows.h"
#include "engine/block/box_tree.h"
#include "engine/block/cell_index.h"
#include "engine/block/geometry.h"
#include "engine/block/lattice.h"

namespace zol::engine::block {

/// Blocks of one size on a lattice, some cells of which may have no block.
class SparseLattice final : public Geometry {
public:
    SparseLattice(BlockRows rows, std::array<Axis, 3> axes);

    std::int64_t NBlocks() const override { return rows_.Count(); }
    geometry::Extent BlockExtent(std::int64_t block) override;
    std::int64_t Find(const geometry::Coord3D& point) override;
    const std::array<Axis, 3>* Axes() const override { return &axes_; }
    /// A number is -1 outside of the lattice.
    Cell CellOf(std::int64_t block) override;

private:
    std::uint64_t CellNumber(const Cell& place) const;
    void BuildIndex();

    BlockRows rows_;
    std::array<Axis, 3> axes_;
    std::unique_ptr<CellIndex> index_;
};

/// Brings the edges of a block, which come rounded, onto the lattice they stand for.
struct EdgeLattice {
    double lower = 0.0;
    double step = 0.0;
    /// Only edges this close to a line of the lattice are moved onto it.
    double reach = 0.0;

    double Snap(double edge) const;
};

/// Blocks of several sizes: sub-blocks and bare boxes.
class ListedBoxes final : public Geometry {
public:
    /// An axis without a lattice keeps its edges as they are.
    ListedBoxes(BlockRows rows, std::array<std::optional<EdgeLattice>, 3> lattices);

    std::int64_t NBlocks() const override { return rows_.Count(); }
    geometry::Extent BlockExtent(std::int64_t block) override;
    std::int64_t Find(const geometry::Coord3D& point) override;

private:
    BlockRows rows_;
    std::array<std::optional<EdgeLattice>, 3> lattices_;
    std::unique_ptr<BoxTree> tree_;
};

}  // namespace zol::engine::block
