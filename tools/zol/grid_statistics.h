// What the values of a grid are like, gathered in one walk.
#pragma once

#include <limits>
#include <span>

namespace zol::tool {

class GridStatistics {
public:
    /// NaN counts as masked.
    void Add(std::span<const double> values);

    long long NNodes() const { return n_nodes_; }
    long long NMasked() const { return n_nodes_ - n_values_; }
    bool HasValues() const { return n_values_ > 0; }
    /// NaN, all three, while there are no values.
    double Minimum() const { return minimum_; }
    double Maximum() const { return maximum_; }
    double Mean() const;

private:
    long long n_nodes_ = 0;
    long long n_values_ = 0;
    double minimum_ = std::numeric_limits<double>::quiet_NaN();
    double maximum_ = std::numeric_limits<double>::quiet_NaN();
    double sum_ = 0;
    double lost_ = 0;
};

}  // namespace zol::tool
