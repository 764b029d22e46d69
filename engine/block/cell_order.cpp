#include "engine/block/cell_order.h"

#include <string>

namespace zol::engine::block {

std::optional<CellOrder> parse_cell_order(std::string_view text) {
    CellOrder order;
    std::array<bool, 3> seen{false, false, false};
    std::size_t next = 0;
    bool minus = false;
    for (const char c : text) {
        if (c == '-' && !minus) {
            minus = true;
            continue;
        }
        const std::size_t axis = std::string_view("xyz").find(c);
        if (axis == std::string_view::npos || seen[axis]) return std::nullopt;
        seen[axis] = true;
        order.axes[next++] = axis;
        order.turned[axis] = minus;
        minus = false;
    }
    if (next != 3 || minus) return std::nullopt;
    return order;
}

CellOrder read_cell_order(const JsonValue& value) {
    const std::optional<CellOrder> order = parse_cell_order(value.Text());
    if (!order) {
        value.Refuse(
            "is no order of cells: x, y and z are expected, each once, the fastest first, with "
            "a minus before an axis that runs downward");
    }
    return *order;
}

CellNumbering::CellNumbering(const CellOrder& order, const Cell& counts)
    : order_(order), counts_(counts) {}

Cell CellNumbering::CellAt(std::int64_t ordinal) const {
    Cell cell{};
    for (const std::size_t axis : order_.axes) {
        const std::int64_t along = ordinal % counts_[axis];
        ordinal /= counts_[axis];
        cell[axis] = order_.turned[axis] ? counts_[axis] - 1 - along : along;
    }
    return cell;
}

std::int64_t CellNumbering::OrdinalOf(const Cell& cell) const {
    std::int64_t ordinal = 0;
    for (std::size_t i = 3; i-- > 0;) {
        const std::size_t axis = order_.axes[i];
        const std::int64_t along =
            order_.turned[axis] ? counts_[axis] - 1 - cell[axis] : cell[axis];
        ordinal = ordinal * counts_[axis] + along;
    }
    return ordinal;
}

}  // namespace zol::engine::block
