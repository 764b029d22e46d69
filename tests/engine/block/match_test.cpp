// Matches end to end: mesh files against models of every layout, in every order of blocks.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <limits>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

#include "engine/block/lattice.h"
#include "engine/block/match_walk.h"
#include "engine/block/source.h"
#include "engine/geometry/volume.h"
#include "platform/zolBlockExport.h"
#include "tests/engine/geometry/solids.h"
#include "tests/engine/temporary_file.h"

namespace {

using zol::engine::block::Axis;
using zol::engine::block::CellOrder;
using zol::engine::block::LatticeGeometry;
using zol::engine::block::Matched;
using zol::engine::block::MatchRegion;
using zol::engine::block::MatchRequest;
using zol::engine::block::Source;
using zol::geometry::Extent;
using zol::model::block::Match;
using zol::model::block::Model;
using zol::testing::box;
using zol::testing::kFarAway;
using zol::testing::Mesh;
using zol::testing::Point;
using zol::testing::sphere;
using zol::testing::terrain;
using zol::testing_support::TemporaryFile;

const std::string kSamples = ZOL_SAMPLES;

/// A mesh as an OBJ file, its coordinates to the last bit.
std::string obj(const Mesh& mesh) {
    std::string text;
    char line[128];
    for (const Point& p : mesh.points) {
        std::snprintf(line, sizeof line, "v %.17g %.17g %.17g\n", p[0], p[1], p[2]);
        text += line;
    }
    for (const auto& t : mesh.triangles) {
        std::snprintf(line, sizeof line, "f %d %d %d\n", t[0] + 1, t[1] + 1, t[2] + 1);
        text += line;
    }
    return text;
}

struct Answer {
    std::int64_t block;
    double volume;
    Extent extent;
};

std::vector<Answer> walked(Match& match) {
    std::vector<Answer> answers;
    for (match.FindFirst(); !match.IsEof(); match.Next()) {
        answers.push_back({match.GetPosition().value, match.GetMatchVolume(),
                           match.GetMatchExtent().GetExtent()});
    }
    return answers;
}

double volume_of(const std::vector<Answer>& answers) {
    double sum = 0;
    for (const Answer& answer : answers) sum += answer.volume;
    return sum;
}

/// How far the centroid of each block lies from a point of the world.
std::vector<double> distances(Model& model, const Point& from) {
    std::vector<double> all;
    for (model.FindFirst(); !model.IsEof(); model.Next()) {
        const auto world = model.ToWorld(model.Get("centroid_x"), model.Get("centroid_y"),
                                         model.Get("centroid_z"));
        all.push_back(std::hypot(world.x - from[0], world.y - from[1], world.z - from[2]));
    }
    return all;
}

/// Blocks of 10 x 10 x 5 in rows, here and there left out or cut into eight.
class Blocks {
public:
    enum class Layout { Full, Sparse, SubBlocks };

    Blocks(Layout layout, const std::string& order, const std::string& rotation) {
        std::string text = "x,y,z,dx,dy,dz\n";
        for (int n = 0; n < 12 * 11 * 14; ++n) {
            if (layout == Layout::Sparse && n % 7 == 3) continue;
            int rest = n;
            int at[3] = {0, 0, 0};
            const int counts[3] = {12, 11, 14};
            for (const char axis : order) {
                at[axis - 'x'] = rest % counts[axis - 'x'];
                rest /= counts[axis - 'x'];
            }
            Write(text, at, layout == Layout::SubBlocks && n % 5 == 1);
        }
        file_.Rewrite(text);
        file_.WriteSidecar(R"({"schema":{"fields":[
            {"name":"x","type":"number","block:role":"x"},{"name":"y","type":"number","block:role":"y"},
            {"name":"z","type":"number","block:role":"z"},{"name":"dx","type":"number","block:role":"dx"},
            {"name":"dy","type":"number","block:role":"dy"},{"name":"dz","type":"number","block:role":"dz"}]},
            "block:model":{"origin":[612300,7012300,1200],"rotation":[)" +
                           rotation + R"(],"coordinates":"local","parentSize":[10,10,5]}})");
    }

