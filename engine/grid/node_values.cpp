#include "engine/grid/node_values.h"

#include <utility>

#include "engine/formats/diagnostics.h"
#include "engine/formats/read_error.h"
#include "support/floating_point.h"

namespace zol::engine::grid {

NodeValues::NodeValues(Source source, std::string reported_as)
    : x_(source.lattice.x),
      y_(source.lattice.y),
      reported_as_(std::move(reported_as)),
      windows_(std::move(source.nodes), x_.count, y_.count) {}

void NodeValues::Use(const Window& window) {
    const Area& area = window.area;
    const std::int32_t west = x_.turned ? x_.count - area.column - area.columns : area.column;
    const std::int32_t south = y_.turned ? y_.count - area.row - area.rows : area.row;
    west_ = static_cast<std::uint32_t>(west);
    south_ = static_cast<std::uint32_t>(south);
    width_ = static_cast<std::uint32_t>(area.columns);
    height_ = static_cast<std::uint32_t>(area.rows);
    const std::ptrdiff_t columns = area.columns;
    column_step_ = x_.turned ? -1 : 1;
    row_step_ = y_.turned ? -columns : columns;
    origin_ = (y_.turned ? (area.rows - 1) * columns : 0) + (x_.turned ? columns - 1 : 0);
    floats_ = window.floats;
    doubles_ = window.doubles;
    flags_ = window.is_flagged ? window.flags : nullptr;
}

bool NodeValues::GetFromNext(std::int32_t column, std::int32_t row, double& value, bool& masked) {
    if (column < 0 || column >= x_.count || row < 0 || row >= y_.count) {
        return false;
    }
    const support::UsualFloatingPoint usual;
    // No window is in use while the cache may be letting go of it.
    width_ = 0;
    try {
        Use(windows_.Find(x_.turned ? x_.count - 1 - column : column,
                          y_.turned ? y_.count - 1 - row : row));
    } catch (const ReadError& error) {
        if (!failure_reported_) {
            failure_reported_ = true;
            report(reported_as_, std::string(error.what()) + "; nodes can't be read any more");
        }
        return false;
    }
    return Get(column, row, value, masked);
}

bool NodeValues::GetSpecialCell(std::ptrdiff_t cell, double& value) const {
    const support::UsualFloatingPoint usual;
    // Kept from being widened ahead of the line above.
    const volatile float kept = floats_[cell];
    value = double{kept};
    return true;
}

}  // namespace zol::engine::grid
