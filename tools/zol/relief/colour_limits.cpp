#include "tools/zol/relief/colour_limits.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace zol::tool {

namespace {

constexpr double kMostOfRange = 5;

/// Half of the way, since the whole may overflow.
double half_between(double low, double high) {
    return high / 2 - low / 2;
}

}  // namespace

double ColourLimits::PlaceOf(double value) const {
    const double whole = half_between(low, high);
    return whole > 0 ? half_between(low, value) / whole : 0.5;
}

ColourLimits colour_limits(const Thumbnail& surface) {
    std::vector<double> values;
    std::copy_if(surface.values.begin(), surface.values.end(), std::back_inserter(values),
                 [](double value) { return !std::isnan(value); });
    std::sort(values.begin(), values.end());
    const std::size_t hundredth = values.size() / 100;
    const ColourLimits all{values.front(), values.back(), false};
    const ColourLimits most{values[hundredth], values[values.size() - 1 - hundredth], true};
    const double inner = half_between(most.low, most.high);
    const bool is_squeezed = inner > 0 && half_between(all.low, all.high) > kMostOfRange * inner;
    return is_squeezed ? most : all;
}

}  // namespace zol::tool
