#include "engine/block/span_watcher.h"

#include <cmath>
#include <utility>

namespace zol::engine::block {

SpanWatcher::SpanWatcher(RowPlacing placing, const Constants& constants)
    : placing_(std::move(placing)), constants_(constants) {}

const char* SpanWatcher::Row(const std::vector<double>& values, std::size_t& column) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (const char* fault = placing_.Fault(values, axis, column)) {
            return fault;
        }
    }
    for (std::size_t i = 0; i < constants_.size(); ++i) {
        column = constants_[i];
        if (column != AxisReading::kNone && first_row_) {
            constant_values_[i] = values[column];
        } else if (column != AxisReading::kNone && values[column] != constant_values_[i]) {
            return "is not the same as in the rows before";
        }
    }
    first_row_ = false;
    const Spans spans = placing_.Place(values);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        Span span = spans[axis];
        if (placing_.IsRotated()) {
            // Turning leaves rounding noise, which would make every centroid a new one.
            const double grain = span.size * 1e-6;
            span.centroid = std::round(span.centroid / grain) * grain;
        }
        spans_[axis].Add(span);
    }
    return nullptr;
}

}  // namespace zol::engine::block
