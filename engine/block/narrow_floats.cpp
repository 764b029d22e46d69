#include "engine/block/narrow_floats.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zol::engine::block {

double rounded_to_float(double value) {
    return static_cast<float>(value);
}

double rounded_to_half(double value) {
    if (!std::isfinite(value) || value == 0.0) {
        return value;
    }
    constexpr int kFractionBits = 10;
    constexpr int kLeastExponent = -14;
    // Halfway between the greatest half, 65504, and the power of two above it.
    constexpr double kOverflow = 65520.0;
    if (std::fabs(value) >= kOverflow) {
        return std::copysign(std::numeric_limits<double>::infinity(), value);
    }
    const int exponent = std::max(std::ilogb(value), kLeastExponent);
    const int shift = kFractionBits - exponent;
    return std::ldexp(std::nearbyint(std::ldexp(value, shift)), -shift);
}

}  // namespace zol::engine::block
