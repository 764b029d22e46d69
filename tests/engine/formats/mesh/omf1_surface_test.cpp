// Surfaces and grid surfaces of OMF 1 files as meshes.
#include "engine/formats/mesh/omf1_surface.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "tests/engine/formats/mesh/mesh_measures.h"
#include "tests/engine/omf1_writer.h"

namespace {

using testing::HasSubstr;
using zol::engine::File;
using zol::engine::MeshData;
using zol::engine::MeshPoint;
using zol::engine::MeshTriangle;
using zol::engine::read_omf1_surface;
using namespace zol::testing_support;

MeshData read_first(const File& file) {
    return read_omf1_surface(file, "");
}

TEST(Omf1Mesh, OfTheReferenceLibraryIsReadWhole) {
    const File file(std::string(ZOL_SAMPLES) + "/omf/test_file.omf");
    const MeshData surface = read_first(file);
    EXPECT_EQ(surface.points.Size(), 100U);
    ASSERT_EQ(surface.triangles.Size(), 50U);
    EXPECT_EQ(surface.triangles[0], (MeshTriangle{82, 89, 70}));
    EXPECT_EQ(surface.triangles[1], (MeshTriangle{84, 30, 66}));
    EXPECT_EQ(look_of(surface), "100 200 200 - -");
    EXPECT_EQ(attributes_of(surface, "name"), "trisurf");
    EXPECT_EQ(attributes_of(surface, "project"), "Test project");

    const MeshData wall = read_omf1_surface(file, "gridsurf");
    EXPECT_EQ(wall.points.Size(), 176U);
    EXPECT_EQ(wall.triangles.Size(), 300U);
    EXPECT_EQ(wall.points[0][0], 50.0);
    EXPECT_EQ(wall.points[10][0], 60.0);
    EXPECT_EQ(wall.points[11][2], 51.0);
    EXPECT_EQ(look_of(wall), "199 199 199 - test image");
    EXPECT_EQ(attributes_of(wall, "source_faces"), "150");
}

/// A file with one surface; `element`, `geometry` are further members.
std::string surface_file(const std::vector<double>& points,
                         const std::vector<std::int64_t>& triangles,
                         const std::string& element = "", const std::string& geometry = "") {
    Omf1Writer writer;
    writer.Object("p", "Project", R"("origin":[600000,7000000,0],"units":"m","elements":["e"])");
    writer.Object("e", "SurfaceElement", R"("name":"ore","geometry":"g")" + element);
    writer.Object("v", "Vector3Array", "\"array\":" + writer.Blob(points));
    writer.Object("i", "Int3Array", "\"array\":" + writer.Blob(triangles));
    writer.Object("t", "ImageTexture", R"("name":"photo")");
    writer.Object("g", "SurfaceGeometry", R"("vertices":"v","triangles":"i")" + geometry);
    return writer.Bytes();
}

const std::vector<double> kCorners = {0.125, 0, 0, 1, 0, 0, 0, 1, 0};

TEST(Omf1Mesh, LiesUnderTheOriginsOfProjectAndElement) {
    const MeshData mesh = read_text(
        read_first, surface_file(kCorners, {0, 1, 2},
                                 R"(,"color":[255,128,0],"subtype":"surface","textures":["t"],)"
                                 R"("date_created":"2017-10-31T21:02:09Z","description":"of 2017")",
                                 R"(,"origin":[1000,2000,300])"));
    EXPECT_EQ(mesh.points[0], (MeshPoint{601000.125, 7002000, 300}));
    EXPECT_EQ(mesh.triangles[0], (MeshTriangle{0, 1, 2}));
    EXPECT_EQ(look_of(mesh), "255 128 0 - photo");
    const struct {
        const char* name;
        const char* value;
    } rows[] = {
        {"format", "OMF 1"},
        {"name", "ore"},
        {"description", "of 2017"},
        {"units", "m"},
        {"subtype", "surface"},
        {"date_created", "2017/10/31"},
        {"time_created", "2017-10-31T21:02:09Z"},
    };
    for (const auto& row : rows) EXPECT_EQ(attributes_of(mesh, row.name), row.value);
}

TEST(Omf1Mesh, IsReadWhereItCompressesAThousandfold) {
    const MeshData mesh = read_text(read_first, surface_file(std::vector<double>(300000, 0.0),
                                                             std::vector<std::int64_t>(900000, 0)));
    EXPECT_EQ(mesh.points.Size(), 100000U);
    EXPECT_EQ(mesh.triangles.Size(), 300000U);
    EXPECT_EQ(attributes_of(mesh, "degenerate_triangles"), "300000");
}

/// Of 3 x 2 nodes, 10 and 5 apart; `more` are further members.
std::string grid_file(const std::string& more, const std::vector<double>& heights = {}) {
    Omf1Writer writer;
    writer.Object("p", "Project", R"("origin":[100,200,300],"elements":["e"])");
    writer.Object("e", "SurfaceElement", R"("name":"floor","geometry":"g")");
    std::string members = R"("origin":[1,2,3])" + more;
    if (!heights.empty()) {
        writer.Object("a", "ScalarArray", "\"array\":" + writer.Blob(heights));
        members += R"(,"offset_w":"a")";
    }
    writer.Object("g", "SurfaceGridGeometry", members);
    return writer.Bytes();
}

const std::string kTensors = R"(,"tensor_u":[10,10],"tensor_v":[5])";

TEST(Omf1Mesh, OfAGridRisesAlongItsNormal) {
    const double none = std::numeric_limits<double>::quiet_NaN();
    const struct {
        const char* name;
        std::string content;
        std::size_t triangles;
        MeshPoint last;
        MeshPoint side;
    } rows[] = {
        {"flat", grid_file(kTensors), 4, {121, 207, 303}, {0, 0, 50}},
        {"hilly", grid_file(kTensors, {0, 0, 0, 0, 0, 7}), 4, {121, 207, 310}, {0, 0, 50}},
        {"a wall",
         grid_file(kTensors + R"(,"axis_u":[0,1,0],"axis_v":[0,0,1])", {0, 0, 0, 0, 0, 7}),
         4,
         {108, 222, 308},
         {50, 0, 0}},
        {"turned over",
         grid_file(kTensors + R"(,"axis_v":[0,-1,0])", {0, 0, 0, 0, 0, 7}),
         4,
         {121, 197, 296},
         {0, 0, -50}},
        {"a corner missing",
         grid_file(kTensors, {0, 0, 0, 0, 0, none}),
         2,
         {111, 207, 303},
         {0, 0, 50}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const MeshData mesh = read_text(read_first, row.content);
        ASSERT_EQ(mesh.triangles.Size(), row.triangles);
        EXPECT_EQ(mesh.points[mesh.points.Size() - 1], row.last);
        EXPECT_EQ(cross_of(mesh, 0), row.side);
    }
    const MeshData mesh = read_text(read_first, grid_file(kTensors));
    EXPECT_EQ(mesh.triangles[0], (MeshTriangle{0, 1, 4}));
    EXPECT_EQ(mesh.triangles[1], (MeshTriangle{0, 4, 3}));
    EXPECT_EQ(mesh.triangles[2], (MeshTriangle{1, 2, 5}));
}

TEST(Omf1Mesh, IsRefusedWithTheFault) {
    const double none = std::numeric_limits<double>::quiet_NaN();
    std::string wide = "[1";
    for (int i = 0; i < 3000; ++i) wide += ",1";
    wide += "]";
    const struct {
        const char* name;
        std::string content;
        const char* reason;
    } rows[] = {
        {"an index too high", surface_file(kCorners, {0, 1, 3}), "triangle 0 names point 3"},
        {"an index below 0", surface_file(kCorners, {0, 1, 2, 0, -1, 2}),
         "triangle 1 names point -1"},
        {"an index of 64 bits", surface_file(kCorners, {0, 1, std::int64_t{1} << 40}),
         "names point"},
        {"half a triangle", surface_file(kCorners, {0, 1}), "16 bytes, which are no rows of 24"},
        {"half a point", surface_file({1, 2, 3, 4}, {0, 0, 0}),
         "32 bytes, which are no rows of 24"},
        {"nan", surface_file({1, none, 3}, {0, 0, 0}), "point 0: a coordinate is not a finite"},
        {"an origin too far out", surface_file(kCorners, {0, 1, 2}, "", R"(,"origin":[1e200,0,0])"),
         "lies too far out"},
        {"a colour beyond a byte", surface_file(kCorners, {0, 1, 2}, R"(,"color":[0,256,0])"),
         "is not from 0 to 255"},
        {"axes not at right angles", grid_file(kTensors + R"(,"axis_v":[0.6,0.8,0])"),
         "not at right angles"},
        {"an axis too long", grid_file(kTensors + R"(,"axis_u":[2,0,0])"), "not of length 1"},
        {"heights missing", grid_file(kTensors, {1, 2, 3}), "24 bytes, 48 are expected"},
        {"nine million nodes in a line of text",
         grid_file(R"(,"tensor_u":)" + wide + R"(,"tensor_v":)" + wide),
         "is flat and has more than"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_THAT(refusal_of(read_first, row.content), HasSubstr(row.reason));
    }
}

}  // namespace
