#include "engine/block/match_walk.h"

#include <optional>
#include <utility>

#include "engine/block/cell_window.h"
#include "engine/block/lattice_walk.h"

namespace zol::engine::block {

namespace {

class EmptyWalk final : public MatchWalk {
public:
    explicit EmptyWalk(std::int64_t n_blocks) : n_blocks_(n_blocks) {}

    Matched NotBefore(std::int64_t /*block*/) override { return {n_blocks_, Matched::kWhole}; }

private:
    std::int64_t n_blocks_;
};

/// Block by block, each asked for by itself: for boxes on no lattice, and where nothing but
/// an extent selects.
class BoxWalk final : public MatchWalk {
public:
    BoxWalk(const MatchRegion& region, Geometry& geometry) : region_(region), geometry_(geometry) {}

    Matched NotBefore(std::int64_t block) override {
        const std::int64_t n_blocks = geometry_.NBlocks();
        for (; block < n_blocks; ++block) {
            const std::optional<double> volume =
                region_.IsExact() ? ByVolume(box_of(geometry_.BlockExtent(block)))
                                  : ByCentre(box_of(geometry_.BlockExtent(block)));
            if (volume) return {block, *volume};
        }
        return {n_blocks, Matched::kWhole};
    }

private:
    std::optional<double> ByCentre(const geometry::Box& box) const {
        const geometry::Point centre = geometry::middle_of(box);
        if (!region_.IsWithinLimits(centre)) return std::nullopt;
        if (region_.HasMeshes() && !region_.Meshes().Contains(centre)) return std::nullopt;
        return Matched::kWhole;
    }

    std::optional<double> ByVolume(const geometry::Box& block) const {
        const geometry::Box box = region_.Counted(block);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            if (!(box.lower[axis] < box.upper[axis])) return std::nullopt;
        }
        if (!region_.HasMeshes()) return Matched::kWhole;
        const double volume = region_.Meshes().VolumeIn(box);
        if (!(volume > 0.0)) return std::nullopt;
        return volume == geometry::volume_of(box) ? Matched::kWhole : volume;
    }

    const MatchRegion& region_;
    Geometry& geometry_;
};

/// Over a lattice with gaps, whose cells have all been looked at before the first block.
class CellWalk final : public MatchWalk {
public:
    CellWalk(CellWindow window, Geometry& geometry)
        : window_(std::move(window)), geometry_(geometry) {}

    Matched NotBefore(std::int64_t block) override {
        const std::int64_t n_blocks = geometry_.NBlocks();
        for (; block < n_blocks; ++block) {
            const Cell cell = geometry_.CellOf(block);
            if (!window_.Range().Holds(cell)) continue;
            if (const geometry::Stretch* const stretch = window_.Find(cell)) {
                return {block, stretch->volume};
            }
        }
        return {n_blocks, Matched::kWhole};
    }

private:
    CellWindow window_;
    Geometry& geometry_;
};

/// The window of all cells, if there are not too many for one.
std::optional<CellWindow> window_of_all(const MatchRegion& region, const Axes& axes) {
    const CellRange range = cells_within_limits(region, axes);
    if (range.IsEmpty() || !CellWindow::MayHold({range.Count(0), range.Count(1), range.Count(2)})) {
        return std::nullopt;
    }
    // Once for all blocks, so it may cost more memory than one window of many.
    constexpr std::size_t kMost = 4;
    return CellWindow::Over(region, axes, range, kMost);
}

}  // namespace

std::unique_ptr<MatchWalk> walk_over(const MatchRegion& region, Geometry& geometry) {
    if (region.IsEmpty()) return std::make_unique<EmptyWalk>(geometry.NBlocks());
    const Axes* const axes = region.HasMeshes() ? geometry.Axes() : nullptr;
    if (axes != nullptr) {
        if (const CellNumbering* const numbering = geometry.Numbering()) {
            return std::make_unique<LatticeWalk>(region, *axes, *numbering);
        }
        if (auto window = window_of_all(region, *axes)) {
            return std::make_unique<CellWalk>(std::move(*window), geometry);
        }
    }
    return std::make_unique<BoxWalk>(region, geometry);
}

}  // namespace zol::engine::block
