#include "engine/block/span_watcher.h"

#include <cmath>
#include <utility>

namespace zol::engine::block {

SpanWatcher::SpanWatcher(RowPlacing placing, const Constants& constants)
    : placing_(std::move(placing)), constants_(constants) {}

// One axis after the other, each as far as the rows in front of the first fault: so it
// is the first row's fault that is told, and of one row the first axis's.
RowWatcher::Fault SpanWatcher::Rows(const std::vector<std::vector<double>>& columns,
                                    std::size_t count) {
    values_.resize(columns.size());
    Fault fault;
    fault.row = count;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        WatchAxis(columns, axis, fault);
    }
    if (placing_.IsRotated()) {
        for (std::size_t row = 0; row < fault.row; ++row) {
            AddTurned(columns, row);
        }
    }
    for (std::size_t i = 0; i < constants_.size(); ++i) {
        if (constants_[i] != AxisReading::kNone) {
            WatchConstant(columns[constants_[i]], i, fault);
        }
    }
    saw_rows_ = saw_rows_ || count > 0;
    return fault;
}

void SpanWatcher::WatchAxis(const Columns& columns, std::size_t axis, Fault& fault) {
    const std::array<std::size_t, 2> places = placing_.PlacesOf(axis);
    const bool turned = placing_.IsRotated();
    const auto look_at = [&](std::size_t row) {
        std::size_t column = 0;
        if (const char* reason = placing_.Fault(values_, axis, column)) {
            fault = {row, column, reason};
        } else if (!turned) {
            spans_[axis].Add(placing_.PlaceAxis(values_, axis));
        }
    };
    // One number may be all there is, or none: then every block spans the same.
    const std::size_t first = places[0] != AxisReading::kNone ? places[0] : places[1];
    const std::size_t second = places[1] != AxisReading::kNone ? places[1] : first;
    if (first == AxisReading::kNone) {
        if (fault.row > 0) {
            look_at(0);
        }
        return;
    }
    const double* const a = columns[first].data();
    const double* const b = columns[second].data();
    for (std::size_t row = 0; row < fault.row; ++row) {
        // Rows follow each other along an axis; most numbers of the others repeat.
        if (row > 0 && a[row] == a[row - 1] && b[row] == b[row - 1]) {
            continue;
        }
        values_[first] = a[row];
        values_[second] = b[row];
        look_at(row);
    }
}

void SpanWatcher::AddTurned(const Columns& columns, std::size_t row) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        values_[i] = columns[i][row];
    }
    Spans spans = placing_.Place(values_);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        // Turning leaves rounding noise, which would make every centroid a new one.
        const double grain = spans[axis].size * 1e-6;
        spans[axis].centroid = std::round(spans[axis].centroid / grain) * grain;
        spans_[axis].Add(spans[axis]);
    }
}

void SpanWatcher::WatchConstant(const std::vector<double>& numbers, std::size_t i, Fault& fault) {
    for (std::size_t row = 0; row < fault.row; ++row) {
        if (row == 0 && !saw_rows_) {
            constant_values_[i] = numbers[row];
        } else if (numbers[row] != constant_values_[i]) {
            fault = {row, constants_[i], "is not the same as in the rows before"};
        }
    }
}

}  // namespace zol::engine::block
