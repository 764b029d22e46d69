#include "tools/zol/relief/shading.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zol::tool {

namespace {

constexpr double kDegree = std::numbers::pi / 180;

/// The rise from `low` to `high`, which lie two spacings apart with `here` in between.
double rise(double low, double here, double high, double spacing) {
    double way = 2 * spacing;
    if (std::isnan(low)) {
        low = here;
        way -= spacing;
    }
    if (std::isnan(high)) {
        high = here;
        way -= spacing;
    }
    const double slope = (high - low) / way;
    return std::isfinite(slope) ? slope : 0;
}

double round_down(double value) {
    const double power = std::pow(10.0, std::floor(std::log10(value)));
    for (const double factor : {5.0, 2.0}) {
        if (factor * power <= value * (1 + 1e-9)) return factor * power;
    }
    return power;
}

}  // namespace

std::vector<Slope> slopes_of(const Thumbnail& surface) {
    std::vector<Slope> slopes;
    slopes.reserve(surface.values.size());
    const auto value_at = [&](int column, int row) {
        const bool is_inside =
            column >= 0 && column < surface.width && row >= 0 && row < surface.height;
        return is_inside ? surface.At(column, row) : std::nan("");
    };
    for (int row = 0; row < surface.height; ++row) {
        for (int column = 0; column < surface.width; ++column) {
            const double here = surface.At(column, row);
            if (std::isnan(here)) {
                slopes.emplace_back();
                continue;
            }
            slopes.push_back(
                {rise(value_at(column - 1, row), here, value_at(column + 1, row), surface.dx),
                 rise(value_at(column, row + 1), here, value_at(column, row - 1), surface.dy)});
        }
    }
    return slopes;
}

double exaggeration_for(const std::vector<Slope>& slopes) {
    std::vector<double> steepness;
    for (const Slope& slope : slopes) {
        const double steep = std::hypot(slope.east, slope.north);
        if (steep > 0) steepness.push_back(steep);
    }
    if (steepness.empty()) return 1;
    // Of ten slopes nine are less steep than the one that becomes 45 degrees.
    const auto tenth = steepness.begin() + static_cast<std::ptrdiff_t>(steepness.size() * 9 / 10);
    std::nth_element(steepness.begin(), tenth, steepness.end());
    const double factor = round_down(1 / *tenth);
    return std::isfinite(factor) && factor > 0 ? factor : 1;
}

double light_on(const Slope& slope, double exaggeration) {
    const double east = slope.east * exaggeration;
    const double north = slope.north * exaggeration;
    const double flat = std::sin(kLightAltitude * kDegree);
    const double aside = std::cos(kLightAltitude * kDegree);
    // The normal of the surface is (-east, -north, 1).
    const double along = -east * std::sin(kLightAzimuth * kDegree) * aside -
                         north * std::cos(kLightAzimuth * kDegree) * aside + flat;
    const double light = along / std::hypot(east, north, 1.0) / flat;
    return std::isfinite(light) ? std::max(light, 0.0) : 1;
}

}  // namespace zol::tool
