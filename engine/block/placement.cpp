#include "engine/block/placement.h"

#include <cmath>

namespace zol::engine::block {

namespace {

using geometry::Coord3D;

constexpr Rotation kIdentity = {{{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}}};
constexpr double kDegreesPerRadian = 57.295779513082320876798154814105;
constexpr double kAxisTolerance = 1e-6;
// Below this cosine of b the first and the third turn have one axis.
constexpr double kGimbalLock = 1e-9;

struct SineCosine {
    double sine;
    double cosine;
};

// Exact at whole quarter turns, where sine and cosine of radians are not.
SineCosine turn(double degrees) {
    int quarters = 0;
    const double rest = std::remquo(degrees, 90.0, &quarters) / kDegreesPerRadian;
    const double sine = std::sin(rest);
    const double cosine = std::cos(rest);
    switch (quarters & 3) {
        case 0:
            return {sine, cosine};
        case 1:
            return {cosine, -sine};
        case 2:
            return {-sine, -cosine};
        default:
            return {-cosine, sine};
    }
}

Rotation rotation_of(const Coord3D& degrees) {
    const auto [sa, ca] = turn(degrees.x);
    const auto [sb, cb] = turn(degrees.y);
    const auto [sc, cc] = turn(degrees.z);
    return {{{ca * cb, ca * sb * sc - sa * cc, ca * sb * cc + sa * sc},
             {sa * cb, sa * sb * sc + ca * cc, sa * sb * cc - ca * sc},
             {-sb, cb * sc, cb * cc}}};
}

// The third angle is taken from what the first leaves over, not from the last row
// alone: near gimbal lock the errors of the two then cancel.
Coord3D angles_of(const Rotation& r) {
    const bool locked = std::hypot(r[0][0], r[1][0]) < kGimbalLock;
    const double a = locked ? std::atan2(-r[0][1], r[1][1]) : std::atan2(r[1][0], r[0][0]);
    const double sa = std::sin(a);
    const double ca = std::cos(a);
    const double b = std::atan2(-r[2][0], ca * r[0][0] + sa * r[1][0]);
    const double c =
        locked ? 0.0 : std::atan2(sa * r[0][2] - ca * r[1][2], ca * r[1][1] - sa * r[0][1]);
    // Adding 0 turns a negative zero into a plain one.
    return {a * kDegreesPerRadian + 0.0, b * kDegreesPerRadian + 0.0, c * kDegreesPerRadian + 0.0};
}

double dot(const Rotation& r, std::size_t one, std::size_t other) {
    return r[0][one] * r[0][other] + r[1][one] * r[1][other] + r[2][one] * r[2][other];
}

double determinant(const Rotation& r) {
    return r[0][0] * (r[1][1] * r[2][2] - r[1][2] * r[2][1]) -
           r[0][1] * (r[1][0] * r[2][2] - r[1][2] * r[2][0]) +
           r[0][2] * (r[1][0] * r[2][1] - r[1][1] * r[2][0]);
}

// The nearest frame by x first, then y: a file's axes may be six digits long, and
// ToModel has to undo ToWorld to the last digits all the same.
Rotation orthonormal(Rotation r) {
    const double x_length = std::sqrt(dot(r, 0, 0));
    for (auto& row : r) row[0] /= x_length;
    const double along_x = dot(r, 0, 1);
    for (auto& row : r) row[1] -= along_x * row[0];
    const double y_length = std::sqrt(dot(r, 1, 1));
    for (auto& row : r) row[1] /= y_length;
    r[0][2] = r[1][0] * r[2][1] - r[2][0] * r[1][1];
    r[1][2] = r[2][0] * r[0][1] - r[0][0] * r[2][1];
    r[2][2] = r[0][0] * r[1][1] - r[1][0] * r[0][1];
    return r;
}

}  // namespace

Placement::Placement() : Placement({0, 0, 0}, {0, 0, 0}, kIdentity, false) {}

Placement::Placement(const Coord3D& origin) : Placement(origin, {0, 0, 0}, kIdentity, false) {}

Placement::Placement(const Coord3D& origin, const Coord3D& angles, const Rotation& rotation,
                     bool rotated)
    : origin_(origin), angles_(angles), rotation_(rotation), rotated_(rotated) {}

Placement Placement::FromAngles(const Coord3D& origin, const Coord3D& degrees) {
    const Rotation rotation = rotation_of(degrees);
    if (rotation == kIdentity) return Placement(origin);
    return {origin, degrees, rotation, true};
}

Placement Placement::FromRotation(const Coord3D& origin, const Rotation& rotation) {
    const Rotation exact = orthonormal(rotation);
    if (exact == kIdentity) return Placement(origin);
    return {origin, angles_of(exact), exact, true};
}

const char* Placement::RotationFault(const Rotation& rotation) {
    // Written so that a NaN fails each test.
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double length = std::sqrt(dot(rotation, axis, axis));
        if (!(std::abs(length - 1.0) <= kAxisTolerance)) return "an axis is not of length 1";
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (!(std::abs(dot(rotation, axis, (axis + 1) % 3)) <= kAxisTolerance)) {
            return "the axes are not at right angles";
        }
    }
    if (!(determinant(rotation) > 0.0)) return "the axes are left-handed";
    return nullptr;
}

Coord3D Placement::ToWorld(double x, double y, double z) const {
    if (!rotated_) return {origin_.x + x, origin_.y + y, origin_.z + z};
    const Rotation& r = rotation_;
    return {origin_.x + (r[0][0] * x + r[0][1] * y + r[0][2] * z),
            origin_.y + (r[1][0] * x + r[1][1] * y + r[1][2] * z),
            origin_.z + (r[2][0] * x + r[2][1] * y + r[2][2] * z)};
}

Coord3D Placement::ToModel(double x, double y, double z) const {
    const double dx = x - origin_.x;
    const double dy = y - origin_.y;
    const double dz = z - origin_.z;
    if (!rotated_) return {dx, dy, dz};
    const Rotation& r = rotation_;
    return {r[0][0] * dx + r[1][0] * dy + r[2][0] * dz, r[0][1] * dx + r[1][1] * dy + r[2][1] * dz,
            r[0][2] * dx + r[1][2] * dy + r[2][2] * dz};
}

}  // namespace zol::engine::block
