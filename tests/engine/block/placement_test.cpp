#include "engine/block/placement.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <string>

namespace zol::engine::block {
namespace {

using geometry::Coord3D;

Coord3D turned(const Coord3D& p, char about, double degrees) {
    const double angle = degrees * std::numbers::pi / 180.0;
    const double s = std::sin(angle);
    const double c = std::cos(angle);
    if (about == 'z') return {c * p.x - s * p.y, s * p.x + c * p.y, p.z};
    if (about == 'y') return {c * p.x + s * p.z, p.y, -s * p.x + c * p.z};
    return {p.x, c * p.y - s * p.z, s * p.y + c * p.z};
}

void expect_near(const Coord3D& actual, const Coord3D& expected, double tolerance) {
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
}

Rotation rotation_of(const Placement& placement) {
    const Coord3D x = placement.ToWorld(1, 0, 0);
    const Coord3D y = placement.ToWorld(0, 1, 0);
    const Coord3D z = placement.ToWorld(0, 0, 1);
    return {{{x.x, y.x, z.x}, {x.y, y.y, z.y}, {x.z, y.z, z.z}}};
}

TEST(Placement, TurnsAboutZThenNewYThenNewX) {
    const Coord3D origin(1000, 2000, -50);
    const Coord3D p(3, -4, 7);
    for (const double a : {0.0, 30.0, -120.0}) {
        for (const double b : {0.0, 45.0, -80.0}) {
            for (const double c : {0.0, 10.0, 170.0}) {
                SCOPED_TRACE(std::to_string(a) + " " + std::to_string(b) + " " + std::to_string(c));
                const Placement placement = Placement::FromAngles(origin, {a, b, c});
                // Turns about the model's own axes, so the last is applied first.
                const Coord3D r = turned(turned(turned(p, 'x', c), 'y', b), 'z', a);
                const Coord3D world = placement.ToWorld(p.x, p.y, p.z);
                expect_near(world, {origin.x + r.x, origin.y + r.y, origin.z + r.z}, 1e-12);
                expect_near(placement.ToModel(world.x, world.y, world.z), p, 1e-12);
            }
        }
    }
}

TEST(Placement, FindsTheAnglesOfAxes) {
    struct Row {
        Coord3D angles;
        Coord3D expected;
    };
    const Row rows[] = {
        {{30, 20, 10}, {30, 20, 10}},
        {{-179, -60, 179}, {-179, -60, 179}},
        {{90, 0, 0}, {90, 0, 0}},
        {{0, 0, -90}, {0, 0, -90}},
        // b beyond a quarter turn is the same rotation with the other two turned.
        {{10, 120, 20}, {-170, 60, -160}},
        // Gimbal lock: only the difference or the sum of a and c is there to find.
        {{30, 90, 10}, {20, 90, 0}},
        {{30, -90, 10}, {40, -90, 0}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.angles.y);
        const Placement given = Placement::FromAngles({0, 0, 0}, row.angles);
        const Placement found = Placement::FromRotation({0, 0, 0}, rotation_of(given));
        expect_near(found.Angles(), row.expected, 1e-12);
        const Placement again = Placement::FromAngles({0, 0, 0}, found.Angles());
        expect_near(again.ToWorld(100, 200, 300), given.ToWorld(100, 200, 300), 1e-11);
    }
}

TEST(Placement, AnglesNearGimbalLockStillMakeTheRotation) {
    for (double off = 1.0; off > 1e-14; off /= 10) {
        SCOPED_TRACE(off);
        const Placement given = Placement::FromAngles({0, 0, 0}, {33, 90 - off, 57});
        const Placement found = Placement::FromRotation({0, 0, 0}, rotation_of(given));
        const Placement again = Placement::FromAngles({0, 0, 0}, found.Angles());
        expect_near(again.ToWorld(1, 2, 3), given.ToWorld(1, 2, 3), 3e-9);
    }
}

TEST(Placement, AddsNoErrorWhereNothingIsTurned) {
    const Coord3D origin(0.1, 1e6 + 0.7, -0.3);
    for (const double whole : {0.0, 360.0, -720.0}) {
        const Placement placement = Placement::FromAngles(origin, {whole, 0, -whole});
        EXPECT_FALSE(placement.IsRotated());
        EXPECT_EQ(placement.Angles().x, 0.0);
        EXPECT_EQ(placement.ToWorld(0.2, 0, 0.1).x, 0.1 + 0.2);
        EXPECT_EQ(placement.ToWorld(0.2, 0, 0.1).z, -0.3 + 0.1);
    }
    const Coord3D quarter = Placement::FromAngles({0, 0, 0}, {90, 0, 0}).ToWorld(7, 0, 0);
    EXPECT_EQ(quarter.x, 0.0);
    EXPECT_EQ(quarter.y, 7.0);
}

TEST(Placement, ToModelUndoesToWorldForAxesOfSixDigits) {
    const Rotation six_digits = {{{0.866025, -0.5, 0.0}, {0.5, 0.866025, 0.0}, {0.0, 0.0, 1.0}}};
    ASSERT_EQ(Placement::RotationFault(six_digits), nullptr);
    const Placement placement = Placement::FromRotation({0, 0, 0}, six_digits);
    const Coord3D world = placement.ToWorld(1000, 2000, 300);
    expect_near(placement.ToModel(world.x, world.y, world.z), {1000, 2000, 300}, 1e-9);
    EXPECT_NEAR(placement.Angles().x, 30.0, 1e-4);
}

TEST(Placement, SaysWhatIsWrongWithAxes) {
    struct Row {
        Rotation rotation;
        const char* fault;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Row rows[] = {
        {{{{1, 0, 0}, {0, 1, 0}, {0, 0, 2}}}, "an axis is not of length 1"},
        {{{{1, 0, 0}, {0, nan, 0}, {0, 0, 1}}}, "an axis is not of length 1"},
        {{{{1, 0.6, 0}, {0, 0.8, 0}, {0, 0, 1}}}, "the axes are not at right angles"},
        {{{{1, -0.6, 0}, {0, 0.8, 0}, {0, 0, 1}}}, "the axes are not at right angles"},
        {{{{1, 0, 0}, {0, 1, 0}, {0, 0, -1}}}, "the axes are left-handed"},
    };
    for (const Row& row : rows) EXPECT_STREQ(Placement::RotationFault(row.rotation), row.fault);
}

}  // namespace
}  // namespace zol::engine::block
