// Faces parted into triangles that cover them once.
#include "engine/formats/mesh/polygon.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

#include "tests/engine/formats/mesh/mesh_measures.h"

namespace {

using zol::engine::MeshData;
using zol::engine::MeshPoint;
using zol::engine::PolygonParter;
using zol::testing_support::area_of;
using zol::testing_support::cross_of;

using Outline = std::vector<std::pair<double, double>>;
using Outcome = PolygonParter::Outcome;

double shoelace(const Outline& outline) {
    double twice = 0;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const auto& [ax, ay] = outline[i];
        const auto& [bx, by] = outline[(i + 1) % outline.size()];
        twice += ax * by - bx * ay;
    }
    return twice / 2;
}

Outline comb(int teeth) {
    Outline outline = {{0, -1}, {2.0 * teeth, -1}};
    for (int i = teeth; i > 0; --i) {
        outline.emplace_back(2.0 * i - 0.5, 10 + i % 3);
        outline.emplace_back(2.0 * i - 1, 0);
    }
    return outline;
}

// A corridor that winds inwards.
Outline spiral(int corners) {
    Outline outer;
    Outline inner;
    for (int i = 0; i < corners; ++i) {
        const double angle = 0.3 * i;
        const double radius = 1000 - 100 * angle / (2 * std::numbers::pi);
        if (radius < 100) break;
        outer.emplace_back(radius * std::cos(angle), radius * std::sin(angle));
        inner.emplace_back((radius - 40) * std::cos(angle), (radius - 40) * std::sin(angle));
    }
    outer.insert(outer.end(), inner.rbegin(), inner.rend());
    return outer;
}

Outline star(int tips) {
    Outline outline;
    for (int i = 0; i < 2 * tips; ++i) {
        const double angle = std::numbers::pi * i / tips;
        const double radius = i % 2 == 0 ? 10 : 9.5;
        outline.emplace_back(radius * std::cos(angle), radius * std::sin(angle));
    }
    return outline;
}

struct Shape {
    const char* name;
    Outline outline;
};

const std::vector<Shape>& shapes() {
    static const std::vector<Shape> all = {
        {"square", {{0, 0}, {1, 0}, {1, 1}, {0, 1}}},
        {"arrow", {{0, 0}, {4, 2}, {0, 4}, {1, 2}}},
        {"arrow from its notch", {{1, 2}, {0, 0}, {4, 2}, {0, 4}}},
        {"L", {{0, 0}, {4, 0}, {4, 1}, {1, 1}, {1, 4}, {0, 4}}},
        {"corners in line", {{0, 0}, {1, 0}, {2, 0}, {2, 2}, {1, 1}, {1, 2}, {0, 2}, {0, 1}}},
        {"triangle with corners in line", {{0, 0}, {2, 0}, {4, 0}, {2, 2}, {0, 4}, {0, 2}}},
        {"spike", {{0, 0}, {4, 0}, {4, 4}, {2, 4}, {2, 7}, {2, 4}, {0, 4}}},
        {"arrow with its notch twice", {{0, 0}, {4, 2}, {0, 4}, {1, 2}, {1, 2}}},
        {"long spike inwards",
         {{0, 0}, {4, 0}, {4, 4}, {2, 4}, {2, 3}, {2, 1}, {2, 3}, {2, 4}, {0, 4}}},
        {"slit to a hole",
         {{0, 0}, {6, 0}, {6, 6}, {0, 6}, {0, 0}, {2, 2}, {2, 4}, {4, 4}, {4, 2}, {2, 2}}},
        {"two holes on one corner",
         {{0, 0},
          {9, 0},
          {9, 9},
          {0, 9},
          {0, 0},
          {1, 2},
          {1, 7},
          {3, 7},
          {1, 2},
          {0, 0},
          {7, 1},
          {2, 1},
          {7, 3},
          {7, 1}}},
        {"hole that touches the border",
         {{0, 0}, {8, 0}, {8, 8}, {4, 8}, {6, 4}, {4, 2}, {2, 4}, {4, 8}, {0, 8}}},
        {"comb", comb(300)},
        {"spiral", spiral(1000)},
        {"star", star(500)},
    };
    return all;
}

