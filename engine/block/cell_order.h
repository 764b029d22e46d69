// In which order the cells of a full lattice follow each other.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "engine/formats/json.h"

namespace zol::engine::block {

/// Cell (i, j, k), counted from 0 along x, y and z.
using Cell = std::array<std::int64_t, 3>;

struct CellOrder {
    /// Axes (0 is x) from the fastest to the slowest.
    std::array<std::size_t, 3> axes{0, 1, 2};
    /// By axis: true when the file goes from the upper end to the lower.
    std::array<bool, 3> turned{false, false, false};
};

/// "xyz" is x fastest and z slowest; a minus turns the axis behind it, as in "xy-z".
/// Nothing when the text is not the three axes, each once.
std::optional<CellOrder> parse_cell_order(std::string_view text);

/// The order that a sidecar states; throws ReadError that names the place.
CellOrder read_cell_order(const JsonValue& value);

/// Cells by their ordinal in the file, and back.
class CellNumbering {
public:
    /// The product of `counts`, each at least 1, fits 63 bits.
    CellNumbering(const CellOrder& order, const Cell& counts);

    std::int64_t NCells() const { return counts_[0] * counts_[1] * counts_[2]; }
    const Cell& Counts() const { return counts_; }
    const CellOrder& Order() const { return order_; }

    Cell CellAt(std::int64_t ordinal) const;
    std::int64_t OrdinalOf(const Cell& cell) const;

private:
    CellOrder order_;
    Cell counts_;
};

}  // namespace zol::engine::block
