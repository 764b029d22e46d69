// Which block lies at a point, for blocks that stand on no common lattice.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/zolGeometryExport.h"

namespace zol::engine::block {

/// A packed tree over the boxes of n blocks, built once.
///
/// It keeps no boxes: block numbers in the order of a space-filling curve, eight
/// to a leaf, under levels of bounds that hold eight nodes each. The exact box is
/// asked of the caller, who must answer the same box for a block at every call.
///
/// Memory: 7.5 bytes a block, 12 while it is built. Building takes O(n log n) and
/// asks for all boxes three times, each time in block order. A search takes
/// O(log n) where few bounds overlap at the point, which is so for boxes that
/// hardly overlap and are not extremely uneven in size or spacing; O(n) at worst.
/// It allocates nothing. Searches may run in several threads as far as `BoxOf`
/// may be called from them.
class BoxTree {
public:
    /// The box of a block, asked of any callable that takes a std::int64_t. It refers
    /// to the callable without owning it, and a lambda may stand in its place.
    class BoxOf {
    public:
        template <class Callable>
        BoxOf(const Callable& callable)
            : callable_(std::addressof(callable)), call_(&Call<Callable>) {}

        geometry::Extent operator()(std::int64_t block) const { return call_(callable_, block); }

    private:
        template <class Callable>
        static geometry::Extent Call(const void* callable, std::int64_t block) {
            return (*static_cast<const Callable*>(callable))(block);
        }

        const void* callable_;
        geometry::Extent (*call_)(const void*, std::int64_t);
    };

    /// Over blocks 0 .. `n_blocks` - 1. Throws ReadError when there are more than
    /// 2^32 of them, and what `box_of` throws.
    BoxTree(std::int64_t n_blocks, BoxOf box_of);

    /// The block whose closed box holds `point`, or -1. Among several, the one on
    /// whose upper faces the point lies on the fewest axes: a point on a shared
    /// face belongs to the block above. Among these, the lowest. A point that is
    /// not finite is in no block.
    std::int64_t Find(const geometry::Coord3D& point, BoxOf box_of) const;

    /// Bytes held beside the object itself.
    std::size_t MemoryBytes() const;

private:
    /// Bounds relative to origin_, so that rounding to floats costs little also where
    /// coordinates are large.
    struct Node {
        std::array<float, 3> lower;
        std::array<float, 3> upper;
    };
    struct Level {
        std::size_t first = 0;
        std::size_t count = 0;
    };
    struct Grid;

    static constexpr std::size_t kFanOut = 8;

    Grid SurveyCentroids(std::int64_t n_blocks, BoxOf box_of);
    void SortAlongCurve(std::int64_t n_blocks, const Grid& grid, BoxOf box_of);
    void BoundLeaves(BoxOf box_of);
    void BoundUpperLevels();

    geometry::Coord3D origin_;
    std::vector<std::uint32_t> order_;
    std::vector<Node> nodes_;
    /// Leaves first, the level of one node last; none when there are no blocks.
    std::vector<Level> levels_;
};

}  // namespace zol::engine::block
