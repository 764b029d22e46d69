#include "tools/zol/grid_statistics.h"

#include <cmath>

namespace zol::tool {

void GridStatistics::Add(std::span<const double> values) {
    n_nodes_ += static_cast<long long>(values.size());
    for (const double value : values) {
        if (std::isnan(value)) continue;
        ++n_values_;
        // Put so that the NaN which stands for "none yet" gives way too.
        if (!(minimum_ <= value)) minimum_ = value;
        if (!(maximum_ >= value)) maximum_ = value;
        // Neumaier's summation: what an addition rounds away is summed by itself.
        const double sum = sum_ + value;
        const bool is_smaller = std::abs(value) <= std::abs(sum_);
        lost_ += is_smaller ? (sum_ - sum) + value : (value - sum) + sum_;
        sum_ = sum;
    }
}

double GridStatistics::Mean() const {
    if (n_values_ == 0) return std::numeric_limits<double>::quiet_NaN();
    const double sum = std::isfinite(lost_) ? sum_ + lost_ : sum_;
    return sum / static_cast<double>(n_values_);
}

}  // namespace zol::tool