    const std::string& Path() const { return file_.Path(); }

private:
    static void Write(std::string& text, const int (&at)[3], bool cut) {
        char line[128];
        const int parts = cut ? 8 : 1;
        for (int part = 0; part < parts; ++part) {
            const double size = cut ? 0.5 : 1.0;
            const double x = 10 * (at[0] + size * (part % 2 + 0.5));
            const double y = 10 * (at[1] + size * (part / 2 % 2 + 0.5));
            const double z = 5 * (at[2] + size * (part / 4 + 0.5));
            std::snprintf(line, sizeof line, "%g,%g,%g,%g,%g,%g\n", x, y, z, 10 * size, 10 * size,
                          5 * size);
            text += line;
        }
    }

    TemporaryFile file_{""};
};

TEST(Match, WalksTheSameBlocksInEveryLayoutAndOrder) {
    const struct {
        const char* name;
        Blocks::Layout layout;
        const char* order;
        const char* rotation;
    } rows[] = {
        {"full, x fastest", Blocks::Layout::Full, "xyz", "0,0,0"},
        {"full, z fastest", Blocks::Layout::Full, "zyx", "0,0,0"},
        {"sparse", Blocks::Layout::Sparse, "xyz", "0,0,0"},
        {"sub-blocks", Blocks::Layout::SubBlocks, "yzx", "0,0,0"},
        {"full, turned", Blocks::Layout::Full, "xyz", "30,0,0"},
        {"sparse, tilted", Blocks::Layout::Sparse, "zxy", "30,20,-10"},
        {"sub-blocks, turned", Blocks::Layout::SubBlocks, "xyz", "0,90,0"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Blocks blocks(row.layout, row.order, row.rotation);
        Model model(blocks.Path(), "r");
        ASSERT_TRUE(model.IsOpen());
        const auto middle = model.ToWorld(61.3, 52.7, 33.9);
        const Point at{middle.x, middle.y, middle.z};
        const Mesh ball = sphere(at, 29.87, 60, 120);
        const TemporaryFile mesh(obj(ball));

        Match& match = model.GetMatch();
        match.AddTriangulation(mesh.Path());
        const std::vector<double> from_middle = distances(model, at);
        std::vector<bool> found(from_middle.size());
        for (const Answer& answer : walked(match))
            found[static_cast<std::size_t>(answer.block)] = true;
        std::size_t n_found = 0;
        for (std::size_t block = 0; block < found.size(); ++block) {
            n_found += found[block] ? 1U : 0U;
            // The mesh lies within a tenth below the sphere.
            if (from_middle[block] > 29.77 && from_middle[block] < 29.87) continue;
            ASSERT_EQ(found[block], from_middle[block] < 29.8) << block;
        }
        EXPECT_GT(n_found, 150U);

        match.SetUseExactVolume(true);
        const std::vector<Answer> parts = walked(match);
        EXPECT_GT(parts.size(), n_found);
        for (const Answer& part : parts) {
            const Extent& e = part.extent;
            EXPECT_LE(part.volume, (e.x1 - e.x0) * (e.y1 - e.y0) * (e.z1 - e.z0) * (1 + 1e-12));
        }
        if (row.layout != Blocks::Layout::Sparse) {
            const double volume = zol::engine::geometry::signed_volume(ball.View(), ball.triangles);
            EXPECT_NEAR(volume_of(parts) / volume, 1, 1e-9);
        }
        match.Close();
    }
}

TEST(Match, TensorBlocksAndOrdersFromTheTopDownAgreeWithOneByOne) {
    const TemporaryFile mesh(obj(sphere({50, 40, 30}, 27.3, 12, 20)));
    for (const bool exact : {false, true}) {
        for (unsigned turned = 0; turned < 8; ++turned) {
            for (const std::array<std::size_t, 3> axes :
                 {std::array<std::size_t, 3>{0, 1, 2}, {2, 0, 1}, {1, 2, 0}}) {
                Source source;
                source.extent = {0, 0, 0, 100, 80, 60};
                source.geometry = std::make_unique<LatticeGeometry>(
                    Axis::Regular(0, 5, 20), Axis::Tensor({0, 11, 13, 29.5, 40, 41, 66, 80}),
                    Axis::Regular(0, 6, 10),
                    CellOrder{axes, {(turned & 1U) != 0, (turned & 2U) != 0, (turned & 4U) != 0}});
                MatchRequest request{{mesh.Path()}, Extent(30.5, 10, 7, 71, 55, 58), exact};
                const MatchRegion region(request, source);
                const auto walk = zol::engine::block::walk_over(region, *source.geometry);
                Matched next = walk->NotBefore(0);
                std::size_t matches = 0;
                for (std::int64_t block = 0; block < source.geometry->NBlocks(); ++block) {
                    const auto all =
                        zol::engine::block::box_of(source.geometry->BlockExtent(block));
                    const auto counted = region.Counted(all);
                    const Point centre = zol::engine::geometry::middle_of(all);
                    double volume = 0;
                    bool expected =
                        region.IsWithinLimits(centre) && region.Meshes().Contains(centre);
                    if (exact) {
                        const bool has_room = counted.lower[0] < counted.upper[0] &&
                                              counted.lower[1] < counted.upper[1] &&
                                              counted.lower[2] < counted.upper[2];
                        volume = has_room ? region.Meshes().VolumeIn(counted) : 0.0;
                        expected = volume > 0;
                    }
                    ASSERT_EQ(next.block == block, expected) << block;
                    if (!expected) continue;
                    ++matches;
                    if (exact) {
                        const double whole = zol::engine::geometry::volume_of(counted);
                        ASSERT_NEAR(next.volume == Matched::kWhole ? whole : next.volume, volume,
                                    1e-9 * whole);
                    }
                    next = walk->NotBefore(block + 1);
                }
                ASSERT_EQ(next.block, source.geometry->NBlocks());
                ASSERT_GT(matches, 50U);
            }
        }
    }
}

TEST(Match, LargePlansAreWalkedWindowByWindow) {
    // More columns than a window holds, and more pieces than it sorts at one go.
    const TemporaryFile solid(obj(box({100.25, 200.25, -1}, {300.25, 900.25, 1.75})));
    const TemporaryFile slope(
        obj({{{-9, -9, 0.5}, {2991, -9, 1.5}, {-9, 2991, 0.5}}, {{0, 1, 2}}}));
    const struct {
        const char* name;
        std::array<std::size_t, 3> axes;
        const TemporaryFile& mesh;
        bool exact;
        std::int64_t matches;
    } rows[] = {
        {"layer by layer", {0, 1, 2}, solid, false, 200 * 700 * 2},
        {"column by column", {2, 1, 0}, solid, false, 200 * 700 * 2},
        {"many pieces", {1, 0, 2}, slope, true, 1200 * 500},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Source source;
        source.extent = {0, 0, 0, 1200, 1000, 2};
        const int cells_z = row.exact ? 1 : 2;
        source.geometry = std::make_unique<LatticeGeometry>(
            Axis::Regular(0, 1, 1200), Axis::Regular(0, 1, row.exact ? 500 : 1000),
            Axis::Regular(0, 2.0 / cells_z, cells_z), CellOrder{row.axes, {false, true, false}});
        const MatchRegion region({{row.mesh.Path()}, std::nullopt, row.exact}, source);
        const auto walk = zol::engine::block::walk_over(region, *source.geometry);
        // The second time it starts over from the last window.
        for (int time = 0; time < 2; ++time) {
            std::int64_t matches = 0;
            double volume = 0;
            for (Matched next = walk->NotBefore(0); next.block < source.geometry->NBlocks();
                 next = walk->NotBefore(next.block + 1)) {
                ++matches;
                volume += next.volume;
            }
            EXPECT_EQ(matches, row.matches);
            if (row.exact) {
                // The slope is a plane: 0.5 + (x + 9) / 3000 high.
                EXPECT_NEAR(volume, 1200.0 * 500 * (0.5 + 609 / 3000.0), 1e-5);
            }
        }
    }
}

/// On a model of blocks of 10 from 0 to 30 on each axis.
class MatchSettings : public ::testing::Test {
protected:
    static std::string Centroids() {
        std::string text = "x,y,z\n";
        for (int n = 0; n < 27; ++n) {
            text += std::to_string(n % 3 * 10 + 5) + "," + std::to_string(n / 3 % 3 * 10 + 5) +
                    "," + std::to_string(n / 9 * 10 + 5) + "\n";
        }
        return text;
    }

    std::size_t Matches() { return walked(match_).size(); }

    /// What the diagnostics channel says while the match is walked.
    std::string Said() {
        const TemporaryFile channel("");
        ::setenv("ZOL_DIAGNOSTICS", channel.Path().c_str(), 1);
        match_.FindFirst();
        ::unsetenv("ZOL_DIAGNOSTICS");
        std::ifstream in(channel.Path());
        return {std::istreambuf_iterator<char>(in), {}};
    }

    TemporaryFile file_{Centroids()};
    Model model_{file_.Path(), "r"};
    Match& match_ = model_.GetMatch();
};

TEST_F(MatchSettings, AMatchBeginsWithItsFirstMoveAndStandsPastTheEndBefore) {
    EXPECT_TRUE(match_.IsEof());
    EXPECT_EQ(match_.GetMatchVolume(), 0.0);
    EXPECT_EQ(match_.GetMatchExtent().GetExtent().x1, 0.0);
    EXPECT_EQ(match_.Next(), 0);
    EXPECT_EQ(match_.GetPosition().value, 0);
    EXPECT_EQ(Matches(), 27U) << "all blocks match until something narrows them";
    EXPECT_EQ(match_.Next(), 1) << "it stays at the end";
    EXPECT_EQ(match_.GetPosition().value, 27);
}

TEST_F(MatchSettings, ASettingWaitsForTheNextFirstBlock) {
    match_.SetExtent({0, 0, 0, 10, 10, 30});
    match_.FindFirst();
    match_.SetExtent({20, 20, 0, 30, 30, 10});
    match_.SetUseExactVolume(true);
    EXPECT_EQ(match_.Next(), 0);
    EXPECT_EQ(match_.GetPosition().value, 9);
    EXPECT_EQ(match_.FindFirst(), 0);
    EXPECT_EQ(match_.GetPosition().value, 8);
    match_.Close();
    EXPECT_TRUE(match_.IsEof());
    EXPECT_EQ(Matches(), 27U) << "a closed match has forgotten its settings";
}

TEST_F(MatchSettings, TheExtentSelectsCentroidsOrPartsOfBlocks) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    const struct {
        const char* name;
        Extent extent;
        std::size_t by_centroid;
        double exact_volume;
    } rows[] = {
        {"one block", {10, 10, 10, 20, 20, 20}, 1, 1000},
        {"a part of eight", {8, 8, 8, 12, 12, 12}, 0, 64},
        {"a centroid on lower faces", {5, 5, 5, 6, 6, 6}, 1, 1},
        {"a centroid on an upper face", {0, 0, 0, 5, 10, 10}, 0, 500},
        {"all", {-infinity, -infinity, -infinity, infinity, infinity, infinity}, 27, 27000},
        {"beside the model", {31, 0, 0, 40, 30, 30}, 0, 0},
        {"lower above upper", {20, 20, 20, 10, 10, 10}, 0, 0},
        {"no number", {0, nan, 0, 30, 30, 30}, 0, 0},
    };
    const TemporaryFile all(obj(box({-1, -1, -1}, {31, 31, 31})));
    for (const bool with_solid : {false, true}) {
        for (const auto& row : rows) {
            SCOPED_TRACE(row.name);
            match_.Close();
            if (with_solid) match_.AddTriangulation(all.Path());
            match_.SetExtent(row.extent);
            EXPECT_EQ(Matches(), row.by_centroid);
            match_.SetUseExactVolume(true);
            const std::vector<Answer> parts = walked(match_);
            EXPECT_NEAR(volume_of(parts), row.exact_volume, 1e-9);
            for (const Answer& part : parts) {
                EXPECT_EQ(part.extent.x0,
                          std::max(row.extent.x0, std::floor(part.extent.x0 / 10) * 10));
                EXPECT_LE(part.extent.x1, row.extent.x1);
            }
        }
    }
    match_.SetExtent({20, 20, 20, 10, 10, 10});
    EXPECT_NE(Said().find("no room"), std::string::npos);
}

