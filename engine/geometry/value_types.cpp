// The operations of the geometry values that live in a library.
#include "platform/zolGeometryExport.h"

namespace zol::geometry {

Coord3D::Coord3D() : x(0.0), y(0.0), z(0.0) {}

Coord3D::Coord3D(double x_value, double y_value, double z_value)
    : x(x_value), y(y_value), z(z_value) {}

// Out of line on purpose: callers take it from this library.
// NOLINTNEXTLINE(modernize-use-equals-default)
Coord3D& Coord3D::operator=(const Coord3D& other) = default;

Extent::Extent(double lower_x, double lower_y, double lower_z, double upper_x, double upper_y,
               double upper_z)
    : x0(lower_x), y0(lower_y), z0(lower_z), x1(upper_x), y1(upper_y), z1(upper_z) {}

}  // namespace zol::geometry
