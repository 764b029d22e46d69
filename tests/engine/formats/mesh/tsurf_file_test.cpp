// GOCAD TSurf files.
#include "engine/formats/mesh/tsurf_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/engine/formats/mesh/mesh_measures.h"

namespace {

using testing::HasSubstr;
using zol::engine::File;
using zol::engine::MeshData;
using zol::engine::MeshPoint;
using zol::engine::MeshTriangle;
using zol::engine::read_tsurf;
using namespace zol::testing_support;

TEST(TsurfFile, OfOtherProgramsIsReadWhole) {
    struct Case {
        const char* name;
        std::size_t points;
        std::size_t triangles;
        const char* parts;
        double least_z;
        double most_z;
        const char* look;
        const char* names;
        const char* properties;
    };
    const Case cases[] = {
        {"2triangles.ts", 4, 2, "1", -2242.1307368514, -2233.59422969156, "- - -", "2triangles.ts",
         ""},
        {"ts-2props.ts", 4, 2, "1", 15210.8740234375, 110115.6171875, "255 114 86 1.00 -", "test",
         " default property|def-prop"},
        {"surf2d_multi.ts", 92, 92, "6", 0, 0, "0 0 63 1.00 -", "section1|section1", ""},
        {"Fault_without_crs.ts", 189, 324, "1", 2117.255317, 2432.308, "- - -", "Fault", ""},
        // One of its header's keys is called so too.
        {"scodie_pvrtx.ts", 6, 4, "1|false", -13036.85546875, -7000, "0 0 128 1.00 -",
         "GVFA-WWFZ-EAST-Scodie_Lineament-CFM1", "is_latest"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const MeshData mesh = read_tsurf(File(sample(row.name)));
        EXPECT_EQ(mesh.points.Size(), row.points);
        EXPECT_EQ(mesh.triangles.Size(), row.triangles);
        EXPECT_EQ(attributes_of(mesh, "parts"), row.parts);
        const auto points = mesh.points.View();
        const auto is_lower = [](const MeshPoint& a, const MeshPoint& b) { return a[2] < b[2]; };
        EXPECT_NEAR((*std::min_element(points.begin(), points.end(), is_lower))[2], row.least_z,
                    1e-3);
        EXPECT_NEAR((*std::max_element(points.begin(), points.end(), is_lower))[2], row.most_z,
                    1e-3);
        EXPECT_EQ(look_of(mesh), row.look);
        EXPECT_EQ(attributes_of(mesh, "name"), row.names);
        EXPECT_EQ(attributes_of(mesh, "property"), row.properties);
    }
    const MeshData mesh = read_tsurf(File(sample("scodie_pvrtx.ts")));
    EXPECT_EQ(mesh.points[0], (MeshPoint{399811.84375, 3948138, -7000}));
    EXPECT_EQ(mesh.triangles[3], (MeshTriangle{3, 0, 2}));
    EXPECT_EQ(attributes_of(mesh, "units"), "m");
    EXPECT_EQ(attributes_of(mesh, "border"), "true");
    EXPECT_EQ(attributes_of(mesh, "*border*width"), "2");
    EXPECT_EQ(attributes_of(mesh, "geological_type"), "top");
}

std::string surface(const std::string& body) {
    return "GOCAD TSurf 1\nHEADER {\nname:a\n}\n" + body + "END\n";
}

TEST(TsurfFile, HasPointsByTheirNumbers) {
    struct Case {
        const char* name;
        std::string content;
    };
    // All are the triangles 0 1 2 and 2 1 3.
    const std::string three = "VRTX 1 0 0 0\nVRTX 2 4 0 0\nVRTX 3 0 4 0\n";
    const Case cases[] = {
        {"from 1", surface(three + "VRTX 4 4 4 1\nTRGL 1 2 3\nTRGL 3 2 4\n")},
        {"with gaps and signs",
         surface("VRTX -5 0 0 0\nVRTX 1152921504606846976 4 0 0\nVRTX 1000000 0 4 0\n"
                 "VRTX 9223372036854775807 4 4 1\nTRGL -5 1152921504606846976 1000000\n"
                 "TRGL 1000000 1152921504606846976 9223372036854775807\n")},
        {"atoms", surface("TFACE\n" + three +
                          "TRGL 1 2 3\nTFACE\nATOM 5 3\nPATOM 6 2 -9 9\n"
                          "ATOM 8 6\nPVRTX 7 4 4 1 -99999 CNXYZ\nTRGL 5 8 7\n")},
        {"numbers that begin again",
         surface(three + "TRGL 1 2 3\n") + "GOCAD TSurf 1\nHEADER {name:b}\nVRTX 1 4 4 1\nEND\n"},
        {"numbers from far off", surface("VRTX 900000001 1 2 3\nVRTX 900000002 4 5 6\n"
                                         "VRTX 900000003 7 8 10\nVRTX 5 4 4 1\n"
                                         "TRGL 900000001 900000002 900000003\n")},
        {"numbers far apart, also backwards",
         surface("VRTX 9000000000 1 2 3\nVRTX 9223372036854775807 4 5 6\n"
                 "VRTX -9223372036854775808 7 8 10\nVRTX 7000000000000 4 4 1\n"
                 "TRGL 9000000000 9223372036854775807 -9223372036854775808\n"
                 "TRGL -9223372036854775808 9223372036854775807 7000000000000\n")},
        {"what is passed over",
         surface("# c\nKEEP 1\n" + three +
                 "VRTX 4 4 4 1 CNXYZ\nTRGL 1 2 3\nTRGL 3 2 4\n"
                 "BSTONE 1\nBORDER 5 1 2\nPROPERTY_CLASS_HEADER a b {\nVRTX 1 1 1 1\n}\n")},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const MeshData mesh = read_text(read_tsurf, row.content);
        ASSERT_EQ(mesh.points.Size(), 4U);
        EXPECT_EQ(mesh.points[3], (MeshPoint{4, 4, 1}));
        ASSERT_GE(mesh.triangles.Size(), 1U);
        EXPECT_EQ(mesh.triangles[0], (MeshTriangle{0, 1, 2}));
        if (mesh.triangles.Size() > 1) {
            EXPECT_EQ(mesh.triangles[1], (MeshTriangle{2, 1, 3}));
        }
    }
}

TEST(TsurfFile, OfDepthsIsTurnedUpright) {
    const std::string system =
        "GOCAD_ORIGINAL_COORDINATE_SYSTEM\nNAME \" local\"\nAXIS_UNIT \"m\" m ft\n"
        "ZPOSITIVE Depth\nEND_ORIGINAL_COORDINATE_SYSTEM\n";
    const std::string body = "VRTX 0 0 0 0\nVRTX 1 1 0 5\nVRTX 2 0 1 5\nTRGL 0 1 2\n";
    // The second object has heights.
    const MeshData mesh = read_text(read_tsurf, surface(system + body) + surface(body));
    ASSERT_EQ(mesh.points.Size(), 6U);
    EXPECT_EQ(mesh.points[0], (MeshPoint{0, 0, 0}));
    EXPECT_FALSE(std::signbit(mesh.points[0][2]));
    EXPECT_EQ(mesh.points[1][2], -5);
    EXPECT_EQ(mesh.points[4][2], 5);
    EXPECT_EQ(mesh.triangles[0], (MeshTriangle{0, 2, 1}));
    EXPECT_EQ(mesh.triangles[1], (MeshTriangle{3, 4, 5}));
    EXPECT_EQ(attributes_of(mesh, "coordinate_system"), "local");
    EXPECT_EQ(attributes_of(mesh, "units"), "m m ft");
}

TEST(TsurfFile, SaysItsColourInManyWays) {
    struct Case {
        const char* header;
        const char* expected;
    };
    const Case cases[] = {
        {"HEADER {\n*solid*color: 1 0 0.5 0.25\n}\n", "255 0 128 0.25 -"},
        {"HEADER {\n  *solid*color:#FF8000\n  }\n", "255 128 0 - -"},
        {"HEADER { *solid*color:Sky Blue }\n", "135 206 235 - -"},
        {"HEADER{*solid*color:red}\n", "255 0 0 - -"},
        {"HEADER\n{\n*solid*color:red\n*solid*transparency:0.25\n}\n", "255 0 0 0.75 -"},
        {"HEADER {\n*solid*color:no such\n}\n", "- - -"},
        {"HEADER {\n*solid*color:#12345\n*painted*color:red\n}\n", "- - -"},
        {"", "- - -"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.header);
        const std::string text =
            std::string("GOCAD TSurf 1\n") + row.header + "VRTX 1 0 0 0\nEND\n";
        EXPECT_EQ(look_of(read_text(read_tsurf, text)), row.expected);
    }
    const auto coloured = [](const std::string& colour, int triangles) {
        std::string text = "GOCAD TSurf 1\nHEADER {*solid*color:" + colour + "}\nVRTX 1 0 0 0\n";
        for (int i = 0; i < triangles; ++i) text += "TRGL 1 1 1\n";
        return text + "END\n";
    };
    const std::string all = coloured("red", 1) + coloured("green", 2) + coloured("blue", 2);
    const MeshData mesh = read_text(read_tsurf, all);
    EXPECT_EQ(look_of(mesh), "0 255 0 - -");
    EXPECT_EQ(attributes_of(mesh, "degenerate_triangles"), "5");
}

TEST(TsurfFile, ThatIsBrokenIsRefusedWithItsLine) {
    struct Case {
        const char* name;
        std::string content;
        const char* expected;
    };
    const Case cases[] = {
        {"empty", "", "it has no points"},
        {"no points", surface(""), "it has no points"},
        {"another format", "TSurf\n", "line 1: \"GOCAD TSurf 1\" is expected instead of \"TSurf\""},
        {"a grid", "GOCAD SGrid 1\n", "a GOCAD object of the kind \"SGrid\", not a TSurf"},
        {"a second object of another kind", surface("VRTX 1 0 0 0\n") + "GOCAD VSet 1\nEND\n",
         "line 7: the file holds a GOCAD object of the kind \"VSet\""},
        {"no END", "GOCAD TSurf 1\nVRTX 1 0 0 0\n", "before the END of the object of line 1"},
        {"END is missing between", "GOCAD TSurf 1\nVRTX 1 0 0 0\nGOCAD TSurf 1\nEND\n",
         "line 3: an object begins before the one of line 1 has its END"},
        {"open header", "GOCAD TSurf 1\nHEADER {\nname:a\nEND\n", "the { of line 2 is closed"},
        {"open system", "GOCAD TSurf 1\nGOCAD_ORIGINAL_COORDINATE_SYSTEM\nEND\n",
         "inside the coordinate system of line 2"},
        {"no number", surface("VRTX x 0 0 0\n"), "line 5: the number of a point is expected"},
        {"two coordinates", surface("VRTX 1 0 0\n"), "line 5: a coordinate is expected"},
        {"rubbish behind a number", surface("VRTX 1 0 0 1+\n"), "instead of \"1+\""},
        {"not a number", surface("VRTX 1 0 0 NaN\n"),
         "a coordinate is expected instead of \"NaN\""},
        {"number twice", surface("VRTX 1 0 0 0\nVRTX 1 1 0 0\n"),
         "line 6: there is a point 1 already"},
        {"far number twice", surface("VRTX 123456789 0 0 0\nVRTX 123456789 1 0 0\n"), "already"},
        {"far number twice, behind a greater one",
         surface("VRTX 1 0 0 0\nVRTX 80000000 0 0 0\nVRTX 70000000 0 0 0\nVRTX 70000000 0 0 0\n"),
         "line 8: there is a point 70000000 already"},
        {"unknown corner", surface("VRTX 1 0 0 0\nTRGL 1 1 2\n"), "line 6: there is no point 2"},
        {"far unknown corner", surface("VRTX 1 0 0 0\nTRGL 1 1 -1\n"), "there is no point -1"},
        {"two corners", surface("VRTX 1 0 0 0\nTRGL 1 1\n"), "the number of a point is expected"},
        {"atom of itself", surface("VRTX 1 0 0 0\nATOM 2 2\n"), "line 6: there is no point 2"},
        {"atoms in a circle", surface("VRTX 1 0 0 0\nATOM 2 3\nATOM 3 2\n"), "there is no point 3"},
        {"number of another object", surface("VRTX 1 0 0 0\n") + surface("TRGL 1 1 1\n"),
         "line 11: there is no point 1"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        EXPECT_THAT(refusal_of(read_tsurf, row.content), HasSubstr(row.expected));
    }
}

TEST(TsurfFile, CutShortIsRefused) {
    EXPECT_EQ(meshes_of_beginnings(read_tsurf, content_of(sample("2triangles.ts"))), 0);
    // The line end behind END may go.
    for (const char* name : {"ts-2props.ts", "scodie_pvrtx.ts"}) {
        EXPECT_LE(meshes_of_beginnings(read_tsurf, content_of(sample(name))), 2) << name;
    }
}

}  // namespace
