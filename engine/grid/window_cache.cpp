#include "engine/grid/window_cache.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace zol::engine::grid {

namespace {

// About 256 KiB of floats: more would be read in vain for a single node, less would
// cost more for its own sake than for its values.
constexpr std::int32_t kTileSide = 256;
constexpr std::int64_t kTileCells = std::int64_t{kTileSide} * kTileSide;

// Windows read again in one direction before a walk is believed.
constexpr int kReadAgainToBelieve = 4;

// A bound for what is remembered of a grid with very many windows; to forget all of it
// only delays the noticing of a walk.
constexpr std::size_t kMostRemembered = 65536;

/// The greatest multiple of `block` that is within `wanted`, at least one block and at
/// most `limit`.
std::int32_t whole_blocks(std::int64_t wanted, std::int32_t block, std::int32_t limit) {
    const std::int64_t blocks = std::max<std::int64_t>(wanted / block, 1);
    return static_cast<std::int32_t>(std::min<std::int64_t>(blocks * block, limit));
}

/// The same, but less than a block when less is wanted.
std::int32_t part_blocks(std::int64_t wanted, std::int32_t block, std::int32_t limit) {
    const std::int64_t width = wanted >= block ? wanted / block * block : wanted;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(width, 1, limit));
}

}  // namespace

WindowCache::WindowCache(std::unique_ptr<NodeReader> reader, std::int32_t columns,
                         std::int32_t rows, std::size_t most_bytes)
    : reader_(std::move(reader)),
      whole_{columns, rows},
      block_(reader_->Block()),
      narrow_(reader_->IsNarrow()) {
    const std::size_t cell_bytes = (narrow_ ? sizeof(float) : sizeof(double)) + 1;
    most_cells_ = std::max<std::size_t>(most_bytes / cell_bytes, 1);
    shape_ = TileShape();
}

WindowCache::Shape WindowCache::TileShape() const {
    // A quarter, so that a walk has room for more than the window that it is in.
    const auto most = static_cast<std::int64_t>(most_cells_ / 4 + 1);
    Shape tile;
    tile.columns = whole_blocks(kTileSide, block_.columns, whole_.columns);
    tile.columns = part_blocks(std::min<std::int64_t>(tile.columns, most), 1, whole_.columns);
    tile.rows = whole_blocks(kTileCells / tile.columns, block_.rows, whole_.rows);
    tile.rows =
        part_blocks(std::min<std::int64_t>(tile.rows, most / tile.columns), block_.rows, tile.rows);
    return tile;
}

WindowCache::Shape WindowCache::BandShape(Walk walk) const {
    const auto most = static_cast<std::int64_t>(most_cells_);
    Shape band = whole_;
    if (walk == Walk::AlongRows) {
        band.columns = static_cast<std::int32_t>(std::min<std::int64_t>(band.columns, most));
        band.rows = part_blocks(most / band.columns, block_.rows, whole_.rows);
    } else {
        band.rows = static_cast<std::int32_t>(std::min<std::int64_t>(band.rows, most));
        band.columns = part_blocks(most / band.rows, block_.columns, whole_.columns);
    }
    return band;
}

WindowCache::Key WindowCache::KeyOf(std::int32_t column, std::int32_t row) const {
    // Neighbours in the direction of a walk have neighbouring keys.
    if (bands_ == Walk::DownColumns) {
        const Key down = (Key{whole_.rows} + shape_.rows - 1) / shape_.rows;
        return column / shape_.columns * down + row / shape_.rows;
    }
    const Key across = (Key{whole_.columns} + shape_.columns - 1) / shape_.columns;
    return row / shape_.rows * across + column / shape_.columns;
}

Area WindowCache::AreaAt(std::int32_t column, std::int32_t row) const {
    Area area;
    area.column = column - column % shape_.columns;
    area.row = row - row % shape_.rows;
    area.columns = std::min(shape_.columns, whole_.columns - area.column);
    area.rows = std::min(shape_.rows, whole_.rows - area.row);
    return area;
}

void WindowCache::ChangeShape(Walk bands) {
    bands_ = bands;
    shape_ = bands == Walk::None ? TileShape() : BandShape(bands);
    windows_.clear();
    by_key_.clear();
    slots_made_ = 0;
    free_slots_.clear();
    read_once_.clear();
    read_again_ = 0;
}

