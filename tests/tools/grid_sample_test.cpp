// Points among nodes, and what is gathered from all of them.

#include "tools/zol/grid_sample.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "tools/zol/grid_statistics.h"

namespace zol::tool {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Nodes 10 apart to the east and 4 to the north, from (100, 200) to (130, 208).
constexpr Lattice kNodes{4, 3, 100, 200, 130, 208, 10, 4};

double surface(double x, double y) {
    return 3 + 2 * x - 5 * y + 0.25 * x * y;
}

double interpolated(double x, double y) {
    const auto at = [](int i, int j) { return surface(kNodes.X(i), kNodes.Y(j)); };
    const GridSquare square = square_around(place_of(kNodes, x, y).value());
    const auto& [west, south] = square.south_west;
    const auto& [east, north] = square.north_east;
    return bilinear(square, {at(west, south), at(east, south), at(west, north), at(east, north)});
}

TEST(GridSample, IsExactForASurfaceThatIsBilinear) {
    for (const double x : {100.0, 101.0, 114.5, 120.0, 129.9, 130.0}) {
        for (const double y : {200.0, 201.0, 204.0, 207.5, 208.0}) {
            EXPECT_NEAR(interpolated(x, y), surface(x, y), 1e-9) << x << ' ' << y;
        }
    }
}

TEST(GridSample, AsksOnlyForNodesThatCount) {
    struct Row {
        const char* name;
        double x, y;
        NodeIndex south_west, north_east;
    };
    constexpr Row kRows[] = {
        {"inside a cell", 112, 205, {1, 1}, {2, 2}},
        {"on a row of nodes", 112, 204, {1, 1}, {2, 1}},
        {"on a column of nodes", 110, 205, {1, 1}, {1, 2}},
        {"on the last node", 130, 208, {3, 2}, {3, 2}},
        {"a rounding error beyond the first", 100 - 1e-7, 200, {0, 0}, {0, 0}},
        {"a rounding error before a node", 110 - 1e-7, 204 + 1e-7, {1, 1}, {1, 1}},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        const GridSquare square = square_around(place_of(kNodes, row.x, row.y).value());
        EXPECT_EQ(square.south_west.i, row.south_west.i);
        EXPECT_EQ(square.south_west.j, row.south_west.j);
        EXPECT_EQ(square.north_east.i, row.north_east.i);
        EXPECT_EQ(square.north_east.j, row.north_east.j);
    }
}

TEST(GridSample, FindsNothingOutside) {
    constexpr double kOutside[][2] = {{99.9, 204},  {130.1, 204},  {110, 199.9}, {110, 208.1},
                                      {1e300, 204}, {-1e300, 204}, {kNaN, 204}};
    for (const auto& [x, y] : kOutside) EXPECT_FALSE(place_of(kNodes, x, y)) << x << ' ' << y;
}

TEST(GridSample, TakesTheNearestNode) {
    struct Row {
        double x, y;
        int i, j;
    };
    for (const Row& row :
         {Row{104.9, 201.9, 0, 0}, Row{105, 202, 1, 1}, Row{129, 207, 3, 2}, Row{130, 200, 3, 0}}) {
        const NodeIndex node = nearest_node(place_of(kNodes, row.x, row.y).value());
        EXPECT_EQ(node.i, row.i) << row.x;
        EXPECT_EQ(node.j, row.j) << row.y;
    }
}

TEST(GridStatistics, LeaveMaskedNodesOut) {
    GridStatistics statistics;
    EXPECT_TRUE(std::isnan(statistics.Mean()));
    for (const auto& run : {std::vector{kNaN, -3.0}, std::vector{kNaN}, std::vector{7.0, 5.0}}) {
        statistics.Add(run);
    }
    EXPECT_EQ(statistics.NNodes(), 5);
    EXPECT_EQ(statistics.NMasked(), 2);
    EXPECT_EQ(statistics.Minimum(), -3);
    EXPECT_EQ(statistics.Maximum(), 7);
    EXPECT_EQ(statistics.Mean(), 3);
}

TEST(GridStatistics, LoseNothingBesideALargeValue) {
    GridStatistics statistics;
    statistics.Add(std::vector{1e17, 1.0, 1.0, 1.0, -1e17});
    EXPECT_EQ(statistics.Mean(), 3.0 / 5);
    statistics.Add(std::vector{std::numeric_limits<double>::infinity()});
    EXPECT_TRUE(std::isinf(statistics.Mean()));
}

}  // namespace
}  // namespace zol::tool
