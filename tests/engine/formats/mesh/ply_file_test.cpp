// PLY files in their three forms.
#include "engine/formats/mesh/ply_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "tests/engine/formats/mesh/mesh_measures.h"

namespace {

using testing::HasSubstr;
using zol::engine::File;
using zol::engine::MeshData;
using zol::engine::MeshPoint;
using zol::engine::MeshTriangle;
using zol::engine::read_ply;
using namespace zol::testing_support;

TEST(PlyFile, OfOtherProgramsIsReadWhole) {
    struct Case {
        const char* name;
        std::size_t points;
        std::size_t triangles;
        const char* faces;
        double volume;
        const char* look;
    };
    const Case cases[] = {
        {"cube.ply", 8, 12, "6", 1, "- - -"},
        {"cube_binary.ply", 8, 12, "12", 1, "- - -"},
        {"cube_binary_header_with_RN_newline.ply", 8, 12, "12", 1, "- - -"},
        {"cube_uv.ply", 24, 12, "6", 8, "- - -"},
        {"BoxTextured.ply", 24, 12, "12", 1, "- - -"},
        {"float-color.ply", 3, 1, "1", 0, "0 0 255 1.00 -"},
        {"fuze.ply", 502, 1000, "1000", 6.06689e-4, "255 255 255 1.00 fuze uv.jpg"},
        // Its header leaves out six numbers of each face, and what it says of their colour is
        // wrong.
        {"fuze_ascii.ply", 502, 1000, "1000", 6.06689e-4, "192 192 192 1.00 fuze uv.jpg"},
        {"points_ascii_with_lists.ply", 5, 0, "0", 0, "- - -"},
        {"reference.ply", 845, 1610, "1610", 0, "192 192 192 1.00 -"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const MeshData mesh = read_ply(File(sample(row.name)));
        EXPECT_EQ(mesh.points.Size(), row.points);
        EXPECT_EQ(mesh.triangles.Size(), row.triangles);
        EXPECT_EQ(attributes_of(mesh, "source_faces"), row.faces);
        if (row.volume > 0) {
            EXPECT_NEAR(volume_of(mesh), row.volume, 1e-5 * row.volume);
        }
        EXPECT_EQ(look_of(mesh), row.look);
    }
}

/// The numbers of a body in the form of the file.
class Body {
public:
    enum Form { kText, kLittle, kBig };
    explicit Body(Form form) : form_(form) {}

    template <class T>
    Body& operator<<(T value) {
        if (form_ == kText) {
            text_ += std::to_string(value) + ' ';
            return *this;
        }
        std::string bytes(reinterpret_cast<const char*>(&value), sizeof value);
        if (form_ == kBig) std::reverse(bytes.begin(), bytes.end());
        text_ += bytes;
        return *this;
    }
    const std::string& Text() const { return text_; }

private:
    Form form_;
    std::string text_;
};

std::string header(Body::Form form, const std::string& elements) {
    constexpr const char* kForms[] = {"ascii", "binary_little_endian", "binary_big_endian"};
    return std::string("ply\nformat ") + kForms[form] + " 1.0\n" + elements + "end_header\n";
}

using Byte = std::uint8_t;

// A square in the plane z = 12.5 as four points and one face, with all that may be around.
constexpr const char* kElements =
    "element face 1\n"
    "property float quality\n"
    "property list uchar short extra\n"
    "property list ushort int vertex_index\n"
    "property uchar flag\n"
    "element thing 2\n"
    "property list int double a\n"
    "property short b\n"
    "element empty 4000000000\n"
    "element vertex 4\n"
    "property double z\n"
    "property short confidence\n"
    "property uchar red\nproperty uchar green\nproperty uchar blue\n"
    "property float x\n"
    "property char y\n"
    "element edge 1\nproperty uint v1\nproperty uint v2\n";

std::string square(Body::Form form) {
    Body body(form);
    body << 0.5F << Byte{2} << std::int16_t{7} << std::int16_t{-8};
    body << std::uint16_t{4} << 0 << 1 << 2 << 3 << Byte{1};
    body << 1 << 2.5 << std::int16_t{3} << 0 << std::int16_t{-4};
    const std::vector<std::pair<float, std::int8_t>> corners = {{1, -1}, {3, -1}, {3, 1}, {1, 1}};
    for (const auto& [x, y] : corners) {
        body << 12.5 << static_cast<std::int16_t>(10 * x) << Byte{10} << Byte{20} << Byte{30} << x;
        if (form == Body::kText) {
            body << int{y};
        } else {
            body << y;
        }
    }
    body << std::uint32_t{0} << std::uint32_t{1};
    return header(form, kElements) + body.Text();
}

TEST(PlyFile, IsTheSameInEveryForm) {
    for (const Body::Form form : {Body::kText, Body::kLittle, Body::kBig}) {
        SCOPED_TRACE(form);
        const MeshData mesh = read_text(read_ply, square(form));
        ASSERT_EQ(mesh.points.Size(), 4U);
        EXPECT_EQ(mesh.points[2], (MeshPoint{3, 1, 12.5}));
        ASSERT_EQ(mesh.triangles.Size(), 2U);
        EXPECT_EQ(area_of(mesh), 4.0);
        EXPECT_EQ(look_of(mesh), "10 20 30 - -");
        EXPECT_EQ(attributes_of(mesh, "vertex_confidence"), "10 to 30");
    }
    for (const Body::Form form : {Body::kLittle, Body::kBig}) {
        EXPECT_EQ(meshes_of_beginnings(read_ply, square(form)), 0);
    }
}

constexpr const char* kPoints =
    "element vertex 4\nproperty float x\nproperty float y\nproperty float z\n";
constexpr const char* kFourPoints = "0 0 0 1 0 0 1 1 0 0 1 0\n";

std::string text(const std::string& elements, const std::string& body) {
    return header(Body::kText, elements) + body;
}

TEST(PlyFile, IsReadInEveryVariant) {
    const std::string with_faces =
        std::string(kPoints) + "element face 2\nproperty list uchar int vertex_indices\n";
    const std::string strips =
        std::string(kPoints) + "element tristrips 1\nproperty list int int vertex_indices\n";
    std::string returns = text(with_faces, "0 0 0\n1 0 0\n1 1 0\n0 1 0\n3 0 1 2\n3 0 2 3\n");
    std::replace(returns.begin(), returns.end(), '\n', '\r');
    // A body whose first byte looks like the end of a line.
    Body body(Body::kLittle);
    body << Byte{10} << Byte{0} << Byte{0} << Byte{11} << Byte{0} << Byte{0} << Byte{10} << Byte{1}
         << Byte{0} << Byte{11} << Byte{1} << Byte{0} << Byte{3} << Byte{0} << Byte{1} << Byte{3}
         << Byte{3} << Byte{0} << Byte{3} << Byte{2};
    const std::string bytes =
        header(Body::kLittle,
               "element vertex 4\nproperty uchar x\nproperty uchar y\nproperty uchar z\n"
               "element face 2\nproperty list uchar uchar vertex_indices\n");
    std::string bytes_and_returns = bytes;
    std::replace(bytes_and_returns.begin(), bytes_and_returns.end(), '\n', '\r');
    struct Case {
        const char* name;
        std::string content;
        std::size_t triangles;
        const char* look;
    };
    const Case cases[] = {
        {"rows that wrap", text(with_faces, "0\n0 0 1 0\n0 1 1 0 0 1 0 3\n0 1 2 3 0 2 3"), 2,
         "- - -"},
        {"carriage returns alone", returns, 2, "- - -"},
        {"a body like a line end", bytes + body.Text(), 2, "- - -"},
        {"the same behind a return", bytes_and_returns + body.Text(), 2, "- - -"},
        {"no faces", text(std::string(kPoints) + "element face 0\nproperty uchar a\n", kFourPoints),
         0, "- - -"},
        {"strips", text(strips, std::string(kFourPoints) + "4 0 1 3 2"), 2, "- - -"},
        {"two strips in a list", text(strips, std::string(kFourPoints) + "8 0 1 2 -1 0 2 3 -1"), 2,
         "- - -"},
        {"colours of faces go before those of points",
         text("element vertex 4\nproperty float x\nproperty float y\nproperty float z\n"
              "property float red\nproperty float green\nproperty float blue\n"
              "element face 3\nproperty list uchar int vertex_indices\n"
              "property uchar diffuse_red\nproperty uchar diffuse_green\n"
              "property uchar diffuse_blue\nproperty uchar alpha\n",
              "0 0 0 1 1 1 1 0 0 1 1 1 1 1 0 1 1 1 0 1 0 1 1 1\n"
              "3 0 1 2 9 9 9 255 3 0 2 3 1 2 3 51 3 0 0 0 1 2 3 51"),
         3, "1 2 3 0.20 -"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const MeshData mesh = read_text(read_ply, row.content);
        EXPECT_EQ(mesh.points.Size(), 4U);
        ASSERT_EQ(mesh.triangles.Size(), row.triangles);
        if (row.triangles > 0) {
            EXPECT_EQ(area_of(mesh), 1.0);
        }
        // All of them look the same way.
        for (std::size_t t = 0; t < row.triangles; ++t) EXPECT_GE(cross_of(mesh, t)[2], 0.0);
        EXPECT_EQ(look_of(mesh), row.look);
    }
}

TEST(PlyFile, KeepsDoublesOfTextAndCommentsAsTheyAre) {
    const MeshData mesh = read_text(
        read_ply, text("comment surveyed 2001/12/31\ncomment TextureFile a/b c.png\n"
                       "element vertex 1\nproperty float x\nproperty float y\nproperty float z\n",
                       "612345.123 7000000.123 -0.1"));
    EXPECT_EQ(mesh.points[0], (MeshPoint{612345.123, 7000000.123, -0.1}));
    EXPECT_EQ(attributes_of(mesh, "comment"), "surveyed 2001/12/31");
    EXPECT_EQ(look_of(mesh), "- - b c.png");
    // A texture that lies elsewhere is no reason not to open.
    for (const char* name : {"/etc/passwd", "../secret.png", "c:\\x.png"}) {
        EXPECT_EQ(look_of(read_text(
                      read_ply, text(std::string("comment TextureFile ") + name + "\n" + kPoints,
                                     kFourPoints))),
                  "- - -");
    }
}

TEST(PlyFile, IsRefusedWithThePlaceOfTheFault) {
    const std::string faces =
        std::string(kPoints) + "element face 1\nproperty list uchar int vertex_indices\n";
    const std::string points = kFourPoints;
    Body billion(Body::kLittle);
    for (int i = 0; i < 12; ++i) billion << float(i);
    billion << 1000000000 << 0 << 1 << 2;
    Body nan(Body::kBig);
    nan << 0.0F << std::numeric_limits<float>::quiet_NaN() << 0.0F;
    std::string many_elements = kPoints;
    std::string many_properties = "element vertex 1\n";
    for (int i = 0; i < 1000; ++i) {
        many_elements += "element e" + std::to_string(i) + " 0\n";
        many_properties += "property int p" + std::to_string(i) + "\n";
    }
    many_properties += "property int x\n";
    struct Case {
        const char* name;
        std::string content;
        const char* reason;
    };
    const Case cases[] = {
        {"an index too high", text(faces, points + "3 0 1 4"),
         "line 11: a face names point 4 of 4"},
        {"an index below 0", text(faces, points + "3 0 -1 2"), "a face names point -1 of 4"},
        {"half an index", text(faces, points + "3 0 1 1.5"), "a face names point 1.5 of 4"},
        {"a face of two corners", text(faces, points + "2 0 1"), "face 0: it has less than three"},
        {"a list below 0", text(faces, points + "-3 0 1 2"), "a list has no count"},
        {"a list of a billion", text(faces, points + "1000000000 0 1 2"),
         "a list of 1000000000 numbers does not fit"},
        {"the same in bytes",
         header(Body::kLittle,
                std::string(kPoints) + "element face 1\nproperty list int int vertex_indices\n") +
             billion.Text(),
         "a list of 1000000000 numbers does not fit the file, at byte"},
        {"a billion points",
         text("element vertex 1000000000\nproperty float x\nproperty float y\n"
              "property float z\n",
              "0 0 0"),
         "states 1000000000 of element \"vertex\", more than the file can hold"},
        {"points beyond 64 bits", text("element vertex 99999999999999999999\n", ""),
         "line 3: \"99999999999999999999\" is no number of elements"},
        {"a point missing", text(kPoints, "0 0 0 1 0 0 1 1 0 0 1.123"), "the file ends where"},
        {"nan", text(kPoints, "0 0 0 1 0 0 1 1 0 0 nan 0"), "\"nan\" is no number"},
        {"nan in bytes",
         header(Body::kBig,
                "element vertex 1\nproperty float x\nproperty float y\n"
                "property float z\n") +
             nan.Text(),
         "vertex 0: a coordinate is not a finite number"},
        {"no z", text("element vertex 1\nproperty float x\nproperty float y\n", "0 0"),
         "its vertices have no property z"},
        {"a list for z",
         text("element vertex 1\nproperty float x\nproperty float y\n"
              "property list uchar int z\n",
              "0 0 1 0"),
         "its vertices have no property z"},
        {"more than counted", text(kPoints, points + "0 1 2"),
         "line 9: there is more than the header counts"},
        {"more than counted, in bytes", square(Body::kLittle) + '\n',
         "there is more than the header counts, at byte"},
        {"too many elements", text(many_elements, kFourPoints),
         "line 1006: there are too many elements"},
        {"too many properties", text(many_properties, ""),
         "line 1004: the element has too many properties"},
        {"no vertices", text("element face 0\nproperty list uchar int vertex_indices\n", ""),
         "no element \"vertex\""},
        {"faces without points",
         text(std::string(kPoints) + "element face 1\nproperty int a\n", points + "1"),
         "its element \"face\" has no list \"vertex_indices\""},
        {"an element twice", text(std::string(kPoints) + kPoints, ""),
         "line 7: element \"vertex\" is there twice"},
        {"a count of reals", text("element face 1\nproperty list float int a\n", ""),
         "line 4: the type of a count"},
        {"no type", text("element face 1\nproperty long a\n", ""), "line 4: \"long\" is no type"},
        {"another version", "ply\nformat ascii 1.1\nend_header\n",
         "line 2: the version is \"1.1\""},
        {"another format", "ply\nformat morse 1.0\nend_header\n", "line 2: \"morse\" is no format"},
        {"no format", "ply\nelement vertex 0\nend_header\n", "the header states no format"},
        {"no end", "ply\nformat ascii 1.0\nelement vertex 1\n", "the file ends inside the header"},
        {"another word", "ply\nformat ascii 1.0\nvertex 1\n", "line 3: \"vertex\" is no word"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        EXPECT_THAT(refusal_of(read_ply, row.content), HasSubstr(row.reason));
    }
}

}  // namespace
