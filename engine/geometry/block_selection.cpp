#include "engine/geometry/block_selection.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "engine/geometry/column_sort.h"

namespace zol::engine::geometry {

namespace {

/// For a block that is only settled by all solids together.
constexpr double kUnsettled = -2.0;

std::optional<ColumnLists<Crossing>> crossings_of(const Solid& solid, const PointGrid& grid,
                                                  std::size_t most) {
    std::vector<Crossing> crossings;
    if (!add_crossings(solid.Mesh(), grid, most, crossings)) return std::nullopt;
    return ColumnLists<Crossing>(std::move(crossings), grid.Columns());
}

/// The stretches of several solids in one column, as they are found, and their union.
class ColumnUnion {
public:
    void AddWhole(std::uint32_t first, std::uint32_t end) {
        if (first < end) whole_.push_back({first, end, Stretch::kWhole});
    }
    void AddPart(std::uint32_t layer, double volume) {
        parts_.push_back({layer, layer + 1, volume});
    }

    /// `settle(layer)` gives the volume of a block that several solids share, kWhole or 0.
    template <class Settle>
    void Finish(ColumnStretches& columns, Settle settle) {
        SettleParts(settle);
        Join(whole_);
        // Both lists go upwards; a part never lies in a whole stretch.
        std::size_t part = 0;
        for (const Stretch& stretch : whole_) {
            for (; part < parts_.size() && parts_[part].first < stretch.first; ++part) {
                columns.Add(parts_[part]);
            }
            columns.Add(stretch);
        }
        for (; part < parts_.size(); ++part) columns.Add(parts_[part]);
        columns.EndColumn();
        whole_.clear();
        parts_.clear();
    }

private:
    static void Sort(std::vector<Stretch>& stretches) {
        const auto goes_before = [](const Stretch& a, const Stretch& b) {
            return a.first < b.first;
        };
        if (!std::is_sorted(stretches.begin(), stretches.end(), goes_before)) {
            std::stable_sort(stretches.begin(), stretches.end(), goes_before);
        }
    }

    /// Makes one stretch of those that overlap or follow each other.
    static void Join(std::vector<Stretch>& stretches) {
        Sort(stretches);
        std::size_t kept = 0;
        for (const Stretch& stretch : stretches) {
            if (kept > 0 && stretch.first <= stretches[kept - 1].end) {
                stretches[kept - 1].end = std::max(stretches[kept - 1].end, stretch.end);
            } else {
                stretches[kept++] = stretch;
            }
        }
        stretches.resize(kept);
    }

    bool IsWhole(std::uint32_t layer) const {
        const auto behind = std::upper_bound(
            whole_.begin(), whole_.end(), layer,
            [](std::uint32_t value, const Stretch& stretch) { return value < stretch.first; });
        return behind != whole_.begin() && layer < std::prev(behind)->end;
    }

    template <class Settle>
    void SettleParts(Settle settle) {
        Join(whole_);
        Sort(parts_);
        const std::size_t n_whole = whole_.size();
        std::vector<Stretch> settled_whole;
        std::size_t kept = 0;
        for (std::size_t i = 0; i < parts_.size();) {
            const Stretch part = parts_[i];
            bool alone = part.volume != kUnsettled;
            for (++i; i < parts_.size() && parts_[i].first == part.first; ++i) alone = false;
            if (n_whole > 0 && IsWhole(part.first)) continue;
            const double volume = alone ? part.volume : settle(part.first);
            if (volume == Stretch::kWhole) {
                settled_whole.push_back({part.first, part.end, volume});
            } else if (volume > 0.0) {
                parts_[kept++] = {part.first, part.end, volume};
            }
        }
        parts_.resize(kept);
        whole_.insert(whole_.end(), settled_whole.begin(), settled_whole.end());
    }

    std::vector<Stretch> whole_;
    std::vector<Stretch> parts_;
};

Ticks centres_of(const Ticks& walls) {
    std::vector<double> centres(walls.Count() - 1);
    for (std::size_t i = 0; i < centres.size(); ++i) {
        centres[i] = walls[i] + (walls[i + 1] - walls[i]) / 2;
    }
    return Ticks(std::move(centres));
}

/// Walls of blocks, and the box of each.
class BlockBoxes {
public:
    explicit BlockBoxes(const Walls& walls) : walls_(walls), columns_x_(walls[0].Count() - 1) {}

