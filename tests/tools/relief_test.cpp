// What of a picture is computed: faults here would give a fine picture of another grid.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "tools/zol/relief/colour_limits.h"
#include "tools/zol/relief/colour_map.h"
#include "tools/zol/relief/map_scale.h"
#include "tools/zol/relief/shading.h"
#include "tools/zol/relief/thumbnail.h"
#include "tools/zol/relief/ticks.h"

namespace zol::tool {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::NanSensitiveDoubleEq;
using testing::Pointwise;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(Ticks, AreRoundAndFewEnough) {
    struct Row {
        const char* name;
        double low, high;
        int most;
        std::vector<double> expected;
    };
    const Row rows[] = {
        {"both ends round", 0, 100, 6, {0, 20, 40, 60, 80, 100}},
        {"neither end round", 37, 461, 5, {100, 200, 300, 400}},
        {"across zero", -0.31, 0.22, 6, {-0.3, -0.2, -0.1, 0, 0.1, 0.2}},
        {"far from zero", 7000001, 7000009, 4, {7000002, 7000004, 7000006, 7000008}},
        {"ends off by rounding", 0.1 + 0.2, 0.6, 4, {0.3, 0.4, 0.5, 0.6}},
        {"one where the next step has none", 440751, 440754, 1, {440752}},
        {"no length", 5, 5, 4, {}},
        {"finer than doubles there", 1e300, 1.0000000000000002e300, 4, {}},
        {"longer than doubles", -1.7e308, 1.7e308, 4, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_THAT(ticks_between(row.low, row.high, row.most).values,
                    Pointwise(DoubleNear(1e-9), row.expected));
    }
}

TEST(Ticks, AreWrittenAsTheStepAsks) {
    struct Row {
        double value, step;
        const char* expected;
    };
    constexpr Row kRows[] = {
        {7000002, 2, "7000002"}, {0.30000000000000004, 0.1, "0.3"},
        {0, 0.05, "0.00"},       {-43.8, 0.2, "-43.8"},
        {1500, 500, "1500"},     {2e38, 1e38, "2e+38"},
        {3e-9, 1e-9, "3e-09"},   {1.25e-8, 5e-10, "1.25e-08"},
        {1e15, 5e14, "1e+15"},
    };
    for (const Row& row : kRows) EXPECT_EQ(tick_text(row.value, row.step), row.expected);
}

/// Cells of `width` x `height` nodes 10 apart to the east and 5 to the north, whose
/// south-west node lies at (0, 0).
Thumbnail thumbnail_of(int width, int height, int columns_each, int rows_each,
                       const std::function<double(double x, double y)>& value_at) {
    const Lattice nodes{width, height, 0, 0, (width - 1) * 10.0, (height - 1) * 5.0, 10, 5};
    ThumbnailMaker maker(nodes, columns_each, rows_each);
    for (int j = height - 1; j >= 0; --j) {
        std::vector<double> row;
        for (int i = 0; i < width; ++i) row.push_back(value_at(nodes.X(i), nodes.Y(j)));
        // In two runs, as a long row comes.
        const auto whole = std::span<const double>(row);
        maker.Take({0, j, whole.first(1)});
        maker.Take({1, j, whole.subspan(1)});
    }
    return maker.Finish();
}

TEST(Thumbnail, TakesMeansFromTheNorthWest) {
    // 10 20 30 40 50
    //  -  -  3  4  5
    //  1  -  5  6 inf
    const double values[3][5] = {{1, kNaN, 5, 6, std::numeric_limits<double>::infinity()},
                                 {kNaN, kNaN, 3, 4, 5},
                                 {10, 20, 30, 40, 50}};
    const auto value_at = [&](double x, double y) {
        return values[static_cast<int>(y / 5)][static_cast<int>(x / 10)];
    };
    const Thumbnail made = thumbnail_of(5, 3, 2, 2, value_at);
    EXPECT_EQ(made.width, 3);
    EXPECT_EQ(made.height, 2);
    EXPECT_EQ(made.west, -5);
    EXPECT_EQ(made.north, 12.5);
    EXPECT_EQ(made.dx, 20);
    EXPECT_EQ(made.dy, 10);
    EXPECT_THAT(made.values, ElementsAre(DoubleNear(15, 1e-12), DoubleNear(77 / 4.0, 1e-12),
                                         DoubleNear(55 / 2.0, 1e-12), 1, DoubleNear(5.5, 1e-12),
                                         NanSensitiveDoubleEq(kNaN)));
}

TEST(Shading, SlopesRiseToTheEastAndToTheNorth) {
    const auto plane = [](double x, double y) { return 2 * x - 3 * y; };
    const auto with_hole = [&](double x, double y) {
        return x == 20 && y == 10 ? kNaN : plane(x, y);
    };
    const Thumbnail surface = thumbnail_of(5, 5, 1, 1, with_hole);
    const std::vector<Slope> slopes = slopes_of(surface);
    for (std::size_t cell = 0; cell < slopes.size(); ++cell) {
        const bool is_hole = std::isnan(surface.values[cell]);
        EXPECT_DOUBLE_EQ(slopes[cell].east, is_hole ? 0 : 2) << cell;
        EXPECT_DOUBLE_EQ(slopes[cell].north, is_hole ? 0 : -3) << cell;
    }
    const std::vector<Slope> single = slopes_of(thumbnail_of(2, 1, 2, 1, plane));
    EXPECT_EQ(single.at(0).east, 0);
    EXPECT_EQ(single.at(0).north, 0);
}

TEST(Shading, LightComesFromTheNorthWest) {
    // A slope faces the way in which it falls.
    struct Row {
        const char* facing;
        Slope slope;
        double expected;
    };
    const double diagonal = std::sqrt(0.5);
    const Row rows[] = {
        {"nowhere", {0, 0}, 1},
        {"north-west", {diagonal, -diagonal}, std::sqrt(2.0)},
        {"north-east", {-diagonal, -diagonal}, diagonal},
        {"south-west", {diagonal, diagonal}, diagonal},
        {"south-east", {-diagonal, diagonal}, 0},
        {"south-east, in shadow", {-5, 5}, 0},
    };
    for (const Row& row : rows) {
        EXPECT_NEAR(light_on(row.slope, 1), row.expected, 1e-12) << row.facing;
        EXPECT_EQ(light_on(row.slope, 0), 1) << "levelled";
    }
    EXPECT_NEAR(light_on({diagonal / 200, -diagonal / 200}, 200), std::sqrt(2.0), 1e-12);
}

TEST(Shading, ExaggerationIsRoundAndMakesSteepSlopesSteep) {
    struct Row {
        double slope, expected;
    };
    for (const Row& row : {Row{1, 1}, Row{0.3, 2}, Row{0.004, 200}, Row{30000, 2e-5}, Row{0, 1}}) {
        const std::vector<Slope> slopes(20, Slope{row.slope, 0});
        EXPECT_NEAR(exaggeration_for(slopes), row.expected, row.expected * 1e-9) << row.slope;
    }
    std::vector<Slope> with_cliff(100, Slope{0, 0.5});
    with_cliff[3] = {1e6, 0};
    EXPECT_EQ(exaggeration_for(with_cliff), 2);
}

TEST(ColourMap, GetsLighterInEvenSteps) {
    // Luminance of IEC 61966-2-1, and lightness of CIE 1976.
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    const auto lightness = [&](const Rgb& colour) {
        const double luminance = 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) +
                                 0.0722 * linear(colour.blue);
        return 116 * std::cbrt(luminance) - 16;
    };
    constexpr int kSteps = 60;
    const double whole = lightness(colour_at(1)) - lightness(colour_at(0));
    EXPECT_GT(whole, 50);
    for (int i = 0; i < kSteps; ++i) {
        const double step = lightness(colour_at((i + 1.0) / kSteps)) -
                            lightness(colour_at(static_cast<double>(i) / kSteps));
        EXPECT_NEAR(step, whole / kSteps, 0.25 * whole / kSteps) << i;
    }
}

TEST(ColourLimits, LeaveOutAFewWildValues) {
    const auto slope = [](double x, double) { return x; };
    const ColourLimits plain = colour_limits(thumbnail_of(50, 50, 1, 1, slope));
    EXPECT_FALSE(plain.leaves_out);
    EXPECT_EQ(plain.low, 0);
    EXPECT_EQ(plain.high, 490);
    EXPECT_EQ(plain.PlaceOf(245), 0.5);

    const auto with_spike = [&](double x, double y) { return x == 70 && y == 70 ? 1e30 : x; };
    const ColourLimits squeezed = colour_limits(thumbnail_of(50, 50, 1, 1, with_spike));
    EXPECT_TRUE(squeezed.leaves_out);
    EXPECT_LE(squeezed.high, 490);

    const ColourLimits constant =
        colour_limits(thumbnail_of(5, 5, 1, 1, [](double, double) { return 7.0; }));
    EXPECT_EQ(constant.PlaceOf(7), 0.5);
    EXPECT_EQ((ColourLimits{-1.7e308, 1.7e308, false}.PlaceOf(0)), 0.5) << "no overflow";
}

TEST(MapScale, FitsAPage) {
    struct Row {
        const char* name;
        int width, height;
        double dx, dy;
        int columns_each, rows_each;
        double cell_width, cell_height;
        bool is_equal;
    };
    constexpr Row kRows[] = {
        {"one node", 1, 1, 10, 10, 1, 1, 100, 100, true},
        {"small", 121, 100, 0.008, 0.008, 1, 1, 7, 7, true},
        {"just without a mean", 1300, 700, 5, 5, 1, 1, 1, 1, true},
        {"just with means", 1301, 700, 5, 5, 2, 2, 1, 1, true},
        {"large", 100000, 50000, 1, 1, 77, 77, 1, 1, true},
        {"cells twice as wide as high", 100, 100, 20, 10, 1, 1, 8, 4, true},
        {"a single row", 100, 1, 10, 10, 1, 1, 9, 24, false},
        {"a strip too thin to see", 26000, 2, 10, 10, 20, 1, 1, 12, false},
        {"as wide as there are nodes", 2147483647, 1, 1, 1, 1651911, 1, 1, 24, false},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        Lattice nodes;
        nodes.width = row.width;
        nodes.height = row.height;
        nodes.dx = row.dx;
        nodes.dy = row.dy;
        const MapScale scale = scale_for(nodes);
        EXPECT_EQ(scale.columns_each, row.columns_each);
        EXPECT_EQ(scale.rows_each, row.rows_each);
        EXPECT_NEAR(scale.cell_width, row.cell_width, 1e-3);
        EXPECT_NEAR(scale.cell_height, row.cell_height, 1e-9);
        EXPECT_EQ(scale.is_equal, row.is_equal);
    }
}

}  // namespace
}  // namespace zol::tool