TEST_F(MatchSettings, TriangulationsAddUp) {
    const TemporaryFile low(obj(box({0, 0, 0}, {30, 30, 10})));
    const TemporaryFile west(obj(box({0, 0, 0}, {10, 30, 30})));
    const TemporaryFile flat(obj(terrain(1, [](int, int) { return 12.0; })));
    Mesh wide = terrain(1, [](int, int) { return 12.0; });
    for (Point& point : wide.points) point[0] *= 30, point[1] *= 30;
    const TemporaryFile surface(obj(wide));
    const TemporaryFile broken("v 1 2\nf 1 2 3\n");
    struct Row {
        const char* name;
        std::vector<std::string> meshes;
        std::size_t by_centroid;
        double exact_volume;
    };
    const Row rows[] = {
        {"one", {low.Path()}, 9, 9000},
        {"the same twice", {low.Path(), low.Path()}, 9, 9000},
        {"two that overlap", {low.Path(), west.Path()}, 15, 15000},
        {"below a surface", {surface.Path()}, 9, 30 * 30 * 12},
        {"a surface and a solid", {surface.Path(), west.Path()}, 15, 20 * 30 * 12 + 10 * 30 * 30},
        {"a file that does not open", {"/no such file"}, 0, 0},
        {"a broken file", {broken.Path()}, 0, 0},
        {"a broken file beside a good one", {broken.Path(), low.Path()}, 9, 9000},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        match_.Close();
        for (const std::string& mesh : row.meshes) match_.AddTriangulation(mesh);
        EXPECT_EQ(Matches(), row.by_centroid);
        EXPECT_EQ(volume_of(walked(match_)), 1000.0 * static_cast<double>(row.by_centroid));
        match_.SetUseExactVolume(true);
        EXPECT_NEAR(volume_of(walked(match_)), row.exact_volume, 1e-7);
    }
    match_.Close();
    match_.AddTriangulation("/no such file");
    match_.AddTriangulation(surface.Path());
    const std::string said = Said();
    EXPECT_NE(said.find("/no such file: can't open"), said.npos) << said;
    EXPECT_NE(said.find("is open; it selects what lies vertically below"), said.npos) << said;
}

TEST_F(MatchSettings, ReadsAreThoseOfTheMatchedBlock) {
    const TemporaryFile mesh(obj(box({11, 12, 13}, {18, 19, 14})));
    match_.AddTriangulation(mesh.Path());
    match_.SetUseExactVolume(true);
    model_.SetPosition({3});
    ASSERT_EQ(match_.FindFirst(), 0);
    EXPECT_EQ(match_.Get("centroid_y"), 15.0);
    EXPECT_EQ(match_.GetString("block_index"), "13");
    EXPECT_EQ(match_.GetBlockExtent().GetExtent().x1, 20.0);
    EXPECT_EQ(match_.GetMatchExtent().GetExtent().x1, 18.0);
    EXPECT_NEAR(match_.GetMatchVolume(), 49.0, 1e-12);
    EXPECT_EQ(match_.Next(), 1);
    EXPECT_EQ(model_.GetPosition().value, 3) << "each has a cursor of its own";
}

}  // namespace
