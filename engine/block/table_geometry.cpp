#include "engine/block/table_geometry.h"

#include <cmath>
#include <utility>

#include "engine/formats/diagnostics.h"

namespace zol::engine::block {

namespace {

// What stands in for a block whose coordinates can no longer be read.
const geometry::Extent kNoExtent{0, 0, 0, 0, 0, 0};

}  // namespace

SparseLattice::SparseLattice(BlockRows rows, std::array<Axis, 3> axes)
    : rows_(std::move(rows)), axes_(std::move(axes)) {}

Cell SparseLattice::CellOf(std::int64_t block) {
    const Spans spans = rows_.At(block);
    Cell place{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        place[axis] = axes_[axis].CellOf(spans[axis].centroid);
    }
    return place;
}

std::uint64_t SparseLattice::CellNumber(const Cell& place) const {
    return static_cast<std::uint64_t>(place[0] +
                                      axes_[0].Count() * (place[1] + axes_[1].Count() * place[2]));
}

geometry::Extent SparseLattice::BlockExtent(std::int64_t block) {
    const Cell place = CellOf(block);
    if (place[0] < 0 || place[1] < 0 || place[2] < 0) {
        return kNoExtent;
    }
    return {axes_[0].Lower(place[0]), axes_[1].Lower(place[1]), axes_[2].Lower(place[2]),
            axes_[0].Upper(place[0]), axes_[1].Upper(place[1]), axes_[2].Upper(place[2])};
}

void SparseLattice::BuildIndex() {
    const auto cells =
        static_cast<std::uint64_t>(axes_[0].Count() * axes_[1].Count() * axes_[2].Count());
    auto index = std::make_unique<CellIndex>(cells, static_cast<std::uint32_t>(rows_.Count()));
    for (std::int64_t block = 0; block < rows_.Count(); ++block) {
        const Cell place = CellOf(block);
        if (place[0] >= 0 && place[1] >= 0 && place[2] >= 0) {
            index->Insert(CellNumber(place), static_cast<std::uint32_t>(block));
        }
    }
    if (index->Duplicates() > 0) {
        report(rows_.Columns().Blocks().SourceFile().Path(),
               std::to_string(index->Duplicates()) +
                   " rows place their block where an earlier row has one; searches find the "
                   "earlier");
    }
    index_ = std::move(index);
}

std::int64_t SparseLattice::Find(const geometry::Coord3D& point) {
    const std::array<double, 3> at{point.x, point.y, point.z};
    Cell place{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        place[axis] = axes_[axis].CellOf(at[axis]);
        if (place[axis] < 0) {
            return -1;
        }
    }
    if (!index_) {
        BuildIndex();
    }
    const std::int64_t found = index_->Find(CellNumber(place));
    if (found >= 0) {
        return found;
    }
    // A face belongs to the cell above it, but where that has no block the block below
    // ends there: blocks are closed boxes. Fewest axes stepped down come first.
    constexpr std::array<unsigned, 7> kSteps = {1, 2, 4, 3, 5, 6, 7};
    for (const unsigned step : kSteps) {
        Cell below = place;
        bool on_faces = true;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            if ((step >> axis & 1U) != 0) {
                on_faces =
                    on_faces && below[axis] > 0 && at[axis] == axes_[axis].Lower(below[axis]);
                --below[axis];
            }
        }
        const std::int64_t neighbour = on_faces ? index_->Find(CellNumber(below)) : -1;
        if (neighbour >= 0) {
            return neighbour;
        }
    }
    return -1;
}

double EdgeLattice::Snap(double edge) const {
    const double line = lower + std::round((edge - lower) / step) * step;
    return std::fabs(edge - line) <= reach ? line : edge;
}

ListedBoxes::ListedBoxes(BlockRows rows, std::array<std::optional<EdgeLattice>, 3> lattices)
    : rows_(std::move(rows)), lattices_(lattices) {}

geometry::Extent ListedBoxes::BlockExtent(std::int64_t block) {
    const Spans spans = rows_.At(block);
    std::array<double, 3> lower{};
    std::array<double, 3> upper{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        lower[axis] = spans[axis].centroid - spans[axis].size / 2;
        upper[axis] = spans[axis].centroid + spans[axis].size / 2;
        if (std::isnan(lower[axis]) || std::isnan(upper[axis])) {
            return kNoExtent;
        }
        if (lattices_[axis]) {
            const double snapped_lower = lattices_[axis]->Snap(lower[axis]);
            const double snapped_upper = lattices_[axis]->Snap(upper[axis]);
            // A sliver thinner than the rounding of the others keeps its own edges.
            if (snapped_lower < snapped_upper) {
                lower[axis] = snapped_lower;
                upper[axis] = snapped_upper;
            }
        }
    }
    return {lower[0], lower[1], lower[2], upper[0], upper[1], upper[2]};
}

std::int64_t ListedBoxes::Find(const geometry::Coord3D& point) {
    const auto box_of = [this](std::int64_t block) { return BlockExtent(block); };
    if (!tree_) {
        tree_ = std::make_unique<BoxTree>(NBlocks(), box_of);
    }
    return tree_->Find(point, box_of);
}

}  // namespace zol::engine::block
