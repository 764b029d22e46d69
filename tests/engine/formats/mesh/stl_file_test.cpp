// STL files in both forms.
#include "engine/formats/mesh/stl_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "engine/formats/mesh/mesh_file.h"
#include "tests/engine/formats/mesh/mesh_measures.h"

namespace {

using testing::HasSubstr;
using zol::engine::File;
using zol::engine::MeshData;
using zol::engine::MeshPoint;
using zol::engine::MeshTriangle;
using zol::engine::read_stl;
using namespace zol::testing_support;

MeshData read_by_content(const File& file) {
    return zol::engine::read_mesh(file.Path());
}

using Facet = std::array<std::array<float, 3>, 3>;

struct Word {
    std::uint16_t bits;
    int facets;
};

std::string binary(const std::vector<Facet>& facets, const std::string& header = "",
                   const std::vector<Word>& words = {}) {
    std::string bytes = header;
    bytes.resize(80, ' ');
    const auto add = [&](const auto& value) {
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    };
    std::vector<std::uint16_t> word_of;
    for (const Word& word : words) {
        word_of.insert(word_of.end(), std::size_t(word.facets), word.bits);
    }
    word_of.resize(facets.size());
    add(std::uint32_t(facets.size()));
    for (std::size_t i = 0; i < facets.size(); ++i) {
        add(std::array<float, 3>{});
        add(facets[i]);
        add(word_of[i]);
    }
    return bytes;
}

const Facet kFacet{{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}};
constexpr const char* kText =
    "solid one\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\n"
    "endloop\nendfacet\nendsolid one\n";

TEST(StlFile, OfOtherProgramsIsReadWhole) {
    struct Case {
        const char* name;
        std::size_t points;
        std::size_t triangles;
        const char* parts;
        const char* degenerate;
        double volume;
        const char* names;
    };
    const double any = std::numeric_limits<double>::quiet_NaN();
    const Case cases[] = {
        {"unit_cube.STL", 8, 12, "1", "0", 1, ""},
        {"gebco_coastal.stl", 1558, 3108, "1", "0", -1.64895e10, ""},
        {"featuretype.STL", 2010, 3476, "1", "0", any, ""},
        {"Spider_ascii.stl", 722, 1368, "1", "56", any, "NoName_1"},
        {"Spider_binary.stl", 722, 1368, "1", "56", any, ""},
        {"multibody.stl", 20, 32, "2", "0", any, "bodyB"},
        {"two_objects_mixed_case_names.stl", 16, 24, "2", "0", 2, "CubeExportedFromCAD"},
        {"triangle_with_two_solids.stl", 6, 2, "2", "0", any, "testTriangle_1"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const MeshData mesh = read_stl(File(sample(row.name)));
        EXPECT_EQ(mesh.points.Size(), row.points);
        EXPECT_EQ(mesh.triangles.Size(), row.triangles);
        EXPECT_EQ(attributes_of(mesh, "parts"), row.parts);
        EXPECT_EQ(attributes_of(mesh, "source_points"), std::to_string(3 * row.triangles));
        EXPECT_EQ(attributes_of(mesh, "degenerate_triangles"), row.degenerate);
        EXPECT_EQ(attributes_of(mesh, "name"), row.names);
        if (!std::isnan(row.volume)) {
            EXPECT_NEAR(volume_of(mesh), row.volume, 1e-5 * std::fabs(row.volume));
        }
    }
}

TEST(StlFile, MergesWhatIsEqualAndNothingElse) {
    const float next = std::nextafter(1.0F, 2.0F);
    const MeshData mesh = read_text(read_stl, binary({{{{-0.0F, 0, 5}, {1, 0, 0}, {0, 1, 0}}},
                                                      {{{0, -0.0F, 5}, {0, 1, 0}, {next, 0, 0}}},
                                                      {{{-1, 0, 0}, {1, 0, 0}, {0, 1, -0.0F}}}}));
    const std::vector<MeshPoint> points = {
        {0, 0, 5}, {1, 0, 0}, {0, 1, 0}, {double(next), 0, 0}, {-1, 0, 0}};
    ASSERT_EQ(mesh.points.Size(), points.size());
    for (std::size_t i = 0; i < points.size(); ++i) EXPECT_EQ(mesh.points[i], points[i]);
    EXPECT_FALSE(std::signbit(mesh.points[0][0]));
    EXPECT_EQ(mesh.triangles[1], (MeshTriangle{0, 2, 3}));
    EXPECT_EQ(mesh.triangles[2], (MeshTriangle{4, 1, 2}));
}

TEST(StlFile, KeepsTheOrderOfPointsWhateverTheirNumber) {
    // Facets that share no point at first, and then are there again, last first.
    std::vector<Facet> facets;
    for (int i = 0; i < 30000; ++i) {
        const auto x = float(i % 100);
        const auto y = float(i / 100);
        facets.push_back({{{x, y, 0}, {x, y, 1}, {x, y, 2}}});
    }
    for (std::size_t i = facets.size(); i-- > 0;) facets.push_back(facets[i]);
    const MeshData mesh = read_text(read_stl, binary(facets));
    ASSERT_EQ(mesh.points.Size(), 90000U);
    ASSERT_EQ(mesh.triangles.Size(), 60000U);
    for (std::int32_t i = 0; i < 30000; ++i) {
        ASSERT_EQ(mesh.points[std::size_t(3 * i + 1)],
                  (MeshPoint{double(i % 100), double(i / 100), 1}));
        const MeshTriangle expected{3 * i, 3 * i + 1, 3 * i + 2};
        ASSERT_EQ(mesh.triangles[std::size_t(i)], expected);
        ASSERT_EQ(mesh.triangles[std::size_t(59999 - i)], expected);
    }
}

TEST(StlFile, TextIsReadInEveryHand) {
    struct Case {
        const char* name;
        std::string text;
        std::size_t triangles;
        const char* solids;
    };
    const std::string facet =
        "facet normal 0 0 1 outer loop vertex 0 0 0 vertex 1 0 0 vertex 0 1 0 endloop endfacet\n";
    const Case cases[] = {
        {"one thing a line", kText, 1, ""},
        {"one facet a line", "solid\n" + facet + facet + "endsolid", 2, ""},
        {"capitals",
         "SOLID a\nFacet Normal 0 0 1 Outer Loop\rVERTEX 0 0 0 Vertex 1 0 0 vertex 0 "
         "1 0\r\nEndLoop ENDFACET\nENDSOLID a\n",
         1, ""},
        {"a normal of anything",
         "solid\nfacet normal nan -nan(ind) x\nouter loop\nvertex 0 0 0\n"
         "vertex 1 0 0\nvertex 0 1 0\nendloop\nendfacet\n",
         1, ""},
        {"several solids",
         "solid a b\n" + facet + "endsolid a b\nsolid\nendsolid\nsolid c\n" + facet + "endsolid c",
         2, "a b|c"},
        {"a mark in front", std::string("\xEF\xBB\xBF") + kText, 1, ""},
        {"numbers of all kinds",
         "solid\nfacet normal 0 0 1\nouter loop\nvertex +0 -0 .0e+001\n"
         "vertex 1E0 0. 0\nvertex 0 10e-1 0\nendloop\nendfacet\nendsolid",
         1, ""},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const MeshData mesh = read_text(read_stl, row.text);
        EXPECT_EQ(mesh.triangles.Size(), row.triangles);
        EXPECT_EQ(mesh.points.Size(), 3U);
        EXPECT_EQ(area_of(mesh), 0.5 * double(row.triangles));
        EXPECT_EQ(attributes_of(mesh, "solid"), row.solids);
    }
    const MeshData far =
        read_text(read_stl,
                  "solid\nfacet normal 0 0 1\nouter loop\nvertex 612345.123 7000000.123 1e-3\n"
                  "vertex 1 0 0\nvertex 0 1 0\nendloop\nendfacet\nendsolid");
    EXPECT_EQ(far.points[0], (MeshPoint{612345.123, 7000000.123, 1e-3}));
}

TEST(StlFile, IsBinaryByItsLengthWhateverItsHeader) {
    EXPECT_EQ(read_text(read_stl, binary({kFacet}, "solid facet vertex")).triangles.Size(), 1U);
    // Behind the last facet stands something else.
    EXPECT_EQ(read_text(read_stl, binary({kFacet, kFacet}, "solid") + "more").triangles.Size(), 2U);
    EXPECT_EQ(attributes_of(read_text(read_stl, binary({kFacet}, "of a survey")), "header"),
              "of a survey");
}

TEST(StlFile, IsRefusedWithThePlaceOfTheFault) {
    Facet bad = kFacet;
    bad[2][1] = std::numeric_limits<float>::infinity();
    Facet none = kFacet;
    none[0][0] = std::numeric_limits<float>::quiet_NaN();
    std::string lies = binary({kFacet});
    lies[80] = 2;
    std::string huge = binary({kFacet});
    std::memset(&huge[80], 0xFF, 4);
    struct Case {
        const char* name;
        std::string content;
        const char* reason;
    };
    const auto text = [](const std::string& inside) { return "solid\n" + inside; };
    const std::string begin = "facet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\n";
    const Case cases[] = {
        {"infinite", binary({kFacet, bad}), "facet 2 at byte 134: a coordinate is not a finite"},
        {"not a number", binary({none}), "facet 1 at byte 84"},
        {"a count too high", lies, "states 2 facets, which take 184 bytes, and has 134"},
        {"a count of four billion", huge, "states 4294967295 facets"},
        {"a text of another kind", std::string("facet normal 0 0 1\n") + kText,
         "a text that does not begin with \"solid\""},
        {"no text, too short", "sol", "too short"},
        {"two vertices", text(begin + "endloop\nendfacet\n"), "line 6: the facet has less than 3"},
        {"four vertices", text(begin + "vertex 0 1 0\nvertex 1 1 0\nendloop\nendfacet\n"),
         "line 7: the facet has more than 3"},
        {"two coordinates", text(begin + "vertex 0 1\nendloop\n"),
         "line 7: \"endloop\" is no number"},
        {"a word", text(begin + "vertex 0 1 x\n"), "line 6: \"x\" is no number"},
        {"nan", text(begin + "vertex 0 1 nan\n"), "line 6: \"nan\" is no number"},
        {"too large", text(begin + "vertex 0 1 1e101\n"), "beyond 1e100"},
        {"half a facet", text(begin), "line 5: the file ends inside a facet"},
        {"a facet outside", text("endsolid\nfacet normal 0 0 1\n"),
         "line 3: \"facet\" stands where"},
        {"solids in each other", text("solid b\n"), "line 2: a solid begins inside another"},
        {"anything else", text("triangle 1 2 3\n"), "line 2: \"triangle\" stands where a facet"},
        {"no loop", text("facet normal 0 0 1\nendfacet\n"), "line 3: the facet has no loop"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        EXPECT_THAT(refusal_of(read_stl, row.content), HasSubstr(row.reason));
    }
}

TEST(StlFile, TakesTheColourOfMostFacets) {
    const std::string magic = std::string("made COLOR=\x0A\x14\x1E\x80 by", 19);
    const std::uint16_t blue_low = 0x8000 | 31;  // own colour, when nothing is stated
    const std::uint16_t red_low = 31;            // own colour beside a stated one
    struct Case {
        const char* name;
        std::string header;
        std::vector<Word> words;
        const char* look;
    };
    const Case cases[] = {
        {"none", "", {}, "- - -"},
        {"blue", "", {{0, 1}, {blue_low, 3}}, "0 0 255 - -"},
        {"most have none", "", {{0, 3}, {blue_low, 1}}, "- - -"},
        {"the top bit is what counts", "", {{red_low, 4}}, "- - -"},
        {"most of two", "", {{blue_low, 1}, {0x8000 | 16 << 10, 3}}, "132 0 0 - -"},
        {"the first of equals", "", {{blue_low, 2}, {0x8000 | 31 << 10, 2}}, "0 0 255 - -"},
        {"one for all", magic, {}, "10 20 30 0.50 -"},
        {"one for most", magic, {{0x8000, 3}, {red_low, 1}}, "10 20 30 0.50 -"},
        {"own ones", magic, {{red_low, 3}, {0x8000, 1}}, "255 0 0 - -"},
        {"a header cut short", std::string(72, ' ') + "COLOR=", {}, "- - -"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const std::vector<Facet> facets(4, kFacet);
        EXPECT_EQ(look_of(read_text(read_stl, binary(facets, row.header, row.words))), row.look);
    }
}

TEST(StlFile, CutShortIsRefused) {
    EXPECT_EQ(meshes_of_beginnings(read_by_content, binary({kFacet, kFacet}, "made by")), 0);
    // Behind "endfacet" nothing is missed: with the line end, "endsolid", a blank and a name.
    EXPECT_EQ(meshes_of_beginnings(read_by_content, kText), 7);
}

}  // namespace
