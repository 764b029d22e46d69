// Geometry values that the libraries underneath speak in.
//
// Callers read and build them member by member, in declared order; what the
// numbers mean is said where an operation returns them.
#pragma once

#include <cstdint>

#include "platform/visibility.h"

namespace zol::geometry {

/// A point, a vector or three angles.
struct ZOL_PLATFORM Coord3D {
    Coord3D();
    Coord3D(double x_value, double y_value, double z_value);
    Coord3D(const Coord3D& other) = default;
    Coord3D& operator=(const Coord3D& other);
    ~Coord3D() = default;

    double x;
    double y;
    double z;
};

/// A point in space.
struct Point3D {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

/// A point in the plane.
struct Point2D {
    double x = 0.0;
    double y = 0.0;
};

/// Three counts.
struct Point3I {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t z = 0;
};

/// A box: its lower corner, then its upper corner.
struct ZOL_PLATFORM Extent {
    Extent(double lower_x, double lower_y, double lower_z, double upper_x, double upper_y,
           double upper_z);

    double x0;
    double y0;
    double z0;
    double x1;
    double y1;
    double z1;
};

}  // namespace zol::geometry
