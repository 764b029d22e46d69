// Gathers the spans of a table's blocks while it is surveyed.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "engine/block/axis_survey.h"
#include "engine/block/block_rows.h"
#include "engine/formats/table_survey.h"

namespace zol::engine::block {

class SpanWatcher final : public RowWatcher {
public:
    /// Places of the origin's and the counts' columns among the watched ones, x to z
    /// each, AxisReading::kNone where there is no column.
    using Constants = std::array<std::size_t, 6>;

    SpanWatcher(RowPlacing placing, const Constants& constants);

    const char* Row(const std::vector<double>& values, std::size_t& column) override;

    bool SawRows() const { return !first_row_; }
    const std::array<SpanSet, 3>& SpansSeen() const { return spans_; }
    /// What stood in every row seen.
    double ConstantValue(std::size_t i) const { return constant_values_[i]; }

private:
    void AddTurned(Spans spans);

    RowPlacing placing_;
    Constants constants_;
    std::array<double, 6> constant_values_{};
    bool first_row_ = true;
    std::vector<double> last_values_;
    std::array<SpanSet, 3> spans_;
};

}  // namespace zol::engine::block
