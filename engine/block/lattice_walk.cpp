#include "engine/block/lattice_walk.h"

#include <algorithm>

namespace zol::engine::block {

LatticeWalk::LatticeWalk(const MatchRegion& region, const Axes& axes,
                         const CellNumbering& numbering)
    : region_(region),
      axes_(axes),
      order_(numbering.Order()),
      counts_(numbering.Counts()),
      allowed_(cells_within_limits(region, axes)) {
    ChooseSizes();
}

LatticeWalk::Places LatticeWalk::PlacesOf(std::int64_t block) const {
    const std::int64_t row = block / Count(0);
    return {block % Count(0), row % Count(1), row / Count(1)};
}

std::int64_t LatticeWalk::BlockAt(const Places& places) const {
    return places[0] + Count(0) * (places[1] + Count(1) * places[2]);
}

std::int64_t LatticeWalk::Turned(std::size_t nth, std::int64_t number) const {
    return order_.turned[order_.axes[nth]] ? Count(nth) - 1 - number : number;
}

CellRange LatticeWalk::CellsOf(const PlaceRange& places) const {
    CellRange cells{};
    for (std::size_t nth = 0; nth < 3; ++nth) {
        const std::int64_t one = Turned(nth, places.first[nth]);
        const std::int64_t other = Turned(nth, places.end[nth] - 1);
        cells.first[order_.axes[nth]] = std::min(one, other);
        cells.end[order_.axes[nth]] = std::max(one, other) + 1;
    }
    return cells;
}

LatticeWalk::PlaceRange LatticeWalk::PlacesOf(const CellRange& cells) const {
    PlaceRange places{};
    for (std::size_t nth = 0; nth < 3; ++nth) {
        const std::int64_t one = Turned(nth, cells.first[order_.axes[nth]]);
        const std::int64_t other = Turned(nth, cells.end[order_.axes[nth]] - 1);
        places.first[nth] = std::min(one, other);
        places.end[nth] = std::max(one, other) + 1;
    }
    return places;
}

/// As many blocks to a window as it may hold: whole axes from the fastest on.
void LatticeWalk::ChooseSizes() {
    for (std::size_t nth = 0; nth < 3; ++nth) {
        const auto fits = [&](std::int64_t size) {
            Cell spans{1, 1, 1};
            for (std::size_t faster = 0; faster < nth; ++faster) {
                spans[order_.axes[faster]] = sizes_[faster];
            }
            spans[order_.axes[nth]] = size;
            return CellWindow::MayHold(spans);
        };
        std::int64_t size = Count(nth);
        while (size > 1 && !fits(size)) size -= size / 2;
        sizes_[nth] = size;
        if (size < Count(nth)) return;
    }
}

bool LatticeWalk::HalveSizes() {
    for (std::size_t nth = 3; nth-- > 0;) {
        if (sizes_[nth] > 1) {
            sizes_[nth] -= sizes_[nth] / 2;
            return true;
        }
    }
    return false;
}

/// The window that begins at the row or plane of a block, which it holds.
void LatticeWalk::OpenWindow(std::int64_t block) {
    window_.reset();
    // Beyond this a window that has one block is taken all the same.
    constexpr std::size_t kAnyNumber = ~std::size_t{0};
    for (std::size_t most = 1;;) {
        PlaceRange places{PlacesOf(block), {}};
        for (std::size_t nth = 0; nth < 3; ++nth) {
            if (sizes_[nth] == Count(nth)) places.first[nth] = 0;
            places.end[nth] = std::min(places.first[nth] + sizes_[nth], Count(nth));
        }
        window_begin_ = BlockAt(places.first);
        window_end_ = BlockAt({places.end[0] - 1, places.end[1] - 1, places.end[2] - 1}) + 1;
        const CellRange cells = CellsOf(places).And(allowed_);
        if (cells.IsEmpty()) return;
        window_ = CellWindow::Over(region_, axes_, cells, most);
        if (window_) return;
        if (!HalveSizes()) most = kAnyNumber;
    }
}

Matched LatticeWalk::NotBefore(std::int64_t block) {
    const std::int64_t n_blocks = Count(0) * Count(1) * Count(2);
    while (block < n_blocks) {
        if (block < window_begin_ || block >= window_end_) OpenWindow(block);
        if (window_) {
            Places places = PlacesOf(block);
            Matched matched{n_blocks, Matched::kWhole};
            if (FindInWindow(places, matched.volume)) {
                matched.block = BlockAt(places);
                return matched;
            }
        }
        block = window_end_;
    }
    return {n_blocks, Matched::kWhole};
}

/// Moves to the first place from `places` on that is selected.
bool LatticeWalk::FindInWindow(Places& places, double& volume) const {
    const PlaceRange range = PlacesOf(window_->Range());
    // The first place of the range that is not before `places`.
    for (std::size_t nth = 3; nth-- > 0;) {
        if (places[nth] >= range.first[nth] && places[nth] < range.end[nth]) continue;
        const bool is_behind = places[nth] >= range.end[nth];
        for (std::size_t faster = 0; faster <= nth; ++faster) places[faster] = range.first[faster];
        if (!is_behind) break;
        for (++nth; nth < 3; ++nth) {
            if (++places[nth] < range.end[nth]) break;
            places[nth] = range.first[nth];
        }
        if (nth == 3) return false;
        break;
    }
    const bool by_columns = order_.axes[0] == 2;
    while (true) {
        if (by_columns ? FindInColumn(places, volume) : FindInRow(places, volume)) return true;
        places[0] = range.first[0];
        if (++places[1] < range.end[1]) continue;
        places[1] = range.first[1];
        if (++places[2] >= range.end[2]) return false;
    }
}

/// Along a row that runs across columns, each asked for the same layer.
bool LatticeWalk::FindInRow(Places& places, double& volume) const {
    Cell cell{};
    for (std::size_t nth = 0; nth < 3; ++nth) cell[order_.axes[nth]] = Turned(nth, places[nth]);
    const std::size_t axis = order_.axes[0];
    const std::int64_t step = order_.turned[axis] ? -1 : 1;
    const std::int64_t first = window_->Range().first[axis];
    const std::int64_t end = window_->Range().end[axis];
    for (; cell[axis] >= first && cell[axis] < end; cell[axis] += step) {
        if (const geometry::Stretch* const stretch = window_->Find(cell)) {
            places[0] = Turned(0, cell[axis]);
            volume = stretch->volume;
            return true;
        }
    }
    return false;
}

/// Along a column, from stretch to stretch.
bool LatticeWalk::FindInColumn(Places& places, double& volume) const {
    Cell cell{};
    for (std::size_t nth = 0; nth < 3; ++nth) cell[order_.axes[nth]] = Turned(nth, places[nth]);
    const std::int64_t bottom = window_->Range().first[2];
    const std::int64_t layer = cell[2] - bottom;
    const auto stretches = window_->Columns().Of(window_->ColumnOf(cell[0], cell[1]));
    const geometry::Stretch* found = nullptr;
    std::int64_t at = 0;
    if (order_.turned[2]) {
        for (const geometry::Stretch& stretch : stretches) {
            if (std::int64_t{stretch.first} > layer) break;
            found = &stretch;
            at = std::min(layer, std::int64_t{stretch.end} - 1);
        }
    } else {
        for (const geometry::Stretch& stretch : stretches) {
            if (std::int64_t{stretch.end} <= layer) continue;
            found = &stretch;
            at = std::max(layer, std::int64_t{stretch.first});
            break;
        }
    }
    if (found == nullptr) return false;
    places[0] = Turned(0, at + bottom);
    volume = found->volume;
    return true;
}

}  // namespace zol::engine::block
