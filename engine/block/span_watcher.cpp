#include "engine/block/span_watcher.h"

#include <cmath>
#include <utility>

namespace zol::engine::block {

SpanWatcher::SpanWatcher(RowPlacing placing, const Constants& constants)
    : placing_(std::move(placing)), constants_(constants) {}

const char* SpanWatcher::Row(const std::vector<double>& values, std::size_t& column) {
    bool moved = first_row_;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        // Rows follow each other along an axis; most numbers of the others repeat.
        if (!first_row_ && placing_.IsSame(values, last_values_, axis)) {
            continue;
        }
        if (const char* fault = placing_.Fault(values, axis, column)) {
            return fault;
        }
        moved = true;
        if (!placing_.IsRotated()) {
            spans_[axis].Add(placing_.PlaceAxis(values, axis));
        }
    }
    if (moved && placing_.IsRotated()) {
        AddTurned(placing_.Place(values));
    }
    for (std::size_t i = 0; i < constants_.size(); ++i) {
        column = constants_[i];
        if (column == AxisReading::kNone) {
            continue;
        }
        if (first_row_) {
            constant_values_[i] = values[column];
        } else if (values[column] != constant_values_[i]) {
            return "is not the same as in the rows before";
        }
    }
    first_row_ = false;
    last_values_ = values;
    return nullptr;
}

void SpanWatcher::AddTurned(Spans spans) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        // Turning leaves rounding noise, which would make every centroid a new one.
        const double grain = spans[axis].size * 1e-6;
        spans[axis].centroid = std::round(spans[axis].centroid / grain) * grain;
        spans_[axis].Add(spans[axis]);
    }
}

}  // namespace zol::engine::block
