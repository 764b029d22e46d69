// Keeps the windows of a grid that were read last, within a bound in bytes, whatever the
// order in which nodes are asked for.
//
// Windows are tiles at first: whole blocks of the file. When more tiles lie in the way of
// a walk than the bound allows, each is read again and again; a walk along rows or down
// columns is noticed by that, and windows become bands in its direction, as wide as the
// bound allows, which such a walk enters once each.
#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "engine/grid/node_reader.h"

namespace zol::engine::grid {

class WindowCache {
public:
    static constexpr std::size_t kMostBytes = std::size_t{40} << 20;

    WindowCache(std::unique_ptr<NodeReader> reader, std::int32_t columns, std::int32_t rows,
                std::size_t most_bytes = kMostBytes);

    /// The window that holds a cell of the grid; stays until the next call. Throws
    /// ReadError, and keeps nothing of a window that could not be read.
    const Window& Find(std::int32_t column, std::int32_t row);

private:
    using Shape = NodeReader::Shape;
    using Key = std::int64_t;
    enum class Walk { None, AlongRows, DownColumns };

    struct Entry {
        Key key;
        /// Which of the equal pieces of memory the window lies in.
        std::size_t slot;
        Window window;
    };

    Shape TileShape() const;
    Shape BandShape(Walk walk) const;
    Key KeyOf(std::int32_t column, std::int32_t row) const;
    void ChangeShape(Walk bands);
    void Follow(std::int32_t column, std::int32_t row);
    Area AreaAt(std::int32_t column, std::int32_t row) const;
    std::size_t SlotCells() const;
    void TakeMemory();
    void MakeFreeSlot();
    Window MakeWindow(std::size_t slot, const Area& area) const;
    const Window& Load(std::int32_t column, std::int32_t row);

    std::unique_ptr<NodeReader> reader_;
    Shape whole_;
    Shape block_;
    std::size_t most_cells_;
    bool narrow_;

    Shape shape_;
    Walk bands_ = Walk::None;
    /// Last used first.
    std::list<Entry> windows_;
    std::unordered_map<Key, std::list<Entry>::iterator> by_key_;
    /// Of all windows, whatever their shape: taken once and given back at the end, so that
    /// nothing is left over between windows that come and go. Touched as far as it is used.
    std::unique_ptr<float[]> floats_;
    std::unique_ptr<double[]> doubles_;
    std::unique_ptr<std::uint8_t[]> flags_;
    std::size_t slots_made_ = 0;
    std::vector<std::size_t> free_slots_;

    /// Windows read since the shape was chosen, held or not.
    std::unordered_set<Key> read_once_;
    Key last_key_ = 0;
    std::int32_t last_column_ = 0;
    std::int32_t last_row_ = 0;
    Walk last_walk_ = Walk::None;
    int read_again_ = 0;
};

}  // namespace zol::engine::grid
