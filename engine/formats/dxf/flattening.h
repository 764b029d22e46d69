// Points along curves.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "engine/formats/dxf/drawing.h"

namespace zol::engine {

/// Arcs are parted into pieces of at most this angle.
inline constexpr double kMostDegreesOfChord = 2;

/// Vertices with the bulges of the segments that begin at them, in the plane of x and y; each
/// vertex stands first, with the points of its arc behind. Heights run evenly from one vertex to
/// the next. `bulges` and `marks` are as long as `vertices`, or empty.
std::vector<DrawingPoint> flatten_bulges(std::span<const Vector3> vertices,
                                         std::span<const double> bulges,
                                         std::span<const std::uint8_t> marks, bool is_closed);

/// centre + cos(t) across + sin(t) up, for t from `begin` to `end`, radians. Of a closed one the
/// end is left out.
std::vector<DrawingPoint> flatten_ellipse(const Vector3& centre, const Vector3& across,
                                          const Vector3& up, double begin, double end,
                                          bool is_closed);

struct SplineCurve {
    int degree = 3;
    std::span<const Vector3> controls;
    /// As many as controls, degree and 1, none less than the one before.
    std::span<const double> knots;
    /// Positive, as many as controls; empty for all alike.
    std::span<const double> weights;
};

inline constexpr int kMostSplineDegree = 25;

/// True when the numbers of degree, controls, knots and weights fit each other.
bool is_whole(const SplineCurve& curve);

/// Points of a whole curve, to 0.0001 of the greatest side of the box round its controls.
std::vector<DrawingPoint> flatten_spline(const SplineCurve& curve);

}  // namespace zol::engine
