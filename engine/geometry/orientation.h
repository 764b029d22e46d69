// On which side of a line or a plane a point lies: the exact sign, never a rounded one.
//
// Each predicate is tried in plain doubles first, with the error bounds of Shewchuk,
// "Adaptive Precision Floating-Point Arithmetic and Fast Robust Geometric Predicates"
// (1997), section 4; only where the bound does not settle the sign are exact expansions
// asked. Needs round-to-nearest, and coordinates as mesh_view.h has them.
#pragma once

#include <cmath>

#include "engine/geometry/mesh_view.h"

namespace zol::engine::geometry {

namespace exact {

int orient2d(double ax, double ay, double bx, double by, double px, double py);
int orient3d(const Point& a, const Point& b, const Point& c, const Point& p);

}  // namespace exact

/// Half a unit in the last place of 1.
inline constexpr double kRoundoff = 0x1p-53;

inline int sign(double value) {
    return (value > 0.0) - (value < 0.0);
}

/// au bv - av bu in plain doubles, with what is known of its sign.
class PlaneDeterminant {
public:
    PlaneDeterminant(double au, double av, double bu, double bv)
        : left_(au * bv), right_(av * bu) {}

    bool IsCertain() const {
        constexpr double kBound = (3.0 + 16.0 * kRoundoff) * kRoundoff;
        return std::fabs(left_ - right_) > kBound * (std::fabs(left_) + std::fabs(right_));
    }
    bool IsPositive() const { return left_ > right_; }

private:
    double left_;
    double right_;
};

/// 1 when p lies to the left of the line from a to b, so that a, b, p turn
/// counter-clockwise; -1 to its right, 0 exactly on it.
inline int orient2d(double ax, double ay, double bx, double by, double px, double py) {
    const PlaneDeterminant determinant(ax - px, ay - py, bx - px, by - py);
    if (determinant.IsCertain()) return determinant.IsPositive() ? 1 : -1;
    return exact::orient2d(ax, ay, bx, by, px, py);
}

/// The same in the plane of two axes of space: 0 is x, 1 is y, 2 is z.
template <std::size_t U, std::size_t V>
int orient2d(const Point& a, const Point& b, const Point& p) {
    return orient2d(a[U], a[V], b[U], b[V], p[U], p[V]);
}

/// 1 when p lies on the side of the plane of a, b, c from which these turn
/// counter-clockwise, which is where (b - a) x (c - a) points; -1 on the other side, 0
/// exactly in the plane.
inline int orient3d(const Point& a, const Point& b, const Point& c, const Point& p) {
    const double adx = a[0] - p[0];
    const double ady = a[1] - p[1];
    const double adz = a[2] - p[2];
    const double bdx = b[0] - p[0];
    const double bdy = b[1] - p[1];
    const double bdz = b[2] - p[2];
    const double cdx = c[0] - p[0];
    const double cdy = c[1] - p[1];
    const double cdz = c[2] - p[2];

    const double bc = bdx * cdy;
    const double cb = cdx * bdy;
    const double ca = cdx * ady;
    const double ac = adx * cdy;
    const double ab = adx * bdy;
    const double ba = bdx * ady;

    const double determinant = adz * (bc - cb) + bdz * (ca - ac) + cdz * (ab - ba);
    const double permanent = (std::fabs(bc) + std::fabs(cb)) * std::fabs(adz) +
                             (std::fabs(ca) + std::fabs(ac)) * std::fabs(bdz) +
                             (std::fabs(ab) + std::fabs(ba)) * std::fabs(cdz);
    constexpr double kBound = (7.0 + 56.0 * kRoundoff) * kRoundoff;
    if (std::fabs(determinant) > kBound * permanent) {
        return -sign(determinant);
    }
    return exact::orient3d(a, b, c, p);
}

/// The signs of (b - a) x (c - a) along x, y and z.
struct NormalSigns {
    int x;
    int y;
    int z;

    bool IsZero() const { return x == 0 && y == 0 && z == 0; }
};

inline NormalSigns normal_signs(const Point& a, const Point& b, const Point& c) {
    return {orient2d<1, 2>(a, b, c), orient2d<2, 0>(a, b, c), orient2d<0, 1>(a, b, c)};
}

/// True for a triangle without area: its corners lie on one line.
inline bool is_degenerate(const Point& a, const Point& b, const Point& c) {
    return normal_signs(a, b, c).IsZero();
}

// The tie rule. Where a point lies exactly on what it is tested against, it is taken as
// if moved by (d, d^2, d^3) for a vanishing d > 0 (Edelsbrunner and Muecke, "Simulation of
// Simplicity", 1990): all answers are then those of one nearby point in general position,
// so that a point on an edge belongs to one of its triangles, and none is given twice.

/// orient2d of the moved p in the plane of two axes; 0 only where a and b coincide there.
/// The axis that comes first in space moves farthest, whichever plane is looked at: so all
/// planes speak of the same moved point.
template <std::size_t U, std::size_t V>
int orient2d_moved(const Point& a, const Point& b, const Point& p) {
    if (const int side = orient2d<U, V>(a, b, p); side != 0) return side;
    const int along_u = sign(a[V] - b[V]);
    const int along_v = sign(b[U] - a[U]);
    if constexpr (U < V) {
        return along_u != 0 ? along_u : along_v;
    } else {
        return along_v != 0 ? along_v : along_u;
    }
}

/// orient3d of the moved p; 0 only for a degenerate a, b, c.
inline int orient3d_moved(const Point& a, const Point& b, const Point& c, const Point& p) {
    if (const int side = orient3d(a, b, c, p); side != 0) return side;
    const NormalSigns normal = normal_signs(a, b, c);
    if (normal.x != 0) return normal.x;
    if (normal.y != 0) return normal.y;
    return normal.z;
}

/// Which way the picture of a triangle turns that the moved point lies over; 0 where it
/// lies over none of it.
template <std::size_t U, std::size_t V>
inline int facing_over(const Point& a, const Point& b, const Point& c, const Point& p) {
    // The three sides at one go, as their signs are as good as random to the processor.
    const double au = a[U] - p[U];
    const double av = a[V] - p[V];
    const double bu = b[U] - p[U];
    const double bv = b[V] - p[V];
    const double cu = c[U] - p[U];
    const double cv = c[V] - p[V];
    const PlaneDeterminant ab(au, av, bu, bv);
    const PlaneDeterminant bc(bu, bv, cu, cv);
    const PlaneDeterminant ca(cu, cv, au, av);
    if (int{ab.IsCertain()} + int{bc.IsCertain()} + int{ca.IsCertain()} == 3) {
        const int turns =
            (ab.IsPositive() ? 1 : 0) + (bc.IsPositive() ? 1 : 0) + (ca.IsPositive() ? 1 : 0);
        return turns == 3 ? 1 : turns == 0 ? -1 : 0;
    }
    const int facing = orient2d_moved<U, V>(a, b, p);
    const bool is_over =
        orient2d_moved<U, V>(b, c, p) == facing && orient2d_moved<U, V>(c, a, p) == facing;
    return is_over ? facing : 0;
}

}  // namespace zol::engine::geometry