    Box Of(std::size_t column, std::size_t layer) const {
        const std::size_t i = column % columns_x_;
        const std::size_t j = column / columns_x_;
        return {{walls_[0][i], walls_[1][j], walls_[2][layer]},
                {walls_[0][i + 1], walls_[1][j + 1], walls_[2][layer + 1]}};
    }

    /// A whole point in their middle.
    Point LocalOrigin() const {
        Point origin{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const Ticks& walls = walls_[axis];
            origin[axis] = std::nearbyint(walls[0] / 2 + walls[walls.Count() - 1] / 2);
        }
        return origin;
    }

private:
    const Walls& walls_;
    std::size_t columns_x_;
};

/// One solid over all columns: its runs by centres, and the blocks that it touches.
struct SolidInColumns {
    ColumnLists<Crossing> crossings;
    InsideRule rule;
    std::vector<TouchedBlock> touched;
    /// The first of touched that has not been looked at.
    std::size_t next = 0;
};

void add_column(SolidInColumns& solid, std::size_t column, const BlockBoxes& boxes,
                ColumnUnion& together) {
    const std::vector<TouchedBlock>& touched = solid.touched;
    const std::size_t first = solid.next;
    std::size_t end = first;
    while (end < touched.size() && touched[end].column == column) ++end;
    solid.next = end;
    for (std::size_t i = first; i < end; ++i) {
        const TouchedBlock& block = touched[i];
        const double whole = volume_of(boxes.Of(column, block.layer));
        const double volume = without_slivers(block.volume, whole);
        if (block.crossing) {
            together.AddPart(block.layer, kUnsettled);
        } else if (volume == whole) {
            together.AddWhole(block.layer, block.layer + 1);
        } else if (volume > 0.0) {
            together.AddPart(block.layer, volume);
        }
    }
    // What the centres say holds for the blocks between those that are touched.
    std::size_t i = first;
    for_each_run(solid.crossings.Of(column), solid.rule, [&](std::uint32_t from, std::uint32_t to) {
        while (i < end && touched[i].layer < from) ++i;
        for (; i < end && touched[i].layer < to; ++i) {
            together.AddWhole(from, touched[i].layer);
            from = touched[i].layer + 1;
        }
        together.AddWhole(from, to);
    });
}

}  // namespace

std::optional<ColumnStretches> select_by_centres(const Selection& selection,
                                                 const PointGrid& centres, std::size_t most) {
    std::vector<std::pair<ColumnLists<Crossing>, InsideRule>> solids;
    for (const auto& solid : selection.Solids()) {
        auto crossings = crossings_of(*solid, centres, most);
        if (!crossings) return std::nullopt;
        solids.emplace_back(std::move(*crossings), solid->Rule());
    }
    ColumnStretches columns;
    ColumnUnion together;
    for (std::size_t column = 0; column < centres.Columns(); ++column) {
        if (solids.size() == 1) {
            for_each_run(solids[0].first.Of(column), solids[0].second,
                         [&](std::uint32_t from, std::uint32_t to) {
                             columns.Add({from, to, Stretch::kWhole});
                         });
            columns.EndColumn();
            continue;
        }
        for (auto& [crossings, rule] : solids) {
            for_each_run(crossings.Of(column), rule, [&](std::uint32_t from, std::uint32_t to) {
                together.AddWhole(from, to);
            });
        }
        together.Finish(columns, [](std::uint32_t) { return 0.0; });
    }
    return columns;
}

std::optional<ColumnStretches> select_by_volume(const Selection& selection, const Walls& walls,
                                                std::size_t most) {
    const PointGrid centres{centres_of(walls[0]), centres_of(walls[1]), centres_of(walls[2])};
    const BlockBoxes boxes(walls);
    std::vector<SolidInColumns> solids;
    for (const auto& solid : selection.Solids()) {
        BlockPieces pieces(walls, boxes.LocalOrigin());
        if (!pieces.Add(*solid, most)) return std::nullopt;
        auto crossings = crossings_of(*solid, centres, most);
        if (!crossings) return std::nullopt;
        solids.push_back({std::move(*crossings), solid->Rule(), pieces.Touched()});
    }
    ColumnStretches columns;
    ColumnUnion together;
    for (std::size_t column = 0; column < centres.Columns(); ++column) {
        for (SolidInColumns& solid : solids) add_column(solid, column, boxes, together);
        together.Finish(columns, [&](std::uint32_t layer) {
            const Box box = boxes.Of(column, layer);
            const double volume = selection.VolumeIn(box);
            return volume == volume_of(box) ? Stretch::kWhole : volume;
        });
    }
    return columns;
}

}  // namespace zol::engine::geometry
