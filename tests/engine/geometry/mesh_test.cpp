// Whole meshes: measures in closed form, and one defect each.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <random>
#include <string>

#include "engine/geometry/clear_parts.h"
#include "engine/geometry/crossing.h"
#include "engine/geometry/crossing_count.h"
#include "engine/geometry/edges.h"
#include "engine/geometry/orient_parts.h"
#include "engine/geometry/single_valued.h"
#include "engine/geometry/triangle_meet.h"
#include "engine/geometry/volume.h"
#include "engine/geometry/weld.h"
#include "tests/engine/geometry/exact_geometry.h"
#include "tests/engine/geometry/solids.h"

namespace zol::testing {
namespace {

using engine::geometry::EdgeFacts;

EdgeFacts facts_of(const Mesh& mesh) {
    const auto welded = engine::geometry::welded_triangles(mesh.View());
    return engine::geometry::edge_facts(mesh.points.size(),
                                        welded.empty() ? mesh.triangles : welded);
}

bool crosses(const Mesh& mesh) {
    const engine::geometry::TriangleTree tree(mesh.View());
    return engine::geometry::some_crossing(mesh.View(), tree).has_value();
}

bool is_single_valued(const Mesh& mesh) {
    return !engine::geometry::some_second_height(mesh.View()).has_value();
}

double exact_volume(const Mesh& mesh) {
    Rational sum = 0;
    for (const Triangle& t : mesh.triangles) {
        const auto corner = [&](std::size_t i) {
            return rational(mesh.points[static_cast<std::size_t>(t[i])]);
        };
        sum += dot(corner(0), cross(corner(1), corner(2)));
    }
    return static_cast<double>(sum / 6);
}

const Mesh kUnitBox = box({0, 0, 0}, {1, 1, 1});

TEST(VolumeTest, IsExactToTheLastPlacesFarFromTheOrigin) {
    const struct {
        const char* name;
        Mesh mesh;
    } rows[] = {
        {"box", box({0, 0, 0}, {3, 5, 7})},
        {"tetrahedron", tetrahedron({0, 0, 0}, 12)},
        {"sphere", sphere({0, 0, 0}, 250, 30, 60)},
        {"torus", torus(300, 40, 45, 15)},
        {"two apart, one inside out", kUnitBox.With(box({4, 0, 0}, {6, 2, 2}).TurnedInsideOut())},
        {"a void inside",
         box({0, 0, 0}, {9, 9, 9}).With(box({3, 3, 3}, {6, 6, 6}).TurnedInsideOut())},
    };
    for (const auto& row : rows) {
        for (const Point& place : {Point{0, 0, 0}, kFarAway}) {
            SCOPED_TRACE(row.name);
            const Mesh mesh = row.mesh.Moved(place);
            const double exact = exact_volume(mesh);
            EXPECT_NEAR(engine::geometry::signed_volume(mesh.View(), mesh.triangles), exact,
                        1e-13 * std::fabs(exact));
        }
    }
    EXPECT_EQ(exact_volume(box({0, 0, 0}, {3, 5, 7})), 105.0);
    EXPECT_EQ(engine::geometry::surface_area(box({0, 0, 0}, {3, 5, 7}).View()), 142.0);
}

struct Expected {
    bool consistent;
    bool closed;
    bool cycle;
    bool crossing;
};

TEST(MeshTest, EachDefectChangesItsOwnFact) {
    Mesh hole = kUnitBox;
    hole.triangles.pop_back();
    Mesh flipped = kUnitBox;
    std::swap(flipped.triangles[3][0], flipped.triangles[3][1]);
    Mesh doubled = kUnitBox;
    doubled.triangles.push_back(doubled.triangles[5]);
    Mesh doubled_turned = kUnitBox;
    doubled_turned.triangles.push_back(
        {doubled.triangles[5][0], doubled.triangles[5][2], doubled.triangles[5][1]});
    Mesh repeating = kUnitBox;
    repeating.triangles.push_back({2, 2, 5});
    Mesh overlapping = kUnitBox.With(box({0.5, 0.5, 0.5}, {2, 2, 2}));
    Mesh touching_faces = kUnitBox.With(box({1, 0.25, 0.25}, {2, 0.75, 0.75}));
    Mesh touching_corner = kUnitBox.With(box({1, 1, 1}, {2, 2, 2}));
    Mesh touching_edge = kUnitBox.With(box({1, 1, 0}, {2, 2, 1}));
    Mesh corner_on_face = kUnitBox.With(tetrahedron({0.5, 0.5, 1}, 0.25));
    // A long edge beside two short ones, closed by a triangle without area.
    Mesh sliver = kUnitBox;
    sliver.points.push_back({0.5, 0, 0});
    sliver.triangles[4] = {0, 8, 5};  // the front face now goes by the new point
    sliver.triangles.push_back({8, 1, 5});
    Mesh filled_sliver = sliver;
    filled_sliver.triangles.push_back({8, 0, 1});

    const struct {
        const char* name;
        Mesh mesh;
        Expected expected;
    } rows[] = {
        // name, mesh, consistent, closed, cycle, crossing
        {"a box", kUnitBox, {true, true, true, false}},
        {"a sphere", sphere({0, 0, 0}, 10, 20, 40), {true, true, true, false}},
        {"a torus", torus(10, 3, 30, 12), {true, true, true, false}},
        {"points of their own", kUnitBox.Unwelded(), {true, true, true, false}},
        {"inside out", kUnitBox.TurnedInsideOut(), {true, true, true, false}},
        {"a triangle missing", hole, {true, false, false, false}},
        {"a triangle turned", flipped, {false, true, false, false}},
        {"a triangle twice", doubled, {false, false, false, true}},
        {"a triangle twice, once turned", doubled_turned, {false, false, false, true}},
        {"a triangle of two corners", repeating, {true, true, true, false}},
        {"two boxes that overlap", overlapping, {true, true, true, true}},
        {"faces on each other", touching_faces, {true, true, true, true}},
        {"one corner in common", touching_corner, {true, true, true, false}},
        {"one edge in common", touching_edge, {false, true, true, false}},
        {"a corner on a face", corner_on_face, {true, true, true, true}},
        {"a corner on an edge", sliver, {true, false, false, true}},
        {"the same, filled without area", filled_sliver, {true, true, true, true}},
    };
    for (const auto& row : rows) {
        for (const Point& place : {Point{0, 0, 0}, kFarAway}) {
            SCOPED_TRACE(row.name);
            Mesh mesh = row.mesh.Moved(place);
            const EdgeFacts facts = facts_of(mesh);
            EXPECT_EQ(facts.IsConsistent(), row.expected.consistent);
            EXPECT_EQ(facts.IsClosed(), row.expected.closed);
            EXPECT_EQ(facts.IsCycle(), row.expected.cycle);
            if (const auto welded = engine::geometry::welded_triangles(mesh.View());
                !welded.empty()) {
                mesh.triangles = welded;
            }
            EXPECT_EQ(crosses(mesh), row.expected.crossing);
        }
    }
}

/// Whether two of its triangles meet in more than a shared corner or edge, by a look at
/// every pair; those of one clear part must not.
bool crosses_by_all_pairs(const Mesh& mesh) {
    const std::vector<std::uint32_t> parts = engine::geometry::clear_parts(mesh.View());
    bool crosses = false;
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (!engine::geometry::meet_beyond_shared(mesh.points, mesh.triangles[i],
                                                      mesh.triangles[j])) {
                continue;
            }
            crosses = true;
            EXPECT_TRUE(parts[i] == 0 || parts[i] != parts[j]) << i << ' ' << j;
        }
    }
    return crosses;
}

