// Where each block of a model lies, and which block lies at a point.
#pragma once

#include <array>
#include <cstdint>

#include "engine/block/cell_order.h"
#include "platform/zolGeometryExport.h"

namespace zol::engine::block {

class Axis;

/// Boxes of blocks in model coordinates. Blocks count from 0, in file order.
/// Not for two threads at a time: a first search may build an index.
class Geometry {
public:
    Geometry() = default;
    Geometry(const Geometry&) = delete;
    Geometry& operator=(const Geometry&) = delete;
    virtual ~Geometry() = default;

    virtual std::int64_t NBlocks() const = 0;

    /// `block` is at least 0 and below NBlocks.
    virtual zol::geometry::Extent BlockExtent(std::int64_t block) = 0;

    /// The block whose box holds a point, faces included, or -1. On a face that
    /// blocks share the block above it on that axis is meant; where blocks
    /// overlap, the first of them. A point that is not finite is in no block.
    virtual std::int64_t Find(const zol::geometry::Coord3D& point) = 0;

    /// The axes of the lattice whose cells the blocks are; null where there is none.
    virtual const std::array<Axis, 3>* Axes() const { return nullptr; }
    /// The order of a full lattice, in which every cell is a block; null for any other.
    virtual const CellNumbering* Numbering() const { return nullptr; }
    /// The cell that a block is, where there are axes; a number is -1 for a block whose
    /// place can no longer be read.
    virtual Cell CellOf(std::int64_t /*block*/) { return {-1, -1, -1}; }
};

}  // namespace zol::engine::block
