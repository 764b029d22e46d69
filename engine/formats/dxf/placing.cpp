#include "engine/formats/dxf/placing.h"

#include <cmath>
#include <numbers>

namespace zol::engine {

Vector3 Placing::Direction(const Vector3& inner) const {
    return {x[0] * inner[0] + y[0] * inner[1] + z[0] * inner[2],
            x[1] * inner[0] + y[1] * inner[1] + z[1] * inner[2],
            x[2] * inner[0] + y[2] * inner[1] + z[2] * inner[2]};
}

Placing Placing::After(const Placing& inner) const {
    return {Direction(inner.x), Direction(inner.y), Direction(inner.z), Point(inner.origin)};
}

bool Placing::IsWithin(double most) const {
    for (const Vector3& part : {x, y, z, origin}) {
        for (const double number : part) {
            if (!(std::fabs(number) <= most)) return false;
        }
    }
    return true;
}

Placing plane_of(const Vector3& normal) {
    constexpr double kClose = 1.0 / 64;
    const Vector3 z = unit(normal, kZAxis);
    const bool is_close = std::fabs(z[0]) < kClose && std::fabs(z[1]) < kClose;
    const Vector3 x = unit(cross(is_close ? kYAxis : kZAxis, z), kXAxis);
    return {x, unit(cross(z, x), kYAxis), z, {0, 0, 0}};
}

Placing turn(double degrees) {
    const double left = std::fmod(degrees, 360.0);
    const double quarters = std::round(left / 90.0);
    const double radians = (left - quarters * 90.0) * std::numbers::pi / 180.0;
    const double c = std::cos(radians);
    const double s = std::sin(radians);
    Placing turned;
    switch ((static_cast<int>(quarters) + 8) % 4) {
        case 0:
            turned.x = {c, s, 0};
            break;
        case 1:
            turned.x = {-s, c, 0};
            break;
        case 2:
            turned.x = {-c, -s, 0};
            break;
        default:
            turned.x = {s, -c, 0};
    }
    turned.y = {-turned.x[1], turned.x[0], 0};
    return turned;
}

}  // namespace zol::engine
