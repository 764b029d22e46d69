// Triples of numbers: points, directions, axes.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace zol::engine {

using Vector3 = std::array<double, 3>;

inline Vector3 plus(const Vector3& a, const Vector3& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}

inline Vector3 minus(const Vector3& a, const Vector3& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

inline Vector3 times(const Vector3& a, double factor) {
    return {a[0] * factor, a[1] * factor, a[2] * factor};
}

inline double dot(const Vector3& a, const Vector3& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline Vector3 cross(const Vector3& a, const Vector3& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

inline double length(const Vector3& a) {
    return std::hypot(a[0], a[1], a[2]);
}

/// The angle from the x axis in the plan, 0 to 360 counter-clockwise.
inline double degrees_of(const Vector3& direction) {
    const double degrees = std::atan2(direction[1], direction[0]) * 180 / std::numbers::pi;
    return degrees < 0 ? degrees + 360 : degrees;
}

/// Of length 1; `fallback` for one without a length. Unit axes come back to the last bit.
inline Vector3 unit(const Vector3& a, const Vector3& fallback) {
    const double most = std::max({std::fabs(a[0]), std::fabs(a[1]), std::fabs(a[2])});
    // Not through the square of a number that has none.
    if (!(most > 0) || !std::isfinite(most)) return fallback;
    const Vector3 scaled = {a[0] / most, a[1] / most, a[2] / most};
    const double size = length(scaled);
    return {scaled[0] / size, scaled[1] / size, scaled[2] / size};
}

inline constexpr Vector3 kXAxis = {1, 0, 0};
inline constexpr Vector3 kYAxis = {0, 1, 0};
inline constexpr Vector3 kZAxis = {0, 0, 1};

}  // namespace zol::engine
