// Signs against rational numbers, where rounding would get them wrong.
#include "engine/geometry/orientation.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tests/engine/geometry/exact_geometry.h"

namespace zol::testing {
namespace {

using engine::geometry::Point;

/// Points as they come in mine models, and worse.
class NearDegenerate {
public:
    double Coordinate(int kind) {
        switch (kind) {
            case 0:
                return Small(5);
            case 1:
                return 7000000.0 + Small(8) * 0.5;
            case 2:  // a few last places apart
                return 7000000.123 + Small(3) * 0x1p-30;
            default:  // sizes far apart
                return std::ldexp(static_cast<double>(random_()) - 0x1p63, -40 - Whole(40));
        }
    }

    Point AnyPoint(int kind) { return {Coordinate(kind), Coordinate(kind), Coordinate(kind)}; }

private:
    int Whole(unsigned below) { return static_cast<int>(random_() % below); }
    double Small(unsigned below) { return Whole(below); }

    std::mt19937_64 random_{20260101};
};

TEST(OrientationTest, AgreesWithRationals) {
    NearDegenerate source;
    int zeros = 0;
    for (int i = 0; i < 4000; ++i) {
        const int kind = i % 4;
        const Point a = source.AnyPoint(kind);
        const Point b = source.AnyPoint(kind);
        const Point c = source.AnyPoint(kind);
        Point p = source.AnyPoint(kind);
        if (i % 8 >= 4) {
            // As near to the plane as doubles come.
            for (std::size_t axis = 0; axis < 3; ++axis) {
                p[axis] = 0.25 * a[axis] + 0.25 * b[axis] + 0.5 * c[axis];
            }
        }
        SCOPED_TRACE(i);
        const int side = exact_side(a, b, c, p);
        zeros += side == 0 ? 1 : 0;
        ASSERT_EQ(engine::geometry::orient3d(a, b, c, p), side);
        // Without the filter in front.
        ASSERT_EQ(engine::geometry::exact::orient3d(a, b, c, p), side);
        const int in_plan = exact_side_in_plan(a, b, p);
        ASSERT_EQ((engine::geometry::orient2d<0, 1>(a, b, p)), in_plan);
        ASSERT_EQ(engine::geometry::exact::orient2d(a[0], a[1], b[0], b[1], p[0], p[1]), in_plan);
    }
    EXPECT_GT(zeros, 250) << "the points are too far from special positions to test much";
}

// The tie rule speaks of the point moved by (d, d^2, d^3): rationals can move it.
TEST(OrientationTest, TheTieRuleIsThatOfAPointMovedALittle) {
    std::mt19937_64 random(7);
    const auto small = [&] { return static_cast<double>(random() % 4); };
    const auto moved_side = [](const RationalPoint& a, const RationalPoint& b,
                               const RationalPoint& c, RationalPoint p) {
        const Rational step(1, 1000000);
        p[0] += step;
        p[1] += step * step;
        p[2] += step * step * step;
        return dot(cross(b - a, c - a), p - a).sign();
    };
    for (int i = 0; i < 1500; ++i) {
        SCOPED_TRACE(i);
        const Point a{small(), small(), small()};
        const Point b{small(), small(), small()};
        const Point c{small(), small(), small()};
        const Point p{small(), small(), small()};
        ASSERT_EQ(engine::geometry::orient3d_moved(a, b, c, p),
                  moved_side(rational(a), rational(b), rational(c), rational(p)));
        // In a coordinate plane: against the plane through the line along the third axis.
        const auto along = [&](std::size_t axis) {
            RationalPoint raised = rational(a);
            raised[axis] += 1;
            return moved_side(rational(a), rational(b), raised, rational(p));
        };
        ASSERT_EQ((engine::geometry::orient2d_moved<0, 1>(a, b, p)), -along(2));
        ASSERT_EQ((engine::geometry::orient2d_moved<1, 2>(a, b, p)), -along(0));
        ASSERT_EQ((engine::geometry::orient2d_moved<2, 0>(a, b, p)), -along(1));
    }
}

}  // namespace
}  // namespace zol::testing
