// OBJ files: real ones against figures found by other programs, and broken ones.
#include "engine/formats/mesh/obj_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <string>

#include "tests/engine/formats/mesh/mesh_measures.h"

namespace {

using testing::HasSubstr;
using zol::engine::File;
using zol::engine::MeshData;
using zol::engine::MeshPoint;
using zol::engine::MeshTriangle;
using zol::engine::read_obj;
using namespace zol::testing_support;

TEST(ObjFile, OfOtherProgramsIsReadWhole) {
    struct Case {
        const char* name;
        std::size_t points;
        std::size_t triangles;
        const char* faces;
        const char* parts;
        // Not closed where it is not a number.
        double volume;
        const char* look;
        const char* materials;
    };
    const double open = std::nan("");
    const Case cases[] = {
        {"box.obj", 8, 12, "6", "1", 8, "204 204 204 1.00 -", "Material|SecondMaterial"},
        {"negative_indices.obj", 8, 12, "6", "1", 8, "- - -", ""},
        {"polygonfaces.obj", 5, 3, "1", "1", open, "- - -", "Material"},
        {"reference.obj", 845, 1610, "1610", "1", open, "- - -", ""},
        {"cube_with_vertexcolors.obj", 8, 12, "12", "1", 1, "- - -", ""},
        {"spider.obj", 762, 1368, "1368", "19", open, "204 204 204 - drkwood2.jpg",
         "HLeibTex|Skin|BeinTex|Augentex"},
        {"cornell_box.obj", 76, 36, "18", "8", open, "255 255 255 - -", "white|light|green|red"},
        {"space_in_material_name.obj", 64, 64, "1", "1", open, "36 47 105 1.00 -",
         "Hard Shiny Plastic White"},
        {"issue-248-texres-texopt.obj", 8, 12, "6", "6", open, "255 255 255 - input.jpg",
         "white|red|green"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const MeshData mesh = read_obj(File(sample(row.name)));
        EXPECT_EQ(mesh.points.Size(), row.points);
        EXPECT_EQ(mesh.triangles.Size(), row.triangles);
        EXPECT_EQ(attributes_of(mesh, "source_faces"), row.faces);
        EXPECT_EQ(attributes_of(mesh, "parts"), row.parts);
        EXPECT_EQ(look_of(mesh), row.look);
        EXPECT_EQ(attributes_of(mesh, "material"), row.materials);
        if (!std::isnan(row.volume)) {
            EXPECT_NEAR(volume_of(mesh), row.volume, 1e-12);
        }
    }
}

TEST(ObjFile, HasAFaceWithAHoleParted) {
    // 66 corners around a slit; a fan would cover 3.22474.
    const MeshData mesh = read_obj(File(sample("concave_polygon.obj")));
    EXPECT_EQ(mesh.triangles.Size(), 64U);
    EXPECT_NEAR(area_of(mesh), 0.2454966872, 1e-9);
}

TEST(ObjFile, IsReadWhateverItsLinesLookLike) {
    struct Case {
        const char* name;
        const char* content;
    };
    // All are one triangle.
    const Case cases[] = {
        {"plain", "v 1 2 3\nv 4 5 6\nv 7 8 10\nf 1 2 3\n"},
        {"blanks and tabs", "  v\t1  2\t3 \n v 4 5 6\nv 7 8 10\n\tf  1\t2 3  \n"},
        {"comments behind", "v 1 2 3 # a\nv 4 5 6 #b\nv 7 8 10\nf 1 2 3 # c\n# d \\\n"},
        {"joined lines", "v 1 \\\n2 3\nv 4 5 6\nv 7 8 10\nf 1 2\\\n\\\n 3\\\n"},
        {"joined lines, CR LF", "v 1 \\\r\n2 3\r\nv 4 5 6\r\nv 7 8 10\r\nf 1 2 3\\\r\n"},
        {"CR", "v 1 2 3\rv 4 5 6\rv 7 8 10\rf 1 2 3"},
        {"texture vertices", "v 1 2 3\nv 4 5 6\nv 7 8 10\nvt 0 0\nf 1/1 2/1 3/-1\n"},
        {"normals", "v 1 2 3\nv 4 5 6\nv 7 8 10\nvn 0 0 1\nf 1//1 2//-1 3//1\n"},
        {"both", "v 1 2 3\nv 4 5 6\nv 7 8 10\nvt 0\nvn 0 0 1\nf 1/1/1 2/1/1 3/1/1\n"},
        {"open slashes", "v 1 2 3\nv 4 5 6\nv 7 8 10\nf 1/ 2// 3//\n"},
        {"negative", "v 1 2 3\nv 4 5 6\nv 7 8 10\nf -3 -2 -1\n"},
        {"negative counts so far", "v 1 2 3\nv 4 5 6\nv 7 8 10\nf -3 -2 -1\nv 9 9 9\n"},
        {"weights", "v 2 4 6 2\nv 4 5 6 1\nv 7 8 10 0\nf 1 2 3\n"},
        {"colours", "v 1 2 3 .5 .5 .5\nv 4 5 6 255 0 0\nv 7 8 10 1 1 1 .5\nf 1 2 3\n"},
        {"faces first", "f 1 2 3\nv 1 2 3\nv 4 5 6\nv 7 8 10\n"},
        {"other statements", "s off\nv 1 2 3\nv 4 5 6\nvp 1\nv 7 8 10\nl 1 2\np 1\nf 1 2 3\nend\n"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const MeshData mesh = read_text(read_obj, row.content);
        ASSERT_GE(mesh.points.Size(), 3U);
        EXPECT_EQ(mesh.points[0], (MeshPoint{1, 2, 3}));
        EXPECT_EQ(mesh.points[1], (MeshPoint{4, 5, 6}));
        EXPECT_EQ(mesh.points[2], (MeshPoint{7, 8, 10}));
        ASSERT_EQ(mesh.triangles.Size(), 1U);
        EXPECT_EQ(mesh.triangles[0], (MeshTriangle{0, 1, 2}));
    }
}

TEST(ObjFile, KeepsAllDigits) {
    const MeshData mesh = read_text(read_obj, "v 600000.001 7000000.123 -12.3456789012345\n");
    EXPECT_EQ(mesh.points[0], (MeshPoint{600000.001, 7000000.123, -12.3456789012345}));
    EXPECT_TRUE(mesh.triangles.IsEmpty());
}

TEST(ObjFile, ThatIsBrokenIsRefusedWithItsLine) {
    const std::string three = "v 0 0 0\nv 1 0 0\nv 0 1 0\n";
    struct Case {
        const char* name;
        std::string content;
        const char* expected;
    };
    const Case cases[] = {
        {"empty", "", "it has no points"},
        {"no points", "# none\nvn 0 0 1\n", "it has no points"},
        {"two coordinates", "v 1 2\n", "line 1: a vertex has less than three coordinates"},
        {"rubbish behind a number", "v 1 2 3.1+e2\n", "line 1: \"3.1+e2\" is no number"},
        {"rubbish behind a point", "v 1 2 3 x\n", "line 1: \"x\" is no number"},
        {"not a number", "\nv 1 2 nan\n", "line 2: \"nan\" is no number"},
        {"infinite", "v 1 -inf 3\n", "line 1: \"-inf\" is no number"},
        {"too large", "v 1 2 1e101\n", "line 1: a coordinate is not a finite number or is beyond"},
        {"weight of nothing", "v 1 2 3 1e-320\n", "line 1: a coordinate is not a finite number"},
        {"index 0", three + "f 0 1 2\n", "line 4: a face names vertex 0; they are counted from 1"},
        {"index beyond", three + "f 1 2 4\n", "line 4: a face names vertex 4; there are 3"},
        {"greatest index", three + "f 1 2 2147483648\n", "line 4: a face names vertex 2147483648"},
        {"endless index", three + "f 1 2 99999999999999999999\n",
         "line 4: \"99999999999999999999\" is no corner of a face"},
        {"backwards beyond", three + "f -1 -2 -4\n",
         "line 4: a face names vertex -4; there are 3 so far"},
        {"polygon of points that never come", three + "f 1 2 3 5\nv 1 1 0\n",
         "line 4: a face names vertex 5; there are 4"},
        {"a NUL in a comment", three + std::string("# a\0\n", 5), "line 4: it holds a NUL byte"},
        {"a NUL behind a point", std::string("v 0 0 0 #\0\n", 11), "line 1: it holds a NUL byte"},
        {"a NUL behind a face", three + std::string("f 1 2 3 #\0\n", 11),
         "line 4: it holds a NUL byte"},
        {"a NUL in a number", std::string("v 0 0 0\0 1\n", 11), "line 1: \"0\\x00\" is no number"},
        {"no word of OBJ", "a table\nof points\n\n# c\n", "it is no OBJ file: none of its lines"},
        {"texture index beyond", three + "vt 0 0\nf 1/1 2/2 3/1\n",
         "line 5: a face names texture vertex 2; there are 1"},
        {"normal index 0", three + "f 1//0 2//1 3//1\n",
         "line 4: a face names normal 0; they are counted from 1"},
        {"two corners", three + "f 1 2\n", "line 4: a face has 2 corners; three are the least"},
        {"no corners", three + "f # 1 2 3\n", "line 4: a face has 0 corners"},
        {"rubbish behind a corner", three + "f 1 2 3x\n", "line 4: \"3x\" is no corner of a face"},
        {"fraction", three + "f 1 2 3.0\n", "line 4: \"3.0\" is no corner of a face"},
        {"four indices", three + "f 1 2 3/1/1/1\n", "line 4: \"3/1/1/1\" is no corner of a face"},
        {"three slashes", three + "f 1 2 3///\n", "line 4: \"3///\" is no corner of a face"},
        {"UTF-16", std::string("\xFF\xFEv\0 \0", 6), "the text is UTF-16; save it as UTF-8"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        EXPECT_THAT(refusal_of(read_obj, row.content), HasSubstr(row.expected));
    }
    EXPECT_EQ(refusal_of(read_obj, content_of(sample("number_formats.obj"))),
              "line 11: \"3.1+e2\" is no number");
}

TEST(ObjFile, HasPolygonsInTheirOrderWhereverTheirPointsAre) {
    const std::string square = "v 0 0 0\nv 4 0 0\nv 4 4 0\nv 0 4 0\n";
    // An arrow, whose fan from its first corner would lie on itself.
    const std::string arrow = "v 0 0 1\nv 4 2 1\nv 0 4 1\nv 1 2 1\n";
    const std::string faces = "f 5 6 7 8\nf 1 2 3\nf 1 2 3 4\nf 8 5 6\nf 2 3 4 1\n";
    const MeshData behind = read_text(read_obj, square + arrow + faces);
    ASSERT_EQ(behind.triangles.Size(), 8U);
    for (const std::string& content : {faces + square + arrow, square + faces + arrow,
                                       square + "f 5 6 7 8\n" + arrow + faces.substr(10)}) {
        SCOPED_TRACE(content);
        const MeshData mesh = read_text(read_obj, content);
        ASSERT_EQ(mesh.triangles.Size(), behind.triangles.Size());
        for (std::size_t i = 0; i < mesh.triangles.Size(); ++i) {
            EXPECT_EQ(mesh.triangles[i], behind.triangles[i]) << i;
        }
        EXPECT_EQ(attributes_of(mesh, "source_faces"), "5");
    }
}

TEST(ObjFile, SaysWhatItPassedThatIsNotOfTheFormat) {
    const TemporaryFile words("");
    ::setenv("ZOL_DIAGNOSTICS", words.Path().c_str(), 1);
    read_text(read_obj, "v 0 0 0\ns off\nshape a\nl 1 1\nV 1 2 3\n");
    // A tie in the sixth line, a star of five tips, a square drawn twice.
    read_text(read_obj,
              "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nf 1 2 3 4\nf 1 3 2 4\n"
              "v 0 3 0\nv 3 1 0\nv 2 -2 0\nv -2 -2 0\nv -3 1 0\nf 5 7 9 6 8\n"
              "f 1 2 3 4 1 2 3 4\n");
    read_text(read_obj, "f 1 3 2 4\nv 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nf 1 3 2 4\n");
    ::unsetenv("ZOL_DIAGNOSTICS");
    const std::string said = content_of(words.Path());
    EXPECT_THAT(said, HasSubstr("none of OBJ: 2, the first \"shape\" in line 3"));
    EXPECT_THAT(said, HasSubstr("faces that cross themselves: 3, the first in line 6"));
    EXPECT_THAT(said, HasSubstr("faces that cross themselves: 2, the first in line 1"));
}

TEST(ObjFile, WithAFaceOfVeryManyCornersIsReadSoon) {
    // A saw blade, each second corner inwards.
    constexpr int kTeeth = 20000;
    std::string content;
    std::string face = "f";
    for (int i = 0; i < 2 * kTeeth; ++i) {
        const double angle = 3.14159265358979 * i / kTeeth;
        const double radius = i % 2 == 0 ? 1000 : 990;
        content += "v " + std::to_string(radius * std::cos(angle)) + " " +
                   std::to_string(radius * std::sin(angle)) + " 5\n";
        face += " " + std::to_string(i + 1);
    }
    const MeshData mesh = read_text(read_obj, content + face);
    EXPECT_EQ(mesh.triangles.Size(), 2U * kTeeth - 2);
    const double area = kTeeth * 1000.0 * 990.0 * std::sin(3.14159265358979 / kTeeth);
    EXPECT_NEAR(area_of(mesh), area, 1e-6 * area);
}

TEST(ObjFile, CutShortAnywhereDoesNoHarm) {
    for (const char* name : {"box.obj", "negative_indices.obj", "polygonfaces.obj",
                             "concave_polygon.obj", "cornell_box.obj", "number_formats.obj"}) {
        SCOPED_TRACE(name);
        EXPECT_GT(meshes_of_beginnings(read_obj, content_of(sample(name))), 0);
    }
}

}  // namespace
