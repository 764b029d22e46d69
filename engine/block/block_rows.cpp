#include "engine/block/block_rows.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zol::engine::block {

namespace {

double index_of(const AxisReading& axis, double number) {
    if (axis.kind == AxisReading::Kind::Index) {
        return number;
    }
    const double divided = std::floor((number - static_cast<double>(axis.first_number)) /
                                      static_cast<double>(axis.divisor));
    return std::fmod(divided, static_cast<double>(axis.modulus));
}

}  // namespace

RowPlacing::RowPlacing(const AxisReadings& axes, const Placement* rotated)
    : axes_(axes),
      rotated_(rotated != nullptr),
      placement_(rotated != nullptr ? *rotated : Placement()) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        first_[axis] = PlaceOf(axes_[axis].first);
        second_[axis] = PlaceOf(axes_[axis].second);
    }
}

std::size_t RowPlacing::PlaceOf(std::size_t column) {
    if (column == AxisReading::kNone) {
        return AxisReading::kNone;
    }
    const auto known = std::find(columns_.begin(), columns_.end(), column);
    if (known != columns_.end()) {
        return static_cast<std::size_t>(known - columns_.begin());
    }
    columns_.push_back(column);
    return columns_.size() - 1;
}

Span RowPlacing::Read(const std::vector<double>& values, std::size_t axis) const {
    const AxisReading& reading = axes_[axis];
    const double first = first_[axis] == AxisReading::kNone ? 0.0 : values[first_[axis]];
    const double size =
        second_[axis] == AxisReading::kNone ? reading.fixed_size : values[second_[axis]];
    switch (reading.kind) {
        case AxisReading::Kind::Same:
        case AxisReading::Kind::Centroid:
            return {first, size};
        case AxisReading::Kind::LowerEdge:
            return {first + size / 2, size};
        case AxisReading::Kind::Edges:
            // Here the second number is the upper edge.
            return {first + (size - first) / 2, size - first};
        case AxisReading::Kind::Index:
        case AxisReading::Kind::CellNumber:
            break;
    }
    return {index_of(reading, first), size};
}

Span RowPlacing::PlaceAxis(const std::vector<double>& values, std::size_t axis) const {
    Span span = Read(values, axis);
    span.centroid = span.centroid * axes_[axis].scale + axes_[axis].offset;
    return span;
}

Spans RowPlacing::Place(const std::vector<double>& values) const {
    Spans spans;
    if (!rotated_) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            spans[axis] = PlaceAxis(values, axis);
        }
        return spans;
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
        spans[axis] = Read(values, axis);
    }
    const geometry::Coord3D model =
        placement_.ToModel(spans[0].centroid, spans[1].centroid, spans[2].centroid);
    const std::array<double, 3> turned{model.x, model.y, model.z};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        spans[axis].centroid = turned[axis] * axes_[axis].scale + axes_[axis].offset;
    }
    return spans;
}

const char* RowPlacing::Fault(const std::vector<double>& values, std::size_t axis,
                              std::size_t& column) const {
    const AxisReading& reading = axes_[axis];
    double first = 0.0;
    if (first_[axis] != AxisReading::kNone) {
        column = first_[axis];
        first = values[column];
        if (!std::isfinite(first)) {
            return "is no coordinate";
        }
        if (reading.IsIndex() && first != std::floor(first)) {
            return "is no whole number of a cell";
        }
    }
    if (second_[axis] == AxisReading::kNone) {
        return nullptr;
    }
    column = second_[axis];
    const double second = values[column];
    const bool edges = reading.kind == AxisReading::Kind::Edges;
    const double size = edges ? second - first : second;
    if (!std::isfinite(size) || !std::isfinite(first + size) || !std::isfinite(first - size)) {
        return edges ? "is no coordinate" : "is no size of a block";
    }
    if (!(size > 0)) {
        return edges ? "is not above the lower edge" : "is not a size above 0";
    }
    if (reading.IsIndex() || reading.kind == AxisReading::Kind::Same) {
        return nullptr;
    }
    if (!(first - size / 2 < first) || !(first < first + size / 2)) {
        return "is too small a size for a block so far out";
    }
    return nullptr;
}

BlockRows::BlockRows(std::shared_ptr<TextColumns> columns, RowPlacing placing)
    : columns_(std::move(columns)),
      placing_(std::move(placing)),
      values_(placing_.Columns().size()) {}

Spans BlockRows::At(std::int64_t row) {
    for (std::size_t i = 0; i < values_.size(); ++i) {
        values_[i] = columns_->Number(placing_.Columns()[i], static_cast<std::uint64_t>(row));
    }
    return placing_.Place(values_);
}

}  // namespace zol::engine::block
