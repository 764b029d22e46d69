// Where each block of a model lies, and which block lies at a point.
#pragma once

#include <cstdint>

#include "platform/zolGeometryExport.h"

namespace zol::engine::block {

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
    virtual geometry::Extent BlockExtent(std::int64_t block) = 0;

    /// The block whose box holds a point, faces included, or -1. On a face that
    /// blocks share the block above it on that axis is meant; where blocks
    /// overlap, the first of them. A point that is not finite is in no block.
    virtual std::int64_t Find(const geometry::Coord3D& point) = 0;
};

}  // namespace zol::engine::block
