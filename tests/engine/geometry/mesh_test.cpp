// Whole meshes: measures in closed form, and one defect each.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "engine/geometry/crossing.h"
#include "engine/geometry/edges.h"
#include "engine/geometry/orient_parts.h"
#include "engine/geometry/single_valued.h"
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

}  // namespace
}  // namespace zol::testing
