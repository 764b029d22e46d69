#include "engine/geometry/orientation.h"

#include "engine/geometry/expansion.h"

namespace zol::engine::geometry::exact {

namespace {

/// a b - c d
Expansion<16> minor(const Expansion<2>& a, const Expansion<2>& b, const Expansion<2>& c,
                    const Expansion<2>& d) {
    return a * b - c * d;
}

}  // namespace

int orient2d(double ax, double ay, double bx, double by, double px, double py) {
    return minor(difference(ax, px), difference(by, py), difference(ay, py), difference(bx, px))
        .Sign();
}

int orient3d(const Point& a, const Point& b, const Point& c, const Point& p) {
    // Floors, benches and walls: most of what has to be told exactly lies in such a plane.
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (a[axis] == p[axis] && b[axis] == p[axis] && c[axis] == p[axis]) return 0;
    }
    const Expansion<2> adx = difference(a[0], p[0]);
    const Expansion<2> ady = difference(a[1], p[1]);
    const Expansion<2> adz = difference(a[2], p[2]);
    const Expansion<2> bdx = difference(b[0], p[0]);
    const Expansion<2> bdy = difference(b[1], p[1]);
    const Expansion<2> bdz = difference(b[2], p[2]);
    const Expansion<2> cdx = difference(c[0], p[0]);
    const Expansion<2> cdy = difference(c[1], p[1]);
    const Expansion<2> cdz = difference(c[2], p[2]);
    const auto determinant = minor(bdx, cdy, cdx, bdy) * adz + minor(cdx, ady, adx, cdy) * bdz +
                             minor(adx, bdy, bdx, ady) * cdz;
    // Its rows are a, b and c as seen from p, which is the negative of what is asked.
    return -determinant.Sign();
}

}  // namespace zol::engine::geometry::exact
