// How much of a block lies in solids: against rationals, closed forms and conservation.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <numbers>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "engine/geometry/block_selection.h"
#include "engine/geometry/volume.h"
#include "tests/engine/geometry/exact_blocks.h"

namespace zol::testing {
namespace {

using engine::geometry::Box;
using engine::geometry::ColumnStretches;
using engine::geometry::Selection;
using engine::geometry::Solid;
using engine::geometry::Stretch;
using engine::geometry::Ticks;
using engine::geometry::Walls;

constexpr std::size_t kMost = 10'000'000;

Selection select(const std::vector<Mesh>& meshes, double floor = -1000) {
    Selection selection;
    for (const Mesh& mesh : meshes) {
        selection.Add(std::make_unique<const Solid>(mesh.points, mesh.triangles, floor));
    }
    return selection;
}

Ticks steps(double first, double step, int cells) {
    std::vector<double> at;
    for (int i = 0; i <= cells; ++i) at.push_back(first + step * i);
    return Ticks(std::move(at));
}

Walls cube_walls(const Point& lower, double step, int cells) {
    return {steps(lower[0], step, cells), steps(lower[1], step, cells),
            steps(lower[2], step, cells)};
}

/// Every block of walls: its box, and the volume that all blocks at one go give it.
void for_each_block(const Selection& selection, const Walls& walls,
                    const std::function<void(const Box&, double)>& visit) {
    const auto columns = engine::geometry::select_by_volume(selection, walls, kMost);
    ASSERT_TRUE(columns.has_value());
    const std::size_t cells_x = walls[0].Count() - 1;
    for (std::size_t column = 0; column < cells_x * (walls[1].Count() - 1); ++column) {
        for (std::uint32_t k = 0; k + 1 < walls[2].Count(); ++k) {
            const std::size_t i = column % cells_x;
            const std::size_t j = column / cells_x;
            const Box box{{walls[0][i], walls[1][j], walls[2][k]},
                          {walls[0][i + 1], walls[1][j + 1], walls[2][k + 1]}};
            const Stretch* const stretch = columns->Find(column, k);
            visit(box, stretch == nullptr ? 0.0
                       : stretch->volume == engine::geometry::Stretch::kWhole
                           ? engine::geometry::volume_of(box)
                           : stretch->volume);
        }
    }
}

double summed(const Selection& selection, const Walls& walls) {
    double sum = 0.0;
    for_each_block(selection, walls, [&](const Box&, double volume) { sum += volume; });
    return sum;
}

Mesh turned(Mesh mesh, double degrees) {
    const double a = degrees * std::numbers::pi / 180;
    for (Point& p : mesh.points) {
        p = {std::cos(a) * p[0] - std::sin(a) * p[1], std::sin(a) * p[0] + std::cos(a) * p[1],
             p[2]};
    }
    return mesh;
}

TEST(BlockVolumeTest, AgreesWithRationalsBlockByBlockBothWays) {
    const struct {
        const char* name;
        Mesh mesh;
        double step;
    } rows[] = {
        {"box on walls", box({1, 1, 1}, {4, 3, 5}), 1},
        {"box off walls", box({1.25, 1.5, 1.125}, {4.75, 3, 4.5}), 1},
        {"tetrahedron", tetrahedron({0, 0, 0}, 5), 1},
        {"tetrahedron in one block", tetrahedron({1.25, 1.25, 1.25}, 0.5), 3},
        {"a void", box({0, 0, 0}, {5, 5, 5}).With(box({1, 1, 1}, {3, 4, 4}).TurnedInsideOut()), 2},
        {"sphere", sphere({2.5, 2.5, 2.5}, 2.3, 5, 7), 1},
        {"turned box", turned(box({1, 0, 0.5}, {4, 2, 4.5}), 30), 1},
    };
    for (const auto& row : rows) {
        for (const Point& place : {Point{0, 0, 0}, kFarAway}) {
            SCOPED_TRACE(row.name);
            const Mesh mesh = row.mesh.Moved(place);
            const Selection selection = select({mesh});
            const Point lower{place[0] - row.step, place[1] - row.step, place[2] - row.step};
            for_each_block(
                selection, cube_walls(lower, row.step, 7), [&](const Box& block, double volume) {
                    const auto exact = static_cast<double>(exact_volume_in(mesh, block));
                    ASSERT_NEAR(volume, exact, 2e-9 * std::pow(row.step, 3));
                    ASSERT_NEAR(selection.VolumeIn(block), exact, 2e-9 * std::pow(row.step, 3));
                });
        }
    }
}

TEST(BlockVolumeTest, BlocksAddUpToTheSolidForAnyLattice) {
    const Mesh solids[] = {sphere({0, 0, 0}, 250, 40, 80),
                           turned(box({0, 0, 0}, {90, 200, 55}), 33), torus(300, 40, 45, 15)};
    for (const Mesh& solid : solids) {
        const Mesh mesh = solid.Moved(kFarAway);
        const double volume = engine::geometry::signed_volume(mesh.View(), mesh.triangles);
        for (const double step : {7.5, 31.0, 1000.0}) {
            const Point lower{kFarAway[0] - 350.3, kFarAway[1] - 350.7, kFarAway[2] - 350.1};
            const int cells = static_cast<int>(705 / step) + 1;
            EXPECT_NEAR(summed(select({mesh}), cube_walls(lower, step, cells)) / volume, 1, 1e-12)
                << step;
        }
    }
}

TEST(BlockVolumeTest, ASolidAndItsComplementFillEachBlock) {
    const Mesh hollow = sphere({0, 0, 0}, 20, 12, 20).Moved(kFarAway);
    const Box room{{kFarAway[0] - 32, kFarAway[1] - 32, kFarAway[2] - 32},
                   {kFarAway[0] + 32, kFarAway[1] + 32, kFarAway[2] + 32}};
    const Mesh rest = box(room.lower, room.upper).With(hollow.TurnedInsideOut());
    const Walls walls = cube_walls(room.lower, 8, 8);
    std::vector<double> volumes;
    for_each_block(select({hollow}), walls,
                   [&](const Box&, double volume) { volumes.push_back(volume); });
    std::size_t i = 0;
    for_each_block(select({rest}), walls, [&](const Box&, double volume) {
        ASSERT_NEAR(volume + volumes[i++], 512, 512e-10);
    });
}

TEST(BlockVolumeTest, UnionsCountWhatIsSharedOnce) {
    // Of the block from 0 to 10; the solids' surfaces meet inside of it.
    const Mesh low = box({-1, -1, -1}, {11, 11, 4});
    const Mesh west = box({-1, -1, -1}, {3, 11, 11});
    const Mesh under_slope = {
        {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {10, 0, 10}, {10, 10, 10}},
        {{0, 2, 1}, {0, 3, 2}, {1, 2, 5}, {1, 5, 4}, {0, 1, 4}, {3, 5, 2}, {0, 4, 5}, {0, 5, 3}}};
    Mesh over_slope = {
        {{0, 0, 0}, {0, 0, 10}, {10, 0, 10}, {0, 10, 0}, {0, 10, 10}, {10, 10, 10}, {5, 5, 5}},
        {{0, 1, 4},
         {0, 4, 3},
         {1, 2, 5},
         {1, 5, 4},
         {0, 2, 1},
         {3, 4, 5},
         {0, 6, 2},
         {2, 6, 5},
         {5, 6, 3},
         {3, 6, 0}}};
    const Mesh flipped_slope = [&] {
        Mesh mesh = under_slope;
        for (Point& p : mesh.points) p[0] = 10 - p[0];
        return mesh.TurnedInsideOut();
    }();
    const struct {
        const char* name;
        std::vector<Mesh> meshes;
        double volume;
    } rows[] = {
        {"one twice", {low, low}, 400},
        {"faces that cross", {low, west}, 580},
        {"three", {low, west, box({-1, -1, 6}, {11, 5, 11})}, 580 + 5 * 7 * 4},
        {"one in the other", {box({1, 1, 1}, {9, 9, 9}), box({2, 3, 4}, {5, 5, 5})}, 512},
        {"apart", {box({1, 1, 1}, {2, 9, 9}), box({4, 3, 4}, {5, 5, 5})}, 66},
        {"a wall between them", {box({1, 1, 1}, {4, 9, 9}), box({4, 1, 1}, {8, 9, 9})}, 448},
        {"slopes that cross", {under_slope, flipped_slope}, 750},
        {"a slope between them, cut up in two ways", {under_slope, over_slope}, 1000},
        {"a slope and a step", {under_slope, low}, 500 + 80},
        {"a file that overlaps itself", {low.With(west)}, 580},
        {"a file with one in the other",
         {box({1, 1, 1}, {9, 9, 9}).With(box({2, 3, 4}, {5, 5, 5}))},
         512},
        {"a file that is partly inside out",
         {low.With(box({5, 5, 6}, {7, 8, 9}).TurnedInsideOut())},
         418},
        {"all of it", {low, box({-1, -1, 4}, {11, 11, 11})}, 1000},
    };
    for (const auto& row : rows) {
        for (const Point& place : {Point{0, 0, 0}, kFarAway}) {
            SCOPED_TRACE(row.name);
            std::vector<Mesh> meshes;
            for (const Mesh& mesh : row.meshes) meshes.push_back(mesh.Moved(place));
            const Selection selection = select(meshes);
            const Box block{place, {place[0] + 10, place[1] + 10, place[2] + 10}};
            EXPECT_NEAR(selection.VolumeIn(block), row.volume, 1e-8);
            EXPECT_NEAR(summed(selection, cube_walls(place, 10, 1)), row.volume, 1e-8);
            EXPECT_NEAR(summed(selection, cube_walls(place, 2.5, 4)), row.volume, 1e-7);
        }
    }
}

TEST(BlockVolumeTest, TurnedUnionsKeepTheirVolume) {
    // Of two boxes that cross, and of many bodies in one block.
    const Mesh left = box({-8, -3, -3}, {8, 3, 3});
    for (const double degrees : {0.0, 15.0, 30.0, 90.0}) {
        const Selection crossing = select({turned(left, degrees), turned(left, degrees + 90)});
        EXPECT_NEAR(summed(crossing, cube_walls({-12, -12, -12}, 24, 1)), 2 * 576 - 216, 1e-9);
        EXPECT_NEAR(summed(crossing, cube_walls({-12, -12, -12}, 3, 8)), 2 * 576 - 216, 1e-7);
    }
    std::vector<Mesh> many;
    for (int i = 0; i < 8; ++i) many.push_back(sphere({i * 1.5, 0.1, 0.2}, 3, 4, 5));
    const Selection chain = select(many);
    const double whole = chain.VolumeIn({{-4, -4, -4}, {16, 4, 4}});
    EXPECT_NEAR(summed(chain, cube_walls({-4, -4, -4}, 2.5, 8)), whole, 1e-6 * whole);
}

TEST(BlockVolumeTest, AnOpenSurfaceSelectsWhatLiesBelowIt) {
    const Mesh slope = terrain(4, [](int i, int) { return 2.0 + i; });
    Mesh mixed = slope;
    for (const std::size_t t : {3U, 8U, 9U})
        std::swap(mixed.triangles[t][0], mixed.triangles[t][1]);
    Mesh step = terrain(4, [](int, int) { return 2.0; });
    for (Point& p : step.points) p[2] += p[0] >= 2 ? 3 : 0;
    for (Point& p : step.points) p[0] = p[0] == 2 ? 1.0 : p[0];
    const Mesh roof = terrain(4, [](int, int) { return 5.0; });
    // Each roof covers less than the one before, and hangs walls through all of them.
    Mesh roofs = roof.Moved({0, 0, -1});
    double under_roofs = 64;
    for (int i = 1; i < 12; ++i) {
        roofs = roofs.With(roof.Moved({0.3 * i, 0.2 * i, 0.1 * i - 1}));
        under_roofs += 0.1 * (4 - 0.3 * i) * (4 - 0.2 * i);
    }
    // All of the box from 0 to 4 in plan, and from 0 to 6 in height.
    const struct {
        const char* name;
        std::vector<Mesh> meshes;
        double volume;
    } rows[] = {
        {"slope", {slope}, 64},
        {"facing down", {slope.TurnedInsideOut()}, 64},
        {"facing up and down", {mixed}, 64},
        {"an upright step", {step}, 4 * (1 * 2 + 3 * 5)},
        {"an overhang", {slope.With(roof)}, 80 + 4 * 0.5},
        {"a roof over a part of it", {slope.With(roof.Moved({1.5, 0, 0}))}, 64 + 4 * 1.125},
        {"many roofs", {roofs}, under_roofs},
        {"two files that cross", {slope, roof}, 80 + 4 * 0.5},
        {"with a solid", {slope, box({0, 0, 5}, {1, 4, 6})}, 68},
        {"beside the box", {slope.Moved({100, 0, 0})}, 0},
        {"over half of it", {slope.Moved({2, 0, 4}), slope.Moved({500, 0, 0})}, 48},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Selection selection = select(row.meshes);
        for (const int cells : {1, 2, 4, 8}) {
            const Walls walls{steps(0, 4.0 / cells, cells), steps(0, 4.0 / cells, cells),
                              steps(0, 6.0 / cells, cells)};
            EXPECT_NEAR(summed(selection, walls), row.volume, 1e-7) << cells;
        }
    }
    EXPECT_TRUE(select({slope}).Contains({1.5, 1.5, 3}));
    EXPECT_FALSE(select({slope}).Contains({1.5, 1.5, 4}));
    EXPECT_FALSE(select({slope}).Contains({-0.5, 1.5, 1}));
}

TEST(BlockVolumeTest, MeshesWithFaultsAnswerAsTheirWholeSelves) {
    const Mesh unit = box({0, 0, 0}, {4, 4, 4});
    Mesh flipped = unit;
    std::swap(flipped.triangles[3][0], flipped.triangles[3][1]);
    Mesh doubled = unit;
    doubled.triangles.push_back(doubled.triangles[5]);
    Mesh flat = unit;
    flat.triangles.push_back({0, 0, 5});
    flat.points.push_back({9, 9, 9});
    const struct {
        const char* name;
        Mesh mesh;
        double volume;
        const char* remark;
    } rows[] = {
        {"sound", unit, 64, ""},
        {"points of their own", unit.Unwelded(), 64, ""},
        {"inside out", unit.TurnedInsideOut(), 64, ""},
        {"a triangle turned", flipped, 64, "turned"},
        {"a triangle twice", doubled, 64, "more than once"},
        {"a triangle of two corners", flat, 64, ""},
        {"no triangles", {{{1, 1, 1}}, {}}, 0, ""},
        {"one triangle", {{{0, 0, 4}, {4, 0, 4}, {0, 4, 4}}, {{0, 1, 2}}}, 32, "open"},
        {"one upright triangle", {{{1, 0, 4}, {1, 3, 4}, {1, 0, 1}}, {{0, 1, 2}}}, 0, "open"},
        {"triangles all over each other",
         {unit.points, std::vector<Triangle>(50, {0, 3, 4})},
         0,
         "oriented"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Selection selection = select({row.mesh});
        const double volume = selection.VolumeIn({{-1, -1, 0}, {5, 5, 5}});
        EXPECT_NEAR(volume, row.volume, 1e-7);
        EXPECT_NEAR(summed(selection, {steps(-1, 2, 3), steps(-1, 2, 3), steps(0, 1, 5)}), volume,
                    1e-7);
        std::string remarks;
        for (const std::string& remark : selection.Solids()[0]->Remarks()) remarks += remark;
        EXPECT_EQ(remarks.empty(), std::string_view(row.remark).empty()) << remarks;
        EXPECT_NE(remarks.find(row.remark), remarks.npos) << remarks;
    }
}

TEST(BlockExtentTest, IsTheBoxOfTheSelectedPart) {
    const Box block{{0, 0, 0}, {10, 10, 10}};
    const Mesh slope = terrain(1, [](int i, int) { return i == 0 ? 2.0 : 8.0; });
    Mesh wide_slope = slope;
    for (Point& p : wide_slope.points) p[0] *= 10, p[1] *= 10;
    const struct {
        const char* name;
        std::vector<Mesh> meshes;
        Box expected;
    } rows[] = {
        {"all", {box({-1, -1, -1}, {11, 11, 11})}, block},
        {"on its walls", {box({0, 0, 0}, {10, 10, 10})}, block},
        {"the lower part", {box({-1, -1, -1}, {11, 11, 4})}, {{0, 0, 0}, {10, 10, 4}}},
        {"a face in a wall", {box({4, 0, 0}, {10, 10, 10})}, {{4, 0, 0}, {10, 10, 10}}},
        {"inside", {box({4, 5, 6}, {7, 8, 9})}, {{4, 5, 6}, {7, 8, 9}}},
        {"a corner", {tetrahedron({0, 0, 0}, 6)}, {{0, 0, 0}, {6, 6, 6}}},
        {"all but a corner",
         {box({-9, -9, -9}, {20, 20, 20}).With(tetrahedron({-1, -1, -1}, 6).TurnedInsideOut())},
         block},
        {"two", {box({1, 5, 6}, {2, 8, 9}), box({3, 3, 3}, {5, 4, 4})}, {{1, 3, 3}, {5, 8, 9}}},
        {"below a surface", {wide_slope}, {{0, 0, 0}, {10, 10, 8}}},
        {"below half a surface", {wide_slope.Moved({5, 0, 20})}, {{5, 0, 0}, {10, 10, 10}}},
    };
    for (const auto& row : rows) {
        for (const Point& place : {Point{0, 0, 0}, kFarAway}) {
            SCOPED_TRACE(row.name);
            std::vector<Mesh> meshes;
            for (const Mesh& mesh : row.meshes) meshes.push_back(mesh.Moved(place));
            const auto moved = [&](const Box& box) {
                Box result = box;
                for (std::size_t axis = 0; axis < 3; ++axis) {
                    result.lower[axis] += place[axis];
                    result.upper[axis] += place[axis];
                }
                return result;
            };
            const Box extent = select(meshes).ExtentIn(moved(block));
            EXPECT_EQ(extent.lower, moved(row.expected).lower);
            EXPECT_EQ(extent.upper, moved(row.expected).upper);
        }
    }
}

}  // namespace
}  // namespace zol::testing
