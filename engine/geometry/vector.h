// Sums and products of vectors in space, in plain doubles.
#pragma once

#include "engine/geometry/mesh_view.h"

namespace zol::engine::geometry {

using Vector = Point;

inline Vector minus(const Point& a, const Point& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

/// a + t b
inline Vector plus(const Point& a, double t, const Vector& b) {
    return {a[0] + t * b[0], a[1] + t * b[1], a[2] + t * b[2]};
}

inline double dot(const Vector& a, const Vector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline Vector cross(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

}  // namespace zol::engine::geometry