/// A ramp that winds about the z axis, rising so much a turn.
Mesh ramp(double turns, double rise, double inner) {
    Mesh mesh = terrain(12, [](int, int) { return 0.0; });
    for (Point& point : mesh.points) {
        const double angle = 2 * std::numbers::pi * turns * point[0] / 12;
        const double radius = inner + point[1] / 2;
        point = {radius * std::cos(angle), radius * std::sin(angle), rise * turns * point[0] / 12};
    }
    return mesh;
}

TEST(CrossingTest, FindsWhatALookAtEveryPairFinds) {
    const Mesh hills =
        terrain(10, [](int i, int j) { return 2 * std::sin(i * 0.7) * std::cos(j * 0.9); });
    const auto without = [](Mesh mesh, std::initializer_list<int> cells) {
        for (const int cell : cells) {
            mesh.triangles[static_cast<std::size_t>(2 * cell)] = {0, 0, 0};
            mesh.triangles[static_cast<std::size_t>(2 * cell + 1)] = {0, 0, 0};
        }
        return mesh;
    };
    const auto with_point = [](Mesh mesh, std::size_t number, const Point& at) {
        mesh.points[number] = at;
        return mesh;
    };
    // A corner of the border bent over, until it is inside of the surface's own view.
    const Mesh bent = with_point(hills, 0, {4.5, 4.5, 9});
    const struct {
        const char* name;
        Mesh mesh;
        bool expected;
    } rows[] = {
        {"hills", hills, false},
        {"holes", without(hills, {11, 12, 24, 55, 78}), false},
        {"holes that touch at a corner", without(hills, {11, 22}), false},
        {"a ring that is not closed", ramp(0.9, 0, 3), false},
        {"a ramp of three turns", ramp(3, 8, 3), false},
        {"three turns in one plane", ramp(3, 0, 3), true},
        {"a ring that goes on over its start", ramp(1.05, 0, 3), true},
        {"two of a kind, one through the other", hills.With(hills.Moved({0.9, 0.2, 0.1})), true},
        {"two of a kind, one above the other", hills.With(hills.Moved({0.3, 0.2, 9})), false},
        {"a corner bent over the surface", bent, false},
        {"a corner bent through the surface", with_point(hills, 0, {5.2, 5.2, -3}), true},
        {"a point pulled aside", with_point(hills, 60, {7.2, 5.1, 0}), true},
        {"a border that touches its own side",
         with_point(hills, 8, {0, 8, hills.points[8 * 11][2]}), true},
        {"a torus", torus(10, 3, 16, 8), false},
        {"a torus through itself", torus(3, 3.5, 16, 8), true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        for (const Point& place : {Point{0, 0, 0}, kFarAway}) {
            const Mesh mesh = row.mesh.Moved(place);
            EXPECT_EQ(crosses(mesh), row.expected);
        }
        Mesh mesh = row.mesh;
        std::erase_if(mesh.triangles, [](const Triangle& t) { return t[0] == t[1]; });
        EXPECT_EQ(crosses_by_all_pairs(mesh), row.expected);
        // Looked at along each axis.
        for (int axis = 0; axis < 3; ++axis) {
            for (Point& point : mesh.points)
                std::rotate(point.begin(), point.begin() + 1, point.end());
            EXPECT_EQ(crosses(mesh), row.expected);
        }
    }
    // From smooth to crumpled.
    std::mt19937_64 random(17);
    int crumpled = 0;
    for (int i = 0; i < 60; ++i) {
        std::normal_distribution<double> off(0, 0.01 * (i + 1));
        Mesh mesh = terrain(9, [](int, int) { return 0.0; });
        for (Point& point : mesh.points) {
            for (double& coordinate : point) coordinate += off(random);
        }
        SCOPED_TRACE(i);
        const bool expected = crosses_by_all_pairs(mesh);
        crumpled += expected ? 1 : 0;
        EXPECT_EQ(crosses(mesh), expected);
    }
    EXPECT_GT(crumpled, 10);
    EXPECT_LT(crumpled, 50);
}

TEST(CrossingTest, MostOfASmoothSurfaceIsOneClearPart) {
    const Mesh hills = terrain(40, [](int i, int j) { return 2 * std::sin(i * 0.3 + j * 0.2); });
    const std::vector<std::uint32_t> parts = engine::geometry::clear_parts(hills.View());
    const std::uint32_t inner = parts[2 * (20 * 40 + 20)];
    EXPECT_NE(inner, 0U);
    EXPECT_GT(std::count(parts.begin(), parts.end(), inner), 2800);
}

TEST(MeshTest, CountsEdgesAndNamesTheFirst) {
    Mesh hole = kUnitBox;
    hole.triangles.erase(hole.triangles.begin());  // 0, 2, 3
    const EdgeFacts facts = facts_of(hole);
    EXPECT_EQ(facts.edges, 18U);
    EXPECT_EQ(facts.border.number, 3U);
    EXPECT_EQ(facts.border.first, std::pair(0, 2));
    EXPECT_FALSE(facts.crowded.first.has_value());
}

TEST(OrientPartsTest, TurnsTheFewerTrianglesOfEachPartAndRefusesAMoebiusStrip) {
    Mesh mixed = kUnitBox.With(box({3, 0, 0}, {4, 1, 1}).TurnedInsideOut());
    for (const std::size_t t : {1U, 7U, 15U})
        std::swap(mixed.triangles[t][0], mixed.triangles[t][1]);
    const auto turns = engine::geometry::turns_to_orient(mixed.triangles);
    ASSERT_TRUE(turns.has_value());
    for (std::size_t t = 0; t < turns->size(); ++t) {
        EXPECT_EQ((*turns)[t], t == 1 || t == 7 || t == 15) << t;
    }

    // Five triangles in a ring with a half turn.
    const std::vector<Triangle> strip{{0, 1, 2}, {1, 2, 3}, {2, 3, 4}, {3, 4, 0}, {4, 0, 1}};
    EXPECT_FALSE(engine::geometry::turns_to_orient(strip).has_value());
}

TEST(SurfaceTest, AHeightOverThePlan) {
    // As high on its right border as on its left one.
    const Mesh hills = terrain(12, [](int i, int j) { return std::abs(i - 6) * 0.5 + j * 0.25; });
    Mesh wall = hills;
    wall.points.push_back({0, 0, -5});
    wall.triangles.push_back({0, 1, static_cast<int>(wall.points.size()) - 1});
    Mesh overhang = hills;
    overhang.points[40][0] += 1.5;
    Mesh beside = hills.With(hills.Moved({12, 0, 0}));
    Mesh step = hills.With(hills.Moved({12, 0, 1}));
    Mesh above = hills.With(terrain(1, [](int, int) { return 50.0; }).Moved({3.25, 3.25, 0}));
    Mesh same_twice = hills.With(hills);
    Mesh point_above = hills.With(Mesh{{{12, 12, 99}, {13, 12, 99}, {12, 13, 99}}, {{0, 1, 2}}});
    const struct {
        const char* name;
        Mesh mesh;
        bool expected;
    } rows[] = {
        {"hills", hills, true},
        {"a triangle that stands vertical", wall, false},
        {"an overhang", overhang, false},
        {"another beside it at the same heights", beside, true},
        {"another beside it, a step higher", step, false},
        {"a plate above", above, false},
        {"the same twice", same_twice, true},
        {"a plate that begins above a corner", point_above, false},
        {"a box", kUnitBox, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(is_single_valued(row.mesh), row.expected);
    }
}

// Each pair of them would take hours.
TEST(PileTest, ManyTrianglesInOnePlaceAreNotLookedAtInPairs) {
    constexpr std::size_t kMany = 200000;
    const struct {
        const char* name;
        Triangle triangle;
        bool crosses;
    } rows[] = {
        {"of one point", {0, 0, 0}, false},
        {"in a line", {0, 1, 3}, false},
        {"the same", {0, 1, 2}, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Mesh mesh;
        mesh.points = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {2, 0, 0}};
        mesh.triangles.assign(kMany, row.triangle);
        EXPECT_EQ(crosses(mesh), row.crosses);
        EXPECT_TRUE(is_single_valued(mesh));
        // One more triangle, through another one of the pile's place.
        if (row.crosses) continue;
        mesh.points.insert(mesh.points.end(), {{0.25, 0.25, -1}, {0.25, 0.25, 1}, {0.5, 0.25, 1}});
        mesh.triangles.push_back({0, 1, 2});
        mesh.triangles.push_back({4, 5, 6});
        const engine::geometry::TriangleTree tree(mesh.View());
        const auto count = engine::geometry::count_crossings(mesh.View(), tree, 10);
        EXPECT_EQ(count.number, 1U);
        EXPECT_EQ(count.first, (engine::geometry::TrianglePair{kMany, kMany + 1}));
    }
}

// Points that all fall on one place of a table by hash, as a hostile file may have them: a
// walk over those in the way of each would take minutes.
TEST(WeldTest, PointsMadeToCollideAreWeldedAllTheSame) {
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;
    std::uint64_t inverse = kFactor;
    for (int i = 0; i < 6; ++i) inverse *= 2 - kFactor * inverse;
    const auto mixed = [](std::uint64_t hash, double coordinate) {
        hash = (hash ^ std::bit_cast<std::uint64_t>(coordinate)) * kFactor;
        return hash ^ hash >> 32U;
    };
    std::vector<Point> points;
    for (double x = 1.0; points.size() < 300000; x += 1.0) {
        const double z = std::bit_cast<double>(mixed(mixed(0, x), 1.0) ^ inverse * 12345);
        if (!std::isfinite(z)) continue;
        points.push_back({x, 1.0, z});
        if (points.size() % 1000 == 0) points.push_back(points[points.size() / 2]);
    }
    const std::vector<std::int32_t> first = engine::geometry::first_of_same(points);
    ASSERT_EQ(first.size(), points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto same = static_cast<std::size_t>(first[i]);
        ASSERT_LE(same, i);
        ASSERT_EQ(points[same], points[i]);
        ASSERT_EQ(same == i, i == 0 || i % 1000 != 0) << i;
    }
}

}  // namespace
}  // namespace zol::testing