/// Looks at a miss for the direction of a walk, and chooses the shape of windows by it.
void WindowCache::Follow(std::int32_t column, std::int32_t row) {
    const Key key = KeyOf(column, row);
    const std::int64_t across = std::abs(std::int64_t{column} - last_column_);
    const std::int64_t along = std::abs(std::int64_t{row} - last_row_);
    const Walk walk = across > 8 * along   ? Walk::AlongRows
                      : along > 8 * across ? Walk::DownColumns
                                           : Walk::None;
    const bool again = read_once_.contains(key);
    if (bands_ != Walk::None) {
        // A walk in the direction of the bands goes from each to its neighbour and never
        // comes back. After any other step tiles do better.
        if (again || (!read_once_.empty() && std::abs(key - last_key_) != 1)) {
            ChangeShape(Walk::None);
        }
    } else {
        const bool goes_on = again && walk != Walk::None && walk == last_walk_;
        read_again_ = goes_on ? read_again_ + 1 : 0;
        if (read_again_ >= kReadAgainToBelieve) {
            ChangeShape(walk);
        }
    }
    last_key_ = KeyOf(column, row);
    last_column_ = column;
    last_row_ = row;
    last_walk_ = walk;
}

std::size_t WindowCache::SlotCells() const {
    return Area{0, 0, shape_.columns, shape_.rows}.Cells();
}

void WindowCache::TakeMemory() {
    // No more than the tiles of the whole grid need; bands come only where that is more.
    const Key across = (Key{whole_.columns} + shape_.columns - 1) / shape_.columns;
    const Key down = (Key{whole_.rows} + shape_.rows - 1) / shape_.rows;
    const auto slots = static_cast<std::size_t>(across) * static_cast<std::size_t>(down);
    const std::size_t cells = slots > most_cells_ / SlotCells() ? most_cells_ : slots * SlotCells();
    if (narrow_) {
        floats_ = std::make_unique_for_overwrite<float[]>(cells);
    } else {
        doubles_ = std::make_unique_for_overwrite<double[]>(cells);
    }
    flags_ = std::make_unique_for_overwrite<std::uint8_t[]>(cells);
}

/// A slot that was never used, or that of the window that was used longest ago.
void WindowCache::MakeFreeSlot() {
    if ((slots_made_ + 1) * SlotCells() <= most_cells_) {
        free_slots_.push_back(slots_made_++);
        return;
    }
    const Entry& oldest = windows_.back();
    free_slots_.push_back(oldest.slot);
    by_key_.erase(oldest.key);
    windows_.pop_back();
}

Window WindowCache::MakeWindow(std::size_t slot, const Area& area) const {
    const std::size_t start = slot * SlotCells();
    Window window;
    window.area = area;
    window.floats = narrow_ ? floats_.get() + start : nullptr;
    window.doubles = narrow_ ? nullptr : doubles_.get() + start;
    window.flags = flags_.get() + start;
    return window;
}

const Window& WindowCache::Load(std::int32_t column, std::int32_t row) {
    if (!flags_) {
        TakeMemory();
    }
    Follow(column, row);
    if (free_slots_.empty()) {
        MakeFreeSlot();
    }
    const std::size_t slot = free_slots_.back();
    Window window = MakeWindow(slot, AreaAt(column, row));
    reader_->Read(window);

    const Key key = KeyOf(column, row);
    if (read_once_.size() >= kMostRemembered) {
        read_once_.clear();
    }
    read_once_.insert(key);
    // Listed only when nothing can fail any more: memory may run out on the way.
    std::list<Entry> entry{{key, slot, window}};
    by_key_[key] = entry.begin();
    windows_.splice(windows_.begin(), entry);
    free_slots_.pop_back();
    return windows_.front().window;
}

const Window& WindowCache::Find(std::int32_t column, std::int32_t row) {
    const auto found = by_key_.find(KeyOf(column, row));
    if (found == by_key_.end()) {
        return Load(column, row);
    }
    windows_.splice(windows_.begin(), windows_, found->second);
    return windows_.front().window;
}

}  // namespace zol::engine::grid
