// Which blocks of a grid a selection takes, and how much of each: all of them at one go.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "engine/geometry/block_pieces.h"
#include "engine/geometry/column_sweep.h"
#include "engine/geometry/selection.h"

namespace zol::engine::geometry {

/// Neighbouring blocks of one column that answer alike.
struct Stretch {
    static constexpr double kWhole = -1.0;

    std::uint32_t first;
    std::uint32_t end;
    /// What is selected of the one block, or kWhole for any number of whole ones.
    double volume;
};

/// The stretches of each column, upwards and apart from each other. Memory follows the
/// surface, not the blocks.
class ColumnStretches {
public:
    std::span<const Stretch> Of(std::size_t column) const {
        return std::span(stretches_)
            .subspan(starts_[column], starts_[column + 1] - starts_[column]);
    }
    /// The stretch that holds a layer, or null.
    const Stretch* Find(std::size_t column, std::uint32_t layer) const {
        for (std::uint32_t i = starts_[column]; i < starts_[column + 1]; ++i) {
            if (layer < stretches_[i].end) {
                return layer >= stretches_[i].first ? &stretches_[i] : nullptr;
            }
        }
        return nullptr;
    }

    void Add(const Stretch& stretch) { stretches_.push_back(stretch); }
    /// Behind the stretches of each column.
    void EndColumn() { starts_.push_back(static_cast<std::uint32_t>(stretches_.size())); }

private:
    std::vector<std::uint32_t> starts_{0};
    std::vector<Stretch> stretches_;
};

/// Blocks whose centres are selected. Nothing when the surfaces cross the columns more than
/// `most` times; that is for the caller to ask about fewer columns.
std::optional<ColumnStretches> select_by_centres(const Selection& selection,
                                                 const PointGrid& centres, std::size_t most);

/// Blocks of which something is selected, without slivers (selection.h). Nothing when the
/// triangles are cut into more than `most` pieces.
std::optional<ColumnStretches> select_by_volume(const Selection& selection, const Walls& walls,
                                                std::size_t most);

}  // namespace zol::engine::geometry
