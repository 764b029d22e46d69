// Ascending numbers along an axis, and where a number stands among them.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace zol::engine::geometry {

class Ticks {
public:
    Ticks() = default;
    /// `at` ascends.
    explicit Ticks(std::vector<double> at) : at_(std::move(at)) {
        if (at_.size() < 2) return;
        const double per_unit = static_cast<double>(at_.size() - 1) / (at_.back() - at_.front());
        if (std::isfinite(per_unit)) per_unit_ = per_unit;
    }

    std::size_t Count() const { return at_.size(); }
    double operator[](std::size_t i) const { return at_[i]; }

    /// The first that is not below `value`, Count() where all are below it. Takes constant
    /// time where the steps are alike, else the logarithm of the count.
    std::size_t NotBelow(double value) const {
        if (at_.empty() || !(value > at_.front())) return 0;
        if (value > at_.back()) return at_.size();
        const double steps = (value - at_.front()) * per_unit_;
        const std::size_t guess = std::min(static_cast<std::size_t>(steps), at_.size() - 2);
        // Rounding may have put the guess on the wrong side of a tick.
        if (at_[guess] < value) {
            if (value <= at_[guess + 1]) return guess + 1;
        } else if (guess > 0 && at_[guess - 1] < value) {
            return guess;
        }
        return static_cast<std::size_t>(std::lower_bound(at_.begin(), at_.end(), value) -
                                        at_.begin());
    }

    /// The first that is above `value`, Count() where none is.
    std::size_t Above(double value) const {
        std::size_t first = NotBelow(value);
        while (first < at_.size() && at_[first] == value) ++first;
        return first;
    }

private:
    std::vector<double> at_;
    double per_unit_ = 0.0;
};

}  // namespace zol::engine::geometry
