// How model coordinates lie in the world.
#pragma once

#include <array>

#include "platform/zolGeometryExport.h"

namespace zol::engine::block {

/// Columns are the model's x, y and z axes in world coordinates.
using Rotation = std::array<std::array<double, 3>, 3>;

/// world = origin + R model with R = Rz(a) Ry(b) Rx(c): turn about z by a, then
/// about the new y by b, then about the new x by c; degrees, right-handed.
class Placement {
public:
    /// World and model are the same.
    Placement();
    /// Shifted, not turned.
    explicit Placement(const zol::geometry::Coord3D& origin);
    static Placement FromAngles(const zol::geometry::Coord3D& origin,
                                const zol::geometry::Coord3D& degrees);
    /// `rotation` is orthonormal and right-handed, as RotationFault says.
    static Placement FromRotation(const zol::geometry::Coord3D& origin, const Rotation& rotation);

    /// What keeps three axes from being a right-handed orthonormal frame within
    /// 1e-6, in words for a person; null when nothing does.
    static const char* RotationFault(const Rotation& rotation);

    const zol::geometry::Coord3D& Origin() const { return origin_; }
    /// The angles a, b, c in degrees; all zero for a model that is not turned.
    const zol::geometry::Coord3D& Angles() const { return angles_; }
    bool IsRotated() const { return rotated_; }

    zol::geometry::Coord3D ToWorld(double x, double y, double z) const;
    zol::geometry::Coord3D ToModel(double x, double y, double z) const;

private:
    Placement(const zol::geometry::Coord3D& origin, const zol::geometry::Coord3D& angles,
              const Rotation& rotation, bool rotated);

    zol::geometry::Coord3D origin_;
    zol::geometry::Coord3D angles_;
    Rotation rotation_;
    bool rotated_ = false;
};

}  // namespace zol::engine::block
