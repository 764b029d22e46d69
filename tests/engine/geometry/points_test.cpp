// Points inside and near a mesh, in special positions above all.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "engine/geometry/nearness.h"
#include "engine/geometry/point_locator.h"
#include "tests/engine/geometry/exact_geometry.h"
#include "tests/engine/geometry/solids.h"

namespace zol::testing {
namespace {

using engine::geometry::PointLocator;
using engine::geometry::TriangleTree;

/// The winding number by all triangles, in rationals: those over the point moved by the
/// tie rule.
int exact_winding(const Mesh& mesh, const Point& point) {
    RationalPoint p = rational(point);
    const Rational step(1, 1000000000);
    p[0] += step;
    p[1] += step * step;
    p[2] += step * step * step;
    int winding = 0;
    for (const Triangle& t : mesh.triangles) {
        const RationalPoint a = rational(mesh.points[static_cast<std::size_t>(t[0])]);
        const RationalPoint b = rational(mesh.points[static_cast<std::size_t>(t[1])]);
        const RationalPoint c = rational(mesh.points[static_cast<std::size_t>(t[2])]);
        const int facing = cross(b - a, c - a)[2].sign();
        const auto is_left = [&](const RationalPoint& from, const RationalPoint& to) {
            return cross(to - from, p - from)[2].sign() == facing;
        };
        if (facing == 0 || !is_left(a, b) || !is_left(b, c) || !is_left(c, a)) continue;
        if (dot(cross(b - a, c - a), p - a).sign() != facing) winding += facing;
    }
    return winding;
}

TEST(PointLocatorTest, AgreesWithRationalsOnALattice) {
    // Walls, faces, edges and corners of these lie on whole coordinates, and so do the points.
    const struct {
        const char* name;
        Mesh mesh;
    } rows[] = {
        {"box", box({1, 1, 1}, {4, 3, 5})},
        {"tetrahedron", tetrahedron({1, 1, 1}, 4)},
        {"two that overlap", box({0, 0, 0}, {3, 3, 3}).With(box({1, 1, 1}, {5, 5, 5}))},
        {"a void", box({0, 0, 0}, {5, 5, 5}).With(box({1, 1, 1}, {3, 4, 4}).TurnedInsideOut())},
        {"shell in shell", box({0, 0, 0}, {5, 5, 5})
                               .With(box({1, 1, 1}, {5, 4, 4}).TurnedInsideOut())
                               .With(box({2, 2, 2}, {3, 3, 3}))},
        {"a stack",
         box({0, 0, 0}, {5, 5, 1}).With(box({0, 1, 2}, {4, 5, 3})).With(box({1, 0, 4}, {5, 3, 5}))},
        {"slopes", sphere({2.5, 2.5, 2.5}, 2.5, 6, 8)},
        {"flat along x", box({2, 0, 0}, {3, 5, 5})},
        {"flat along y", box({0, 2, 0}, {5, 3, 5})},
    };
    for (const auto& row : rows) {
        const PointLocator locator(row.mesh.View());
        for (int i = 0; i < 6 * 6 * 6; ++i) {
            const int up = i / 36;
            const int across = i / 6 % 6;
            const Point point{double(i % 6), double(across), double(up)};
            ASSERT_EQ(locator.SheetsOver(point).winding, exact_winding(row.mesh, point))
                << row.name << " at " << point[0] << ' ' << point[1] << ' ' << point[2];
        }
    }
}

TEST(PointLocatorTest, AgreesWithRationalsInBetween) {
    // A slab askew to all axes, whose walls lie over each other in most cells, and a torus,
    // whose view from above has a hole.
    Mesh slab = box({0, 0, 0}, {60, 40, 1}).With(torus(20, 4, 14, 7).Moved({30, 20, 30}));
    for (Point& point : slab.points) {
        const auto [x, y, z] = point;
        point = {x * 0.5 - z * 0.8, y + x * 0.25, z * 0.5 + x * 0.75};
    }
    const Mesh mesh = slab.Moved(kFarAway);
    const PointLocator locator(mesh.View());
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> part(0, 1);
    int inside = 0;
    for (int i = 0; i < 80; ++i) {
        // Anywhere in the slab's box, or close to a corner.
        Point point{kFarAway[0] - 30 + 60 * part(random), kFarAway[1] + 60 * part(random),
                    kFarAway[2] + 60 * part(random)};
        if (i % 2 == 0) {
            point = mesh.points[static_cast<std::size_t>(i / 2) % mesh.points.size()];
            for (double& coordinate : point) coordinate += (part(random) - 0.5) * 2;
        }
        const int expected = exact_winding(mesh, point);
        inside += expected;
        ASSERT_EQ(locator.SheetsOver(point).winding, expected) << i;
        ASSERT_EQ(locator.SheetsOver(point).crossings % 2, static_cast<unsigned>(expected % 2));
    }
    EXPECT_GT(inside, 5);
}

TEST(PointLocatorTest, ASolidAndItsNeighbourShareNoPointAndMissNone) {
    // Eight boxes fill a block; whatever axis each one's ray takes, every lattice point
    // inside belongs to one of them.
    std::vector<Mesh> parts;
    for (int i = 0; i < 8; ++i) {
        const double x = i % 2 == 0 ? 0 : 1;
        const double y = i / 2 % 2 == 0 ? 0 : 3;
        const double z = i / 4 == 0 ? 0 : 2;
        parts.push_back(box({x, y, z}, {x == 0 ? 1.0 : 6.0, y == 0 ? 3.0 : 6.0, z == 0 ? 2.0 : 6.0})
                            .Moved(kFarAway));
    }
    std::vector<PointLocator> locators;
    for (const Mesh& part : parts) locators.emplace_back(part.View());
    for (int i = 0; i < 5 * 5 * 5; ++i) {
        const int layer = i / 25;
        const int row = i / 5 % 5;
        const Point point{kFarAway[0] + 1 + i % 5, kFarAway[1] + 1 + row, kFarAway[2] + 1 + layer};
        int owners = 0;
        for (const PointLocator& locator : locators) owners += locator.SheetsOver(point).winding;
        ASSERT_EQ(owners, 1) << i;
    }
}

TEST(PointLocatorTest, NoWrongAnswerAMicrometreFromTheSurface) {
    const Mesh mesh = sphere(kFarAway, 250, 24, 48);
    const PointLocator locator(mesh.View());
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> part(0.05, 0.95);
    for (const Triangle& t : mesh.triangles) {
        const Point& a = mesh.points[static_cast<std::size_t>(t[0])];
        const Point& b = mesh.points[static_cast<std::size_t>(t[1])];
        const Point& c = mesh.points[static_cast<std::size_t>(t[2])];
        const double u = part(random);
        const double v = part(random) * (1 - u);
        Point inner{};
        Point outer{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const double on = a[axis] + u * (b[axis] - a[axis]) + v * (c[axis] - a[axis]);
            const double towards = (kFarAway[axis] - on) / 250 * 1e-6;
            inner[axis] = on + towards;
            outer[axis] = on - towards;
        }
        // What rounding made of the points decides, not what was meant.
        ASSERT_EQ(locator.SheetsOver(inner).winding != 0, exact_side(a, b, c, inner) < 0);
        ASSERT_EQ(locator.SheetsOver(outer).winding != 0, exact_side(a, b, c, outer) < 0);
    }
}

TEST(PointLocatorTest, OddMeshesMeetNothingTheyShouldNot) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const PointLocator unit(box({0, 0, 0}, {1, 1, 1}).View());
    const Mesh upright{{{0, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{0, 1, 2}}};
    const Mesh repeated{{{0, 0, 0}, {0, 0, 0}, {0, 0, 0}}, {{0, 1, 2}}};
    Mesh line{{{0, 0, 0}, {1e6, 0, 0}, {2e6, 0, 0}}, {}};
    line.triangles.assign(200'000, {0, 1, 2});
    EXPECT_EQ(PointLocator(line.View()).SheetsOver({1, 0, 0}).crossings, 0U);
    EXPECT_EQ(PointLocator(MeshView{}).SheetsOver({0, 0, 0}).crossings, 0U);
    EXPECT_EQ(PointLocator(repeated.View()).SheetsOver({0, 0, 0}).crossings, 0U);
    EXPECT_EQ(PointLocator(upright.View()).SheetsOver({0, 0.25, 0.25}).winding, 0);
    for (const Point& point :
         {Point{nan, 0.5, 0.5}, Point{0.5, 0.5, INFINITY}, Point{-INFINITY, 0, 0}}) {
        EXPECT_EQ(unit.SheetsOver(point).crossings, 0U);
    }
}

TEST(NearnessTest, ToleranceIsADistanceAndZeroIsExact) {
    const Mesh mesh = box({0, 0, 0}, {10, 10, 10}).Moved(kFarAway);
    const TriangleTree tree(mesh.View());
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        const char* name;
        Point at;
        double tolerance;
        bool expected;
    } rows[] = {
        {"on a face", {5, 3, 10}, 0, true},
        {"on an edge", {10, 5, 10}, 0, true},
        {"on a corner", {0, 0, 0}, 0, true},
        {"less than a last place off a face", {5, 3, 10 + 0x1p-44}, 0, true},
        {"a step of doubles off a face", {5, 3, 10 + 0x1p-42}, 0, false},
        {"inside, far from all", {5, 5, 5}, 4.999, false},
        {"inside, as far as told", {5, 5, 5}, 5, true},
        {"over a face", {5, 5, 10.5}, 0.5, true},
        {"over a face, too far", {5, 5, 10.5}, 0.4999, false},
        {"beside an edge", {13, 5, 14}, 5, true},
        {"beside an edge, too far", {13, 5, 14}, 4.999, false},
        {"beside a corner", {12, 13, 16}, 7, true},
        {"beside a corner, too far", {12, 13, 16}, 6.999, false},
        {"a tolerance below 0", {5, 3, 10}, -1, false},
        {"a tolerance that is no number", {5, 3, 10}, nan, false},
        {"any distance", {1e9, 0, 0}, INFINITY, true},
        {"a point that is no number", {nan, 3, 10}, 1, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Point point = row.at;
        for (std::size_t axis = 0; axis < 3; ++axis) point[axis] += kFarAway[axis];
        EXPECT_EQ(engine::geometry::is_within(mesh.View(), tree, point, row.tolerance),
                  row.expected);
    }
}

TEST(NearnessTest, FindsWhatAWalkOverAllTrianglesFinds) {
    const Mesh mesh = torus(30, 7, 40, 17);
    const TriangleTree tree(mesh.View());
    std::mt19937_64 random(5);
    std::uniform_real_distribution<double> coordinate(-40, 40);
    for (int i = 0; i < 300; ++i) {
        const Point point{coordinate(random), coordinate(random), coordinate(random) / 4};
        double nearest = INFINITY;
        for (const Triangle& t : mesh.triangles) {
            nearest = std::min(nearest, engine::geometry::distance(
                                            point, mesh.points[static_cast<std::size_t>(t[0])],
                                            mesh.points[static_cast<std::size_t>(t[1])],
                                            mesh.points[static_cast<std::size_t>(t[2])]));
        }
        EXPECT_TRUE(engine::geometry::is_within(mesh.View(), tree, point, nearest * 1.0001));
        EXPECT_FALSE(engine::geometry::is_within(mesh.View(), tree, point, nearest * 0.9999));
    }
}

}  // namespace
}  // namespace zol::testing
