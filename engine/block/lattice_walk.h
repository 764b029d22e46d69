// The walk over a full lattice: window by window, each a run of blocks in the file's order.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "engine/block/cell_window.h"
#include "engine/block/match_walk.h"

namespace zol::engine::block {

class LatticeWalk final : public MatchWalk {
public:
    LatticeWalk(const MatchRegion& region, const Axes& axes, const CellNumbering& numbering);

    Matched NotBefore(std::int64_t block) override;

private:
    /// By the order of the file: the fastest axis first, each counted as the file runs.
    using Places = std::array<std::int64_t, 3>;
    struct PlaceRange {
        Places first;
        Places end;
    };

    std::int64_t Count(std::size_t nth) const { return counts_[order_.axes[nth]]; }
    Places PlacesOf(std::int64_t block) const;
    std::int64_t BlockAt(const Places& places) const;
    /// From a cell to a place along one axis, and back.
    std::int64_t Turned(std::size_t nth, std::int64_t number) const;
    CellRange CellsOf(const PlaceRange& places) const;
    PlaceRange PlacesOf(const CellRange& cells) const;

    void ChooseSizes();
    bool HalveSizes();
    void OpenWindow(std::int64_t block);
    bool FindInWindow(Places& places, double& volume) const;
    bool FindInRow(Places& places, double& volume) const;
    bool FindInColumn(Places& places, double& volume) const;

    const MatchRegion& region_;
    const Axes& axes_;
    CellOrder order_;
    Cell counts_;
    CellRange allowed_;
    /// How many places a window spans. Below the first axis that it does not span whole
    /// it spans one, so that it is a run of blocks.
    Places sizes_{1, 1, 1};
    /// The blocks that the window spans, of which it may hold none.
    std::int64_t window_begin_ = 0;
    std::int64_t window_end_ = 0;
    std::optional<CellWindow> window_;
};

}  // namespace zol::engine::block
