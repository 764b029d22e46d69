// Gathers the spans of a table's blocks while it is surveyed.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "engine/block/axis_survey.h"
#include "engine/block/block_rows.h"
#include "engine/formats/row_watcher.h"

namespace zol::engine::block {

class SpanWatcher final : public RowWatcher {
public:
    /// Places of the origin's and the counts' columns among the watched ones, x to z
    /// each, AxisReading::kNone where there is no column.
    using Constants = std::array<std::size_t, 6>;

    SpanWatcher(RowPlacing placing, const Constants& constants);

    Fault Rows(const std::vector<std::vector<double>>& columns, std::size_t count) override;

    bool SawRows() const { return saw_rows_; }
    const std::array<SpanSet, 3>& SpansSeen() const { return spans_; }
    /// What stood in every row seen.
    double ConstantValue(std::size_t i) const { return constant_values_[i]; }

private:
    using Columns = std::vector<std::vector<double>>;

    void WatchAxis(const Columns& columns, std::size_t axis, Fault& fault);
    void AddTurned(const Columns& columns, std::size_t row);
    void WatchConstant(const std::vector<double>& numbers, std::size_t i, Fault& fault);

    RowPlacing placing_;
    Constants constants_;
    std::array<double, 6> constant_values_{};
    bool saw_rows_ = false;
    // The numbers of one row.
    std::vector<double> values_;
    std::array<SpanSet, 3> spans_;
};

}  // namespace zol::engine::block
