// Where the rows of a table place their blocks.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include "engine/block/axis_survey.h"
#include "engine/block/placement.h"
#include "engine/formats/text_columns.h"

namespace zol::engine::block {

/// Which columns place a block along one axis, and how their numbers become model
/// coordinates.
struct AxisReading {
    enum class Kind {
        /// Every block spans the same; a size may stand in a column.
        Same,
        /// A centroid, and a size where a column has it.
        Centroid,
        /// A lower edge and a size.
        LowerEdge,
        /// A lower and an upper edge.
        Edges,
        /// A count of cells from the lower end.
        Index,
        /// The same, taken out of one number for all three axes.
        CellNumber
    };
    static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

    Kind kind = Kind::Same;
    /// Columns of the table; the second is the size or the upper edge.
    std::size_t first = kNone;
    std::size_t second = kNone;
    /// Size where no column has it; 0 as long as it isn't known.
    double fixed_size = 0.0;
    /// model = scale * number + offset, for numbers that aren't turned into the model.
    double scale = 1.0;
    double offset = 0.0;
    /// Kind::CellNumber: index = (number - first_number) / divisor % modulus.
    std::int64_t first_number = 0;
    std::int64_t divisor = 1;
    std::int64_t modulus = 1;

    /// Its numbers count cells.
    bool IsIndex() const { return kind == Kind::Index || kind == Kind::CellNumber; }
};

using AxisReadings = std::array<AxisReading, 3>;

/// A block's place along x, y and z.
using Spans = std::array<Span, 3>;

/// Turns the numbers of a row into spans.
class RowPlacing {
public:
    /// Numbers are world coordinates when `rotated` is given, which brings them into
    /// the model ahead of scale and offset.
    RowPlacing(const AxisReadings& axes, const Placement* rotated);

    /// The columns that are needed, each once.
    const std::vector<std::size_t>& Columns() const { return columns_; }
    bool IsRotated() const { return rotated_; }

    /// `values` are in the order of Columns.
    Spans Place(const std::vector<double>& values) const;
    /// One axis of it, for rows that aren't turned.
    Span PlaceAxis(const std::vector<double>& values, std::size_t axis) const;
    /// The places in Columns of the one or two numbers that place a block along an axis;
    /// AxisReading::kNone where there is none.
    std::array<std::size_t, 2> PlacesOf(std::size_t axis) const {
        return {first_[axis], second_[axis]};
    }
    /// What makes the numbers of an axis unfit for a block, or null; `column` is the
    /// place in Columns of the number at fault.
    const char* Fault(const std::vector<double>& values, std::size_t axis,
                      std::size_t& column) const;

private:
    std::size_t PlaceOf(std::size_t column);
    Span Read(const std::vector<double>& values, std::size_t axis) const;

    AxisReadings axes_;
    bool rotated_;
    Placement placement_;
    std::vector<std::size_t> columns_;
    std::array<std::size_t, 3> first_{};
    std::array<std::size_t, 3> second_{};
};

/// The spans of any row of an opened table.
class BlockRows {
public:
    BlockRows(std::shared_ptr<TextColumns> columns, RowPlacing placing);

    std::int64_t Count() const { return static_cast<std::int64_t>(columns_->Blocks().Rows()); }
    Spans At(std::int64_t row);
    const TextColumns& Columns() const { return *columns_; }

private:
    std::shared_ptr<TextColumns> columns_;
    RowPlacing placing_;
    std::vector<double> values_;
};

}  // namespace zol::engine::block
