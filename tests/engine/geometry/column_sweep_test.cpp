// Columns of points against meshes, with lines and points in special position above all.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "engine/geometry/block_selection.h"
#include "engine/geometry/column_sort.h"
#include "engine/geometry/point_locator.h"
#include "tests/engine/geometry/exact_blocks.h"

namespace zol::testing {
namespace {

using engine::geometry::ColumnLists;
using engine::geometry::Crossing;
using engine::geometry::InsideRule;
using engine::geometry::PointGrid;
using engine::geometry::Ticks;

Ticks steps(double first, double step, int count) {
    std::vector<double> at;
    for (int i = 0; i < count; ++i) at.push_back(first + step * i);
    return Ticks(std::move(at));
}

/// By column and layer, layers fastest.
std::vector<bool> swept(const Mesh& mesh, const PointGrid& grid) {
    std::vector<Crossing> crossings;
    EXPECT_TRUE(engine::geometry::add_crossings(mesh.View(), grid, 1'000'000, crossings));
    ColumnLists<Crossing> columns(std::move(crossings), grid.Columns());
    std::vector<bool> inside;
    for (std::size_t column = 0; column < grid.Columns(); ++column) {
        std::vector<bool> layers(grid.z.Count());
        engine::geometry::for_each_run(columns.Of(column), InsideRule::NonZero,
                                       [&](std::uint32_t first, std::uint32_t end) {
                                           EXPECT_LT(first, end);
                                           for (std::uint32_t k = first; k < end; ++k)
                                               layers[k] = true;
                                       });
        inside.insert(inside.end(), layers.begin(), layers.end());
    }
    return inside;
}

template <class Expected>
void expect_same(const char* name, const Mesh& mesh, const PointGrid& grid, Expected expected) {
    const std::vector<bool> inside = swept(mesh, grid);
    for (std::size_t i = 0; i < inside.size(); ++i) {
        const std::size_t column = i / grid.z.Count();
        const Point at{grid.x[column % grid.x.Count()], grid.y[column / grid.x.Count()],
                       grid.z[i % grid.z.Count()]};
        ASSERT_EQ(inside[i], expected(at) != 0)
            << name << " at " << at[0] << ' ' << at[1] << ' ' << at[2];
    }
}

Mesh wedge() {
    return {
        {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}, {4, 0, 4}, {4, 4, 4}},
        {{0, 2, 1}, {0, 3, 2}, {1, 2, 5}, {1, 5, 4}, {0, 1, 4}, {3, 5, 2}, {0, 4, 5}, {0, 5, 3}}};
}

TEST(ColumnSweepTest, AgreesWithRationalsWhereAllIsOnLattices) {
    const struct {
        const char* name;
        Mesh mesh;
    } rows[] = {
        {"box", box({1, 1, 1}, {4, 3, 5})},
        {"wedge", wedge()},
        {"tetrahedron", tetrahedron({1, 1, 1}, 4)},
        {"two that overlap", box({0, 0, 0}, {3, 3, 3}).With(box({1, 1, 1}, {5, 5, 5}))},
        {"a void", box({0, 0, 0}, {5, 5, 5}).With(box({1, 1, 1}, {3, 4, 4}).TurnedInsideOut())},
        {"sheets over sheets", box({0, 0, 0}, {5, 5, 1}).With(box({0, 0, 2}, {5, 5, 3}))},
        {"a ramp", box({0, 0, 0}, {2, 5, 1}).With(tetrahedron({2, 0, 1}, 3))},
    };
    for (const auto& row : rows) {
        for (const Point& place : {Point{0, 0, 0}, kFarAway}) {
            const Mesh mesh = row.mesh.Moved(place);
            const PointGrid grid{steps(place[0], 1, 6), steps(place[1], 1, 6),
                                 steps(place[2] - 0.5, 0.5, 12)};
            expect_same(row.name, mesh, grid,
                        [&](const Point& at) { return exact_winding_over(mesh, at); });
        }
    }
}

TEST(ColumnSweepTest, EveryPointOfAFilledBlockHasOneOwner) {
    std::vector<int> owners;
    const PointGrid grid{steps(kFarAway[0] + 1, 1, 5), steps(kFarAway[1] + 1, 1, 5),
                         steps(kFarAway[2] + 1, 1, 5)};
    for (int i = 0; i < 8; ++i) {
        const double x = i % 2 == 0 ? 0 : 2;
        const double y = i / 2 % 2 == 0 ? 0 : 3;
        const double z = i / 4 == 0 ? 0 : 4;
        const Mesh part =
            box({x, y, z}, {x == 0 ? 2.0 : 6.0, y == 0 ? 3.0 : 6.0, z == 0 ? 4.0 : 6.0});
        const std::vector<bool> inside = swept(part.Moved(kFarAway), grid);
        owners.resize(inside.size());
        for (std::size_t k = 0; k < inside.size(); ++k) owners[k] += inside[k] ? 1 : 0;
    }
    EXPECT_EQ(std::count(owners.begin(), owners.end(), 1), 125);
}

TEST(ColumnSweepTest, SteepFacesAndNeighboursOfPointsAreDecidedExactly) {
    // Corners a few last places beside the lines and points of the grid.
    std::mt19937_64 random(3);
    std::uniform_int_distribution<int> cell(0, 3);
    std::uniform_int_distribution<int> ulps(-2, 2);
    const PointGrid grid{steps(kFarAway[0], 1, 4), steps(kFarAway[1], 1, 4),
                         steps(kFarAway[2], 1, 4)};
    for (int round = 0; round < 100; ++round) {
        Mesh mesh = tetrahedron({0, 0, 0}, 1);
        for (Point& point : mesh.points) {
            for (std::size_t axis = 0; axis < 3; ++axis) {
                point[axis] =
                    kFarAway[axis] + cell(random) + ulps(random) * (axis == 2 ? 0x1p-42 : 0x1p-30);
            }
        }
        expect_same("random", mesh, grid,
                    [&](const Point& at) { return exact_winding_over(mesh, at); });
    }
}

TEST(ColumnSweepTest, LongSliversAndUnevenTicksAgreeWithTheLocator) {
    // A thin blade right across the grid, so that rows are asked for their own lines.
    Mesh mesh = tetrahedron({0, 0, 0}, 1);
    mesh.points = {{0.1, 0.2, 0}, {97.3, 88.1, 3}, {96.9, 89, 60}, {50, 47, 95}};
    std::vector<double> uneven;
    for (int i = 0; i < 100; ++i) uneven.push_back(i * i / 100.0);
    const PointGrid grid{steps(0.5, 1, 100), steps(0.25, 5, 20), Ticks(uneven)};
    const engine::geometry::PointLocator locator(mesh.View());
    expect_same("blade", mesh, grid,
                [&](const Point& at) { return locator.SheetsOver(at).winding; });
}

TEST(ColumnSweepTest, GivesUpBeyondTheGivenNumberOfCrossings) {
    const Mesh mesh = box({0, 0, 0}, {9, 9, 9});
    const PointGrid grid{steps(0.5, 1, 9), steps(0.5, 1, 9), steps(0.5, 1, 9)};
    std::vector<Crossing> crossings;
    EXPECT_FALSE(engine::geometry::add_crossings(mesh.View(), grid, 50, crossings));
    crossings.clear();
    EXPECT_TRUE(engine::geometry::add_crossings(mesh.View(), grid, 81, crossings));
    EXPECT_EQ(crossings.size(), 81U) << "what lies below all layers is left out";
}

TEST(TicksTest, FindsItsPlaceAmongEvenAndUnevenNumbers) {
    const std::vector<std::vector<double>> rows = {
        {}, {5}, {0.1, 0.2, 0.30000000000000004, 0.4}, {-3, -1, 100, 1e300}, {7e6, 7e6 + 1e-9}};
    for (const std::vector<double>& at : rows) {
        const Ticks ticks(at);
        std::vector<double> asked{-1e308, 1e308, 0, 3};
        for (const double tick : at) {
            for (const double towards : {-1e308, 1e308}) {
                asked.push_back(std::nextafter(tick, towards));
            }
            asked.push_back(tick);
        }
        for (const double value : asked) {
            EXPECT_EQ(ticks.NotBelow(value),
                      std::lower_bound(at.begin(), at.end(), value) - at.begin());
            EXPECT_EQ(ticks.Above(value),
                      std::upper_bound(at.begin(), at.end(), value) - at.begin());
        }
    }
}

}  // namespace
}  // namespace zol::testing