// The plane of each position: an origin and two upright axes of length 1.
struct Position {
    const char* name;
    MeshPoint origin;
    MeshPoint u;
    MeshPoint v;
};
constexpr Position kPositions[] = {
    {"level", {0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
    {"facing down", {0, 0, 0}, {0, 1, 0}, {1, 0, 0}},
    {"upright", {600000, 7000000, 300}, {0, 0, 1}, {1, 0, 0}},
    {"slanting", {600000, 7000000, 300}, {0.6, 0.64, -0.48}, {-0.8, 0.48, -0.36}},
};

Outcome part(const Outline& outline, const Position& position, MeshData& mesh) {
    for (const auto& [x, y] : outline) {
        MeshPoint point{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            point[axis] = position.origin[axis] + x * position.u[axis] + y * position.v[axis];
        }
        mesh.points.Add(point);
    }
    std::vector<std::int32_t> corners(outline.size());
    std::iota(corners.begin(), corners.end(), 0);
    return PolygonParter().Part(corners, mesh.points, mesh.triangles);
}

TEST(Polygon, IsCoveredOnceByTrianglesThatTurnAlike) {
    for (const Shape& shape : shapes()) {
        for (const Position& position : kPositions) {
            for (const bool is_turned : {false, true}) {
                SCOPED_TRACE(std::string(shape.name) + ", " + position.name);
                Outline outline = shape.outline;
                if (is_turned) std::reverse(outline.begin(), outline.end());
                MeshData mesh;
                EXPECT_EQ(part(outline, position, mesh), Outcome::Parted);
                EXPECT_EQ(mesh.triangles.Size(), outline.size() - 2);
                const double area = std::fabs(shoelace(outline));
                EXPECT_NEAR(area_of(mesh), area, 1e-8 * area);
                MeshPoint sum{};
                for (std::size_t i = 0; i < mesh.triangles.Size(); ++i) {
                    for (std::size_t axis = 0; axis < 3; ++axis) {
                        sum[axis] += cross_of(mesh, i)[axis] / 2;
                    }
                }
                // As large as the area only when no triangle is turned over.
                EXPECT_NEAR(std::hypot(sum[0], sum[1], sum[2]), area, 1e-8 * area);
            }
        }
    }
}

TEST(Polygon, ThatCrossesItselfOrHasNoAreaEnds) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> anywhere(0, 100);
    Outline tangle(3000);
    for (auto& corner : tangle) corner = {anywhere(random), anywhere(random)};
    const struct {
        const char* name;
        Outline outline;
        Outcome outcome;
    } cases[] = {
        {"bow tie", {{0, 0}, {2, 2}, {2, 0}, {0, 3}}, Outcome::Crossing},
        {"bow tie of no area", {{0, 0}, {1, 1}, {1, 0}, {0, 1}}, Outcome::Crossing},
        {"pentagram", {{0, 3}, {-2, -2}, {3, 1}, {-3, 1}, {2, -2}}, Outcome::Crossing},
        {"square drawn twice",
         {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}, {1, 0}, {1, 1}, {0, 1}},
         Outcome::Crossing},
        {"the same with a spike",
         {{0, 0}, {1, 0}, {1, 1}, {1, 3}, {1, 1}, {0, 1}, {0, 0}, {1, 0}, {1, 1}, {0, 1}},
         Outcome::Crossing},
        {"loop inwards", {{0, 0}, {9, 0}, {9, 9}, {6, -3}, {3, 9}, {0, 9}}, Outcome::Crossing},
        {"in line", {{0, 0}, {1, 1}, {3, 3}, {2, 2}}, Outcome::Parted},
        {"one place", {{1, 1}, {1, 1}, {1, 1}, {1, 1}, {1, 1}}, Outcome::Parted},
        {"tangle", tangle, Outcome::Crossing},
    };
    for (const auto& [name, outline, outcome] : cases) {
        SCOPED_TRACE(name);
        MeshData mesh;
        EXPECT_EQ(part(outline, kPositions[0], mesh), outcome);
        EXPECT_EQ(mesh.triangles.Size(), outline.size() - 2);
    }
}

TEST(Polygon, OffItsPlaneIsPartedAsItLooksFromTheFront) {
    // The notch of the arrow lifted far out of the plane of the others.
    MeshData mesh;
    mesh.points.Add({0, 0, 0});
    mesh.points.Add({4, 2, 1});
    mesh.points.Add({0, 4, 0});
    mesh.points.Add({1, 2, 1.5});
    const std::vector<std::int32_t> corners = {0, 1, 2, 3};
    EXPECT_EQ(PolygonParter().Part(corners, mesh.points, mesh.triangles), Outcome::Parted);
    ASSERT_EQ(mesh.triangles.Size(), 2U);
    for (std::size_t i = 0; i < 2; ++i) EXPECT_GT(cross_of(mesh, i)[2], 0);
}

}  // namespace
