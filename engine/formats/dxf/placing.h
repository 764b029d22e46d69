// How coordinates of an object, a block or a plane become those of the drawing.
#pragma once

#include "engine/formats/vector3.h"

namespace zol::engine {

/// An affine map: where the axes and the origin of the inner coordinates lie in the outer.
struct Placing {
    Vector3 x = kXAxis;
    Vector3 y = kYAxis;
    Vector3 z = kZAxis;
    Vector3 origin = {0, 0, 0};

    bool operator==(const Placing&) const = default;

    Vector3 Direction(const Vector3& inner) const;
    Vector3 Point(const Vector3& inner) const { return plus(Direction(inner), origin); }
    /// First `inner`, then this.
    Placing After(const Placing& inner) const;
    /// False when a number of it is not finite or is beyond `most`.
    bool IsWithin(double most) const;
    /// True when a turn to the left stays one as seen from above.
    bool KeepsTurns() const { return x[0] * y[1] - x[1] * y[0] >= 0; }
};

/// The plane of a normal by the rule of the format for arbitrary axes: x is across the y axis
/// for a normal that is close to z, and across the z axis for any other.
Placing plane_of(const Vector3& normal);

/// A turn by `degrees` about z. Multiples of 90 degrees are exact.
Placing turn(double degrees);

}  // namespace zol::engine
