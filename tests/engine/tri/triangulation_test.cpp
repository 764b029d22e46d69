// A triangulation from file to answer.
#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <string>

#include "platform/zolTriangulationExport.h"
#include "tests/engine/temporary_file.h"
#include "tests/engine/tri/mesh_texts.h"

namespace zol::testing {
namespace {

using geometry::Point3D;
using model::tri::Triangulation;
using model::tri::TriIndex;
using testing_support::TemporaryFile;

Triangulation* open_text(const std::string& content, TemporaryFile& file) {
    file.Rewrite(content);
    return new Triangulation(file.Path());
}

struct Format {
    const char* name;
    std::string (*write)(const Mesh& mesh);
    /// Keeps nothing but what triangles name, in the order in which they do.
    bool merges = false;
};

const Format kFormats[] = {
    {"OBJ", obj_text},
    {"OFF", off_text},
    {"TSurf", tsurf_text},
    {"STL text", stl_text, true},
    {"STL bytes", stl_bytes, true},
    {"PLY text", ply_text},
    {"PLY bytes", ply_bytes},
    {"OMF", omf_bytes},
};

// Coordinates are whole numbers, which floats hold too.
const Mesh kBlock = box({4, 6, -2}, {14, 11, 1});

TEST(TriangulationTest, ASolidIsTheSameThroughEveryFormat) {
    TemporaryFile file("");
    for (const Point& place : {Point{0, 0, 0}, kFarAway}) {
        for (const Format& format : kFormats) {
            SCOPED_TRACE(format.name);
            const Mesh made = kBlock.Moved(place);
            const std::unique_ptr<Triangulation> mesh(open_text(format.write(made), file));
            ASSERT_EQ(mesh->NumPoints(), 8);
            ASSERT_EQ(mesh->NumTriangles(), 12);
            for (std::int32_t t = 0; t < 12; ++t) {
                TriIndex corners;
                mesh->GetTriangle(t, corners);
                const std::int32_t number[] = {corners.first, corners.second, corners.third};
                for (std::size_t c = 0; c < 3; ++c) {
                    Point point{};
                    mesh->GetPoint(number[c], point[0], point[1], point[2]);
                    EXPECT_EQ(point, made.View().Corner(std::size_t(t), c));
                }
            }
            EXPECT_EQ(mesh->GetVolume(), 150.0);
            EXPECT_TRUE(mesh->IsSolid());
            EXPECT_TRUE(mesh->IsConsistent());
            EXPECT_FALSE(mesh->IsSurface());
            EXPECT_FALSE(mesh->IsCrossing());
            const Point3D inside{place[0] + 5, place[1] + 7, place[2]};
            const Point3D outside{place[0] + 3, place[1] + 7, place[2]};
            const Point3D on{place[0] + 4, place[1] + 7, place[2]};
            EXPECT_TRUE(mesh->IsPointInside(inside));
            EXPECT_FALSE(mesh->IsPointInside(outside));
            EXPECT_TRUE(mesh->IsPointOn(on, 0.0));
            EXPECT_FALSE(mesh->IsPointOn(outside, 0.99));
            EXPECT_TRUE(mesh->IsPointOn(outside, 1.0));
            EXPECT_EQ(look_of(*mesh), "128 128 128 0 opaque");
        }
    }
}

TEST(TriangulationTest, EachDefectChangesItsOwnAnswer) {
    Mesh hole = kBlock;
    hole.triangles.pop_back();
    Mesh flipped = kBlock;
    std::swap(flipped.triangles[3][0], flipped.triangles[3][1]);
    Mesh doubled = kBlock;
    doubled.triangles.push_back(doubled.triangles[5]);
    Mesh without_area = kBlock;
    without_area.triangles.push_back({2, 2, 5});
    const Mesh crossing = kBlock.With(box({9, 8, 0}, {20, 20, 20}));
    Mesh corner_on_edge = kBlock;
    corner_on_edge.points.push_back({9, 6, -2});
    corner_on_edge.triangles[4] = {0, 8, 5};
    corner_on_edge.triangles.push_back({8, 1, 5});
    const Mesh hills = terrain(6, [](int i, int j) { return double(i * j % 5); });
    const struct {
        const char* name;
        Mesh mesh;
        double volume;
        bool solid;
        bool surface;
        bool crossing;
        bool consistent;
    } rows[] = {
        // name, mesh, volume, solid, surface, crossing, consistent
        {"whole", kBlock, 150, true, false, false, true},
        {"inside out", kBlock.TurnedInsideOut(), 150, true, false, false, true},
        {"a hole", hole, 0, false, false, false, true},
        {"a triangle turned", flipped, 150, false, false, false, false},
        {"a triangle twice", doubled, 0, false, false, true, false},
        {"a triangle without area", without_area, 150, true, false, false, true},
        {"two shells that cross", crossing, 150 + 11 * 12 * 20, true, false, true, true},
        {"a corner on an edge", corner_on_edge, 0, false, false, true, true},
        {"hills", hills, 0, false, true, false, true},
    };
    TemporaryFile file("");
    for (const auto& row : rows) {
        for (const Point& place : {Point{0, 0, 0}, kFarAway}) {
            SCOPED_TRACE(row.name);
            const std::unique_ptr<Triangulation> mesh(
                open_text(obj_text(row.mesh.Moved(place)), file));
            EXPECT_EQ(mesh->GetVolume(), row.volume);
            EXPECT_EQ(mesh->IsSolid(), row.solid);
            EXPECT_EQ(mesh->IsSurface(), row.surface);
            EXPECT_EQ(mesh->IsCrossing(), row.crossing);
            EXPECT_EQ(mesh->IsConsistent(), row.consistent);
            // A second time it is remembered.
            EXPECT_EQ(mesh->GetVolume(), row.volume);
            EXPECT_EQ(mesh->IsSurface(), row.surface);
            EXPECT_EQ(mesh->IsCrossing(), row.crossing);
        }
    }
}

TEST(TriangulationTest, TellsAmongItsAttributesWhetherItIsClosed) {
    Mesh hole = kBlock;
    hole.triangles.pop_back();
    Mesh flipped = kBlock;
    std::swap(flipped.triangles[3][0], flipped.triangles[3][1]);
    const struct {
        const char* name;
        Mesh mesh;
        const char* expected;
    } rows[] = {
        {"whole", kBlock, "closed:BOOLEAN=true"},
        {"over points of its own", kBlock.Unwelded(), "closed:BOOLEAN=true"},
        {"a triangle turned", flipped, "closed:BOOLEAN=true"},
        {"a hole", hole, "closed:BOOLEAN=false"},
        {"no triangles", {{{0, 0, 0}}, {}}, "closed:BOOLEAN=false"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const TemporaryFile file(off_text(row.mesh));
        const Triangulation mesh(file.Path());
        EXPECT_EQ(attributes_of(mesh, "closed"), row.expected);
        EXPECT_EQ(attributes_of(mesh, "closed"), row.expected) << "asked again";
    }
}

TEST(TriangulationTest, APointOnItStaysOnItAsTheToleranceGrows) {
    const Mesh slope = {{{588906.5078125, 7037228.32421875, -87990.08203125},
                         {552095.79296875, 7068126.9453125, -70809.37890625},
                         {511366.7734375, 6902895.31640625, 52919.26171875}},
                        {{0, 1, 2}}};
    const Mesh cube = box({0, 0, 0}, {1, 1, 1});
    const Mesh needle = {{{0, 0, 0}, {1e-170, 0, 0}, {0, 1, 0}}, {{0, 1, 2}}};
    const struct {
        const char* name;
        const Mesh& mesh;
        Point3D point;
        double tolerance;
        bool expected;
    } rows[] = {
        {"exactly on a slope",
         slope,
         {531241.4951171875, 6960994.849609375, 4373.43359375},
         0,
         true},
        {"the same", slope, {531241.4951171875, 6960994.849609375, 4373.43359375}, 1e-300, true},
        {"the same", slope, {531241.4951171875, 6960994.849609375, 4373.43359375}, 1e-11, true},
        {"far", cube, {1e160, 0, 0}, 1.1e160, true},
        {"too far", cube, {1e160, 0, 0}, 0.9e160, false},
        {"far and aslant", cube, {1e160, 1e160, 0}, 1.5e160, true},
        {"too far and aslant", cube, {1e160, 1e160, 0}, 1.4e160, false},
        {"at the end of the range", cube, {1.5e308, 0.5, 0.5}, 1.6e308, true},
        {"beyond the tolerance there", cube, {1.5e308, -1.5e308, 0.5}, 1.6e308, false},
        {"near", cube, {0.5, 0.5, -1e-200}, 1.1e-200, true},
        {"not so near", cube, {0.5, 0.5, -1e-200}, 1e-201, false},
        {"near an edge", cube, {0.5, -3e-200, -4e-200}, 5.1e-200, true},
        {"not so near an edge", cube, {0.5, -3e-200, -4e-200}, 4.9e-200, false},
        {"near a corner", cube, {-2e-200, -3e-200, -6e-200}, 7.1e-200, true},
        {"not so near a corner", cube, {-2e-200, -3e-200, -6e-200}, 6.9e-200, false},
        {"beside a needle", needle, {2e-170, 0, 0}, 1.1e-170, true},
        {"not quite beside a needle", needle, {2e-170, 0, 0}, 0.9e-170, false},
    };
    TemporaryFile file("");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::unique_ptr<Triangulation> mesh(open_text(off_text(row.mesh), file));
        ASSERT_EQ(mesh->NumPoints(), static_cast<int>(row.mesh.points.size()));
        EXPECT_EQ(mesh->IsPointOn(row.point, row.tolerance), row.expected);
    }
}

TEST(TriangulationTest, TrianglesWithoutAreaCountAsThePageSays) {
    // A segment along x, as a triangle in a line and as one that repeats a corner.
    const Mesh in_line = {{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, {{0, 1, 2}}};
    const Mesh repeats = {{{0, 0, 0}, {2, 0, 0}}, {{0, 1, 1}}};
    const Mesh across = {{{1, -1, -1}, {1, 1, -1}, {1, 0, 2}}, {{0, 1, 2}}};
    TemporaryFile file("");
    for (const Mesh& without_area : {in_line, repeats}) {
        const std::unique_ptr<Triangulation> alone(open_text(off_text(without_area), file));
        EXPECT_TRUE(alone->IsPointOn({0.5, 0, 0}, 0));
        EXPECT_TRUE(alone->IsPointOn({0.5, 3, 4}, 5));
        EXPECT_FALSE(alone->IsPointOn({0.5, 3, 4}, 4.9));
        EXPECT_TRUE(alone->IsSurface());
        const std::unique_ptr<Triangulation> crossed(
            open_text(off_text(without_area.With(across)), file));
        EXPECT_FALSE(crossed->IsCrossing());
        EXPECT_FALSE(crossed->IsSurface()) << "the other one stands vertical";
    }
    const std::unique_ptr<Triangulation> points(open_text("OFF\n1 0 0\n0 0 0\n", file));
    EXPECT_FALSE(points->IsSurface());
}

TEST(TriangulationTest, RealMeshesHaveTheirKnownMeasures) {
    const struct {
        const char* name;
        int points;
        int triangles;
        double volume;
        bool solid;
        bool surface;
    } rows[] = {
        // Almost closed: three edges are open and four have more than two triangles.
        {"Mpz_ore_unit.stl", 31873, 63749, 0, false, false},
        {"gebco_coastal.stl", 1558, 3108, 1.64895e10, true, false},
        {"unit_cube.STL", 8, 12, 1, true, false},
        {"featuretype.STL", 2010, 3476, 0, false, false},
        {"two_objects_mixed_case_names.stl", 16, 24, 2, true, false},
        {"box.obj", 8, 12, 8, true, false},
        {"negative_indices.obj", 8, 12, 8, true, false},
        {"cube_with_vertexcolors.obj", 8, 12, 1, true, false},
        {"ballA.off", 1900, 3796, 1401.11, true, false},
        {"cube_uv.ply", 24, 12, 8, true, false},
        {"scodie_pvrtx.ts", 6, 4, 0, false, true},
        {"Fault_without_crs.ts", 189, 324, 0, false, true},
        {"points_ascii_with_lists.ply", 5, 0, 0, false, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Triangulation mesh(std::string(ZOL_SAMPLES) + "/tri/" + row.name);
        EXPECT_EQ(mesh.NumPoints(), row.points);
        EXPECT_EQ(mesh.NumTriangles(), row.triangles);
        EXPECT_NEAR(mesh.GetVolume(), row.volume, 1e-5 * row.volume);
        EXPECT_EQ(mesh.IsSolid(), row.solid);
        EXPECT_EQ(mesh.IsSurface(), row.surface);
    }
}

TEST(TriangulationTest, KeepsDoublesFromFileToCaller) {
    TemporaryFile file("v 612345.123 7000000.123 1e-7\n");
    const Triangulation mesh(file.Path());
    double x = 0;
    double y = 0;
    double z = 0;
    mesh.GetPoint(0, x, y, z);
    EXPECT_EQ(x, 612345.123);
    EXPECT_EQ(y, 7000000.123);
    EXPECT_EQ(z, 1e-7);
}

TEST(TriangulationTest, OfNoFileHasNoPointsAndStillAnswers) {
    TemporaryFile file("v 0 0 nan\n");
    for (const std::string& name : {std::string("/no/such/file"), std::string(), file.Path()}) {
        const Triangulation mesh(name);
        EXPECT_EQ(mesh.NumPoints(), 0);
        EXPECT_EQ(mesh.NumTriangles(), 0);
        EXPECT_EQ(mesh.GetVolume(), 0.0);
        EXPECT_FALSE(mesh.IsSolid() || mesh.IsSurface() || mesh.IsCrossing());
        EXPECT_FALSE(mesh.IsPointInside({0, 0, 0}) || mesh.IsPointOn({0, 0, 0}, 1e9));
        EXPECT_EQ(attributes_of(mesh), "");
    }
}

TEST(TriangulationTest, DoesNotDependOnTheModeOfTheProcessor) {
    const Mesh ball = sphere({612345.1, 7012345.2, 33.3}, 100.0 / 3, 20, 30);
    const TemporaryFile file(obj_text(ball));
    const Triangulation usual(file.Path());
    const double volume = usual.GetVolume();
    std::fesetround(FE_UPWARD);
    const Triangulation upward(file.Path());
    const double volume_upward = upward.GetVolume();
    double x = 0;
    double y = 0;
    double z = 0;
    upward.GetPoint(7, x, y, z);
    const bool is_upward_still = std::fegetround() == FE_UPWARD;
    std::fesetround(FE_TONEAREST);
    EXPECT_TRUE(is_upward_still);
    EXPECT_EQ(volume_upward, volume);
    EXPECT_EQ(x, ball.points[7][0]);
}

}  // namespace
}  // namespace zol::testing
