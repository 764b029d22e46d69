// OFF files in text and binary.
#include "engine/formats/mesh/off_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <string>

#include "tests/engine/formats/mesh/mesh_measures.h"

namespace {

using testing::HasSubstr;
using zol::engine::File;
using zol::engine::MeshData;
using zol::engine::MeshPoint;
using zol::engine::MeshTriangle;
using zol::engine::read_off;
using namespace zol::testing_support;

TEST(OffFile, OfOtherProgramsIsReadWhole) {
    struct Case {
        const char* name;
        std::size_t points;
        std::size_t triangles;
        const char* faces;
        double area;
        double volume;
        const char* look;
    };
    // The cube of the other two has edges of 1.632993 times the square root of 2.
    const Case cases[] = {
        {"Cube.off", 8, 12, "6", 6, 1, "- - -"},
        {"ballA.off", 1900, 3796, "3796", 605.909, 1401.11, "- - -"},
        {"comments.off", 8, 12, "6", 32, 12.3168, "255 0 0 0.74 -"},
        {"whitespace.off", 8, 12, "6", 32, 12.3168, "255 0 0 0.74 -"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const MeshData mesh = read_off(File(sample(row.name)));
        EXPECT_EQ(mesh.points.Size(), row.points);
        EXPECT_EQ(mesh.triangles.Size(), row.triangles);
        EXPECT_EQ(attributes_of(mesh, "source_faces"), row.faces);
        EXPECT_NEAR(area_of(mesh), row.area, 1e-5 * row.area);
        EXPECT_NEAR(volume_of(mesh), row.volume, 1e-5 * row.volume);
        EXPECT_EQ(look_of(mesh), row.look);
    }
}

std::string big_endian(std::uint32_t bits) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(bits >> shift & 255);
    return bytes;
}
std::string word(std::int32_t whole) {
    return big_endian(static_cast<std::uint32_t>(whole));
}
std::string word(float real) {
    return big_endian(std::bit_cast<std::uint32_t>(real));
}
template <class... Numbers>
std::string words(Numbers... numbers) {
    return (word(numbers) + ...);
}

const std::string& binary() {
    static const std::string whole = "OFF BINARY\n" + words(3, 1, 0) +
                                     words(1.f, 2.f, 3.f, 4.f, 5.f, 6.f, 7.f, 8.f, 10.f) +
                                     words(3, 0, 1, 2, 4) + words(1.f, 0.5f, 0.f, 0.25f);
    return whole;
}

TEST(OffFile, IsReadInEveryVariant) {
    struct Case {
        const char* name;
        std::string content;
        const char* look;
    };
    // All are one triangle.
    const Case cases[] = {
        {"plain", "OFF\n3 1 3\n1 2 3\n4 5 6\n7 8 10\n3 0 1 2\n", "- - -"},
        {"CR LF, no last line end", "OFF\r\n3 1 3\r\n1 2 3\r\n4 5 6\r\n7 8 10\r\n3 0 1 2", "- - -"},
        {"no first word", "3 1 0\n1 2 3\n4 5 6\n7 8 10\n3 0 1 2\n", "- - -"},
        {"glued", "OFF3 1 0\n1 2 3\n4 5 6\n7 8 10\n3 0 1 2\n", "- - -"},
        {"counts on lines", "OFF\n3\n1\n0\n1 2 3\n4 5 6\n7 8 10\n3 0 1 2\n", "- - -"},
        {"comments", "# a\nOFF # b\n#c\n3 1 0 # d\n\n1 2 3 # e\n4 5 6\n# f\n7 8 10\n3 0 1 2 # 9\n#",
         "- - -"},
        {"vertices as they like", "OFF\n3 1 0\n1 2 3 4 5\n6 7\n8 10\n3 0 1 2\n", "- - -"},
        {"two vertices a line", "OFF\n3 1 0\n1 2 3 4 5 6\n7 8 10\n3 0 1 2\n", "- - -"},
        {"vertices as they like behind one a line", "OFF\n3 1 0\n1 2 3\n4 5 6 7 8 10\n3 0 1 2\n",
         "- - -"},
        {"colours without C", "OFF\n3 1 0\n1 2 3 9 9 9\n4 5 6 9 9 9 9\n7 8 10\n3 0 1 2\n", "- - -"},
        {"colours", "COFF\n3 1 0\n1 2 3 0 0 0 1\n4 5 6 0 0 0 1\n7 8 10 0 0 0 1\n3 0 1 2\n",
         "- - -"},
        {"normals", "NOFF\n3 1 0\n1 2 3 0 0 1\n4 5 6 0 0 1\n7 8 10 0 0 1\n3 0 1 2\n", "- - -"},
        {"all",
         "STCN4OFF\n3 1 0\n2 4 6 2 0 0 1 1 1 1 1 .5 .5\n4 5 6 1 0 0 1 1 1 1 1 .5 .5\n"
         "7 8 10 1 0 0 1 1 1 1 1 .5 .5\n3 0 1 2\n",
         "- - -"},
        {"weights", "4OFF\n3 1 0\n2 4 6 2\n-4 -5 -6 -1\n7 8 10 1\n3 0 1 2\n", "- - -"},
        {"dimensions", "nOFF 3\n3 1 0\n1 2 3\n4 5 6\n7 8 10\n3 0 1 2\n", "- - -"},
        {"colour in floats", "OFF\n3 1 0\n1 2 3\n4 5 6\n7 8 10\n3 0 1 2 1.0 0 0.5\n",
         "255 0 128 - -"},
        {"colour in bytes", "OFF\n3 1 0\n1 2 3\n4 5 6\n7 8 10\n3 0 1 2 1 0 128 255\n",
         "1 0 128 1.00 -"},
        {"entry of a map", "OFF\n3 1 0\n1 2 3\n4 5 6\n7 8 10\n3 0 1 2 7\n", "- - -"},
        {"binary", binary(), "255 128 0 0.25 -"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const MeshData mesh = read_text(read_off, row.content);
        ASSERT_EQ(mesh.points.Size(), 3U);
        EXPECT_EQ(mesh.points[0], (MeshPoint{1, 2, 3}));
        EXPECT_EQ(mesh.points[1], (MeshPoint{4, 5, 6}));
        EXPECT_EQ(mesh.points[2], (MeshPoint{7, 8, 10}));
        ASSERT_EQ(mesh.triangles.Size(), 1U);
        EXPECT_EQ(mesh.triangles[0], (MeshTriangle{0, 1, 2}));
        EXPECT_EQ(look_of(mesh), row.look);
    }
}

TEST(OffFile, ThatIsBrokenIsRefusedWithItsPlace) {
    const std::string three = "OFF\n3 1 0\n1 2 3\n4 5 6\n7 8 10\n";
    struct Case {
        const char* name;
        std::string content;
        const char* expected;
    };
    const Case cases[] = {
        {"empty", "", "it is empty"},
        {"another word", "OFFSET 3\n", "line 1: \"OFFSET\" is no number of the kind"},
        {"no counts", "OFF\n1.5 2 3\n", "line 2: \"1.5\" is no number of the kind"},
        {"two counts", "OFF\n3 1\n1 2 3\n", "line 2: the counts of vertices, faces and edges"},
        {"negative", "OFF\n-3 1 0\n", "the header states a count below 0"},
        {"no vertices", "OFF\n0 0 0\n", "it has no points"},
        {"counts of millions", "OFF\n900000000 1 0\n1 2 3\n", "more than the file has room for"},
        {"counts beyond 64 bits", "OFF\n99999999999999999999 1 0\n", "is no number of the kind"},
        {"counts whose product is small", "OFF\n3074457345618258603 1 0\n", "more than the file"},
        {"five dimensions", "nOFF 5\n3 1 0\n", "line 1: its points are not of three dimensions"},
        {"a vertex short", "OFF\n3 0 0\n1.000 2.000 3.000\n4 5 6\n",
         "line 4: the file ends before"},
        {"a face short", "OFF\n3 2 0\n1.000 2.000 3.000\n4 5 6\n7 8 9\n3 0 1 2\n",
         "line 6: the file ends before all that its header states"},
        {"a vertex too many", three + "3 0 1 2\n3 0 1 2\n",
         "line 7: there is more than the header"},
        {"rubbish behind a number", "OFF\n3 1 0\n1 2 3x\n4 5 6\n7 8 10\n3 0 1 2\n",
         "line 3: \"3x\" is no number"},
        {"not a number", "OFF\n3 1 0\n1 2 nan\n4 5 6\n7 8 10\n3 0 1 2\n", "line 3: \"nan\" is no"},
        {"weight 0", "4OFF\n3 1 0\n1 2 3 0\n4 5 6 1\n7 8 10 1\n3 0 1 2\n",
         "line 3: a coordinate is not a finite number"},
        {"colour of five", "OFF\n3 1 0\n1 2 3\n4 5 6 1 1\n7 8 10\n3 0 1 2\n",
         "line 4: a vertex has 2 numbers too many"},
        {"index beyond", three + "3 0 1 3\n",
         "line 6: a face names vertex 3; there are 3, counted"},
        {"negative index", three + "3 0 1 -1\n", "line 6: a face names vertex -1"},
        {"two corners", three + "2 0 1 9 9 9\n", "line 6: a face has 2 corners"},
        {"a corner short", three + "4 0 1 2\n", "line 6: a face of 4 corners has 3 on its line"},
        {"corners without end", three + "4000000000000000000 0 1 2\n", "has 3 on its line"},
        {"colour of two", three + "3 0 1 2 1 1\n", "line 6: a face has a colour of 2 numbers"},
        {"binary with more", binary() + '\0', "there is more behind the last face"},
        {"binary index", "OFF BINARY\n" + words(1, 1, 0, 0, 0, 0, 3, 0, 0, 1, 0), "names vertex 1"},
        {"binary counts", "OFF BINARY\n" + words(2147483647, 2147483647, 0, 0, 0, 0), "more than"},
        {"binary corners", "OFF BINARY\n" + words(1, 1, 0, 0, 0, 0, 2147483647, 0, 0, 0, 0, 0),
         "the file ends at byte 59"},
        {"binary not a number", "OFF BINARY\n" + words(1, 0, 0, 0x7FC00000, 0, 0), "not a finite"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        EXPECT_THAT(refusal_of(read_off, row.content), HasSubstr(row.expected));
    }
}

TEST(OffFile, CutShortIsRefused) {
    EXPECT_EQ(meshes_of_beginnings(read_off, binary()), 0);
    // A text may lose the end of its last number, or what stands behind that.
    EXPECT_EQ(meshes_of_beginnings(read_off, content_of(sample("Cube.off"))), 1);
    for (const char* name : {"comments.off", "whitespace.off"}) {
        EXPECT_LT(meshes_of_beginnings(read_off, content_of(sample(name))), 30) << name;
    }
}

}  // namespace
