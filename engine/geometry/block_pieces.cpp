#include "engine/geometry/block_pieces.h"

#include <algorithm>
#include <utility>

#include "engine/geometry/column_sort.h"
#include "engine/geometry/vector.h"

namespace zol::engine::geometry {

namespace {

Ticks moved(const Ticks& ticks, double by) {
    std::vector<double> at(ticks.Count());
    for (std::size_t i = 0; i < at.size(); ++i) at[i] = ticks[i] + by;
    return Ticks(std::move(at));
}

}  // namespace

BlockPieces::BlockPieces(const Walls& walls, const Point& origin)
    : walls_{moved(walls[0], -origin[0]), moved(walls[1], -origin[1]), moved(walls[2], -origin[2])},
      origin_(origin),
      area2_above_(Columns(), 0.0),
      crossing_above_(Columns(), false) {}

bool BlockPieces::Add(const Solid& solid, std::size_t most) {
    const MeshView mesh = solid.Mesh();
    Point lower{};
    Point upper{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        lower[axis] = walls_[axis][0];
        upper[axis] = walls_[axis][walls_[axis].Count() - 1];
    }
    for (std::size_t t = 0; t < mesh.triangles.size(); ++t) {
        const Piece triangle(minus(mesh.Corner(t, 0), origin_), minus(mesh.Corner(t, 1), origin_),
                             minus(mesh.Corner(t, 2), origin_));
        const auto [least_x, greatest_x] = triangle.Range(0);
        const auto [least_y, greatest_y] = triangle.Range(1);
        if (greatest_x < lower[0] || least_x > upper[0] || greatest_y < lower[1] ||
            least_y > upper[1] || triangle.Range(2).second < lower[2]) {
            continue;
        }
        if (const Solid::Weight weight = solid.WeightOf(t); weight != 0) {
            AddTriangle(triangle, weight);
        }
        if (sums_.size() > most) return false;
    }
    return true;
}

void BlockPieces::AddTriangle(const Piece& triangle, Solid::Weight weight) {
    const bool crossing = weight == Solid::kCrossing;
    const std::size_t cells_x = walls_[0].Count() - 1;
    const std::size_t cells_y = walls_[1].Count() - 1;
    const std::size_t layers = walls_[2].Count() - 1;
    cut_by_walls(triangle, 0, walls_[0], [&](std::size_t i, const Piece& slab) {
        if (i == cells_x || lies_in(slab, 0, walls_[0][i])) return;
        cut_by_walls(slab, 1, walls_[1], [&](std::size_t j, const Piece& prism) {
            if (j == cells_y || lies_in(prism, 1, walls_[1][j])) return;
            const std::size_t column = j * cells_x + i;
            cut_by_walls(prism, 2, walls_[2], [&](std::size_t k, const Piece& piece) {
                const Piece::Sums sums = piece.Above(walls_[2][k]);
                if (k == layers) {
                    area2_above_[column] += weight * sums.area2;
                    crossing_above_[column] = crossing_above_[column] || crossing;
                    return;
                }
                sums_.push_back({static_cast<std::uint32_t>(column), static_cast<std::uint32_t>(k),
                                 weight * sums.volume6, weight * sums.area2,
                                 !lies_in(piece, 2, walls_[2][k]), crossing});
            });
        });
    });
}

std::vector<TouchedBlock> BlockPieces::Touched() {
    ColumnLists<BlockSum> lists(std::move(sums_), Columns());
    std::vector<TouchedBlock> touched;
    for (std::size_t column = 0; column < Columns(); ++column) {
        if (const auto sums = lists.Of(column); !sums.empty()) Settle(sums, touched);
    }
    return touched;
}

/// Downwards, so that the area over each block is known when it comes.
void BlockPieces::Settle(std::span<BlockSum> sums, std::vector<TouchedBlock>& touched) const {
    sort_few(sums, [](const BlockSum& a, const BlockSum& b) { return a.layer > b.layer; });
    const std::size_t first = touched.size();
    const std::uint32_t column = sums.front().column;
    double area2_above = area2_above_[column];
    bool crossing = crossing_above_[column];
    for (std::size_t i = 0; i < sums.size();) {
        const std::uint32_t layer = sums[i].layer;
        BlockSum block{column, layer, 0.0, 0.0, false, false};
        for (; i < sums.size() && sums[i].layer == layer; ++i) {
            block.volume6 += sums[i].volume6;
            block.area2 += sums[i].area2;
            block.touches = block.touches || sums[i].touches;
            crossing = crossing || sums[i].crossing;
        }
        if (block.touches) {
            const double height = walls_[2][layer + 1] - walls_[2][layer];
            touched.push_back(
                {column, layer, block.volume6 / 6.0 + area2_above / 2.0 * height, crossing});
        }
        area2_above += block.area2;
    }
    std::reverse(touched.begin() + static_cast<std::ptrdiff_t>(first), touched.end());
}

}  // namespace zol::engine::geometry
