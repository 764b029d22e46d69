// How much of each block of a grid lies inside a mesh: exact volumes, all blocks that the
// surface touches at one go.
//
// Along a vertical line the length inside a block is the sum over the sheets above its
// floor of their heights over it, at most that of the block, each with the sign of its
// facing. Integrated over the block's plan this is its volume: the divergence theorem for
// the field (0, 0, z). So each triangle is cut by the walls along x, then y, then z; a
// piece gives its integral to its own block and its area to all blocks under it. There are
// no caps to close and no corners to test.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "engine/geometry/piece.h"
#include "engine/geometry/solid.h"
#include "engine/geometry/ticks.h"

namespace zol::engine::geometry {

/// Walls of blocks along x, y and z; columns are numbered with x fastest.
using Walls = std::array<Ticks, 3>;

/// What the pieces of a mesh in one block add up to.
struct BlockSum {
    std::uint32_t column;
    std::uint32_t layer;
    /// Six times the volume between the pieces and the block's floor.
    double volume6;
    /// Twice the area of the pieces in plan.
    double area2;
    /// False where they all lie in walls.
    bool touches;
    /// One of them is of a triangle whose weight is not the same all over (solid.h).
    bool crossing;
};

/// A block that a piece of the mesh lies in, and not just in a wall of it.
struct TouchedBlock {
    std::uint32_t column;
    std::uint32_t layer;
    /// Of its part inside: from 0 to the block's own volume but for rounding.
    double volume;
    /// The volume is none, since in the block or over it the surface crosses itself.
    bool crossing;
};

/// The pieces of a solid's triangles, against a local origin.
class BlockPieces {
public:
    /// Walls and corners are moved by -origin, which loses nothing where its coordinates
    /// are whole and those of walls and corners of like size.
    BlockPieces(const Walls& walls, const Point& origin);

    /// False when there are more than `most` sums; nothing can be asked then.
    bool Add(const Solid& solid, std::size_t most);

    /// The blocks that the mesh touches, column by column, upwards in each. Once, after
    /// the last Add.
    std::vector<TouchedBlock> Touched();

private:
    void AddTriangle(const Piece& triangle, Solid::Weight weight);
    std::size_t Columns() const { return (walls_[0].Count() - 1) * (walls_[1].Count() - 1); }
    void Settle(std::span<BlockSum> sums, std::vector<TouchedBlock>& touched) const;

    Walls walls_;
    Point origin_;
    std::vector<BlockSum> sums_;
    /// By column: twice the area of what lies above all blocks, and whether it crosses.
    std::vector<double> area2_above_;
    std::vector<bool> crossing_above_;
};

}  // namespace zol::engine::geometry
