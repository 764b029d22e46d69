// Drawings of other programs, against figures that another reader found.
#include "engine/formats/dxf/dxf_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <string>

#include "tests/engine/formats/dxf/drawings.h"

namespace {

using testing::ElementsAre;
using zol::engine::Drawing;
using zol::engine::DrawingField;
using zol::engine::DrawingKind;
using zol::engine::DrawingPoint;
using zol::engine::DrawingTraits;
using zol::engine::File;
using zol::engine::read_dxf;
using zol::engine::Vector3;
using namespace zol::testing_support;

Drawing sample(const std::string& name) {
    return read_dxf(File(sample_drawing(name)));
}

// "LINE 3, POINT 1": what stands in the drawing by the names of the file.
std::string census(const Drawing& drawing) {
    std::map<std::string_view, int> counts;
    for (std::size_t i = 0; i < drawing.ObjectCount(); ++i) ++counts[drawing.Traits(i).primitive];
    std::string text;
    for (const auto& [name, count] : counts) {
        text += (text.empty() ? "" : ", ") + std::string(name) + ' ' + std::to_string(count);
    }
    return text;
}

std::string skipped(const Drawing& drawing) {
    std::string text;
    for (const auto& skip : drawing.Skipped()) {
        text += (text.empty() ? "" : ", ") + skip.what + ' ' + std::to_string(skip.count);
    }
    return text;
}

// "CREST 3, TOE 3": the layers with their objects.
std::string layers(const Drawing& drawing) {
    std::string text;
    for (std::size_t i = 0; i < drawing.Layers().size(); ++i) {
        text += (text.empty() ? "" : ", ") + drawing.Layers()[i].name + ' ' +
                std::to_string(drawing.ObjectsOf(i).size());
    }
    return text;
}

TEST(DxfFile, OfOtherProgramsIsReadWhole) {
    struct Case {
        const char* name;
        const char* census;
        const char* skipped;
    };
    const Case cases[] = {
        {"dem_contours_gdal.dxf", "LWPOLYLINE 15", ""},
        {"LWPOLYLINE-OCS.dxf", "LWPOLYLINE 7, POLYLINE 6", ""},
        {"LM2.dxf", "CIRCLE 36, DIMENSION 22, LWPOLYLINE 4, POINT 31, TEXT 5", ""},
        {"Leica_Disto_S910.dxf", "LINE 10, POINT 11, TEXT 11", ""},
        {"POLI-ALL210_12.DXF", "3DFACE 1, POLYLINE 30", ""},
        {"polylines.dxf", "POLYLINE 12", ""},
        {"entities_only.dxf", "POINT 2", ""},
        {"groups.dxf", "LINE 13", ""},
        {"extendeddata.dxf", "LINE 8", "VIEWPORT 1"},
        {"small_r13.dxf", "POLYLINE 16", ""},
        {"utf-8.dxf", "POINT 1", ""},
        {"bin_dxf_r12.dxf", "LINE 3", ""},
        {"bin_dxf_r2000.dxf", "TEXT 1", ""},
        {"transparency.dxf", "LWPOLYLINE 1", ""},
        {"text_alignments.dxf", "CIRCLE 32, LINE 10, TEXT 16", ""},
        {"mtext-ocs-reduced.dxf", "MTEXT 3, TEXT 3", ""},
        {"ocs2wcs1.dxf",
         "3DFACE 4, ARC 4, CIRCLE 4, ELLIPSE 4, LINE 4, LWPOLYLINE 4, POINT 4, POLYLINE 4, "
         "SOLID 4, SPLINE 8, TEXT 4",
         "HATCH 4, VIEWPORT 2"},
        {"3d.dxf", "CIRCLE 1", "3DSOLID 1, POLYLINE (a mesh) 1"},
        {"text_negative_extrusion.dxf", "ATTRIB 4, LINE 47, LWPOLYLINE 78, MTEXT 30, TEXT 62",
         "ATTDEF 4, VIEWPORT 2"},
        {"leader-mleader.dxf", "LEADER 7, MTEXT 2, MULTILEADER 17",
         "MULTILEADER (whose values make no shape) 1"},
        {"uncommon.dxf",
         "ARC 1, ARC_DIMENSION 1, ATTRIB 1, CIRCLE 1, DIMENSION 13, LARGE_RADIAL_DIMENSION 2, "
         "LINE 19, LWPOLYLINE 7, MTEXT 19, MULTILEADER 4, POINT 6, SOLID 1, SPLINE 1",
         "3DSOLID 1, MESH 1, POLYLINE (a mesh) 2, RAY 3, VIEWPORT 2, XLINE 2"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const Drawing drawing = sample(row.name);
        EXPECT_EQ(census(drawing), row.census);
        EXPECT_EQ(skipped(drawing), row.skipped);
    }
}

TEST(DxfFile, PlacesPointsWhereTheyAre) {
    struct Case {
        const char* name;
        std::size_t points;
        Vector3 least;
        Vector3 most;
        double tolerance;
    };
    const Case cases[] = {
        {"dem_contours_gdal.dxf",
         919,
         {8453323.83, 4676723.14, 1600},
         {8472891.71, 4696291.02, 2800},
         0.005},
        {"LWPOLYLINE-OCS.dxf",
         229,
         {597867.678, 3139150.565, 0},
         {611415.460, 3153107.770, 1807.3731},
         0.001},
        {"entities_only.dxf", 2, {672500, 242000, 539.986}, {672750, 242000, 558.974}, 0},
        {"polylines.dxf", 316, {0, -0.982264665841, 0}, {442.673942745, 60, 0}, 1e-6},
        {"bin_dxf_r12.dxf", 6, {335.7176, 304.2704, 0}, {595.8781, 439.7706, 0}, 1e-4},
        // The arcs reach beyond the vertices: below by less than a chord keeps from its arc.
        {"closed_polyline_with_bulge.dxf",
         96,
         {40585252.1698, 3433885.8979, 0},
         {40585367.6637, 3434017.6868, 0},
         0.03},
        {"utf-8.dxf", 1, {1, 2, 0}, {1, 2, 0}, 0},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const Drawing drawing = sample(row.name);
        Vector3 least = {1e300, 1e300, 1e300};
        Vector3 most = {-1e300, -1e300, -1e300};
        std::size_t points = 0;
        for (std::size_t i = 0; i < drawing.ObjectCount(); ++i) {
            for (const DrawingPoint& point : drawing.Polyline(i).points) {
                ++points;
                for (std::size_t k = 0; k < 3; ++k) {
                    least[k] = std::min(least[k], point.place[k]);
                    most[k] = std::max(most[k], point.place[k]);
                }
            }
        }
        EXPECT_EQ(points, row.points);
        for (std::size_t k = 0; k < 3; ++k) {
            EXPECT_NEAR(least[k], row.least[k], row.tolerance);
            EXPECT_NEAR(most[k], row.most[k], row.tolerance);
        }
    }
}

TEST(DxfFile, OfAllReleasesTellsTheSameDesign) {
    const char* const newer =
        "ARC_DIMENSION 1, ATTRIB 1, CIRCLE 1, DIMENSION 7, LEADER 1, LINE 4, LWPOLYLINE 2, "
        "MTEXT 2, POINT 1, POLYLINE 7, TEXT 3";
    const char* const older =
        "ATTRIB 1, CIRCLE 1, DIMENSION 7, LINE 4, POINT 1, POLYLINE 7, TEXT 3";
    struct Case {
        const char* name;
        const char* census;
        const char* layers;
    };
    const Case cases[] = {
        {"made_mine_design_r2010.dxf", newer, "RAMP 3, ANNOT 13"},
        {"made_mine_design_r2010_binary.dxf", newer, "RAMP 3, ANNOT 13"},
        {"made_mine_design_r2000_cp1252.dxf", newer, "RAMP 3, ANNOT 13"},
        {"made_mine_design_r12.dxf", older, "RAMP 1, ANNOT 9"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const Drawing drawing = sample(row.name);
        EXPECT_EQ(census(drawing), row.census);
        EXPECT_EQ(layers(drawing), std::string("0 0, Defpoints 0, PIT_CREST 3, PIT_TOE 3, ") +
                                       row.layers +
                                       ", SURVEY PTS 5, B\xC3\xB6schung 1, $HIDDEN 1, EMPTY_LAYER "
                                       "0, NOT_IN_TABLE 1");
        EXPECT_EQ(drawing.FindLayer("pit_TOE"), 3U);
        EXPECT_FALSE(drawing.FindLayer("PIT"));
        // The ramp: four vertices, of which the first and last are known.
        const auto ramp = drawing.Polyline(6);
        ASSERT_EQ(ramp.points.size(), 4U);
        EXPECT_FALSE(ramp.is_closed);
        EXPECT_EQ(ramp.points[0].place, (Vector3{500200, 7000000, 100}));
        EXPECT_EQ(ramp.points[3].place, (Vector3{500000, 7000150, 80}));
        const auto crest = drawing.Polyline(0);
        EXPECT_EQ(crest.points.size(), 12U);
        EXPECT_TRUE(crest.is_closed);
        const DrawingTraits traits = drawing.Traits(0);
        EXPECT_EQ(traits.name, "bench_0_PIT_CREST");
        EXPECT_EQ(traits.group, "phase1");
        EXPECT_EQ(traits.feature, "CREST");
        EXPECT_EQ(traits.description, "bench at 100");
        EXPECT_EQ(traits.value, 100);
        EXPECT_EQ(traits.colour, 1);
        EXPECT_THAT(drawing.Fields(0), ElementsAre(testing::FieldsAre("MINEDATA.5", "100"),
                                                   testing::FieldsAre("MINEDATA.6", "0")));
    }
}

TEST(DxfFile, TellsCurvesTextsAndInsertionsOfADesign) {
    const Drawing drawing = sample("made_mine_design_r2010.dxf");
    EXPECT_THAT(drawing.Fields(6), ElementsAre(testing::FieldsAre("MINE_META.1", "RAMP_A"),
                                               testing::FieldsAre("MINE_META.40", "12.5"),
                                               testing::FieldsAre("MINE_META.90", "7")));
    EXPECT_EQ(drawing.Traits(6).colour, 30);
    const auto bulged = drawing.Polyline(7);
    EXPECT_TRUE(bulged.is_closed);
    EXPECT_TRUE(bulged.is_curved);
    std::vector<double> bulges;
    for (const DrawingPoint& point : bulged.points) {
        EXPECT_EQ(point.place[2], 75);
        if (point.mark == zol::engine::PointMark::None) bulges.push_back(point.bulge);
    }
    EXPECT_THAT(bulges, ElementsAre(0, 1, 0, 0.5));
    EXPECT_EQ(drawing.Traits(7).true_colour, 0x336699U);
    const auto turned = drawing.Polyline(8);
    ASSERT_EQ(turned.points.size(), 3U);
    EXPECT_EQ(turned.points[0].place, (Vector3{-1, 2, -10}));
    EXPECT_EQ(turned.points[2].place, (Vector3{-5, 6, -10}));
    // The ramp's layer has a true colour, which an object by layer takes.
    EXPECT_EQ(drawing.Traits(8).true_colour, 0xC86432U);

    EXPECT_EQ(lines_of(drawing, 11), "Crest RL 100");
    EXPECT_EQ(drawing.Text(11).rotation, 30);
    EXPECT_EQ(lines_of(drawing, 12), "Centred \xC2\xB0\xC2\xB1");
    EXPECT_EQ(drawing.Text(12).origin, (Vector3{500000, 7000000, 70}));
    EXPECT_EQ(lines_of(drawing, 13), "Neigung 35\xC2\xB0");
    EXPECT_EQ(lines_of(drawing, 14), "Line one|Line two bold|3/4: 3/4 m\xC2\xA0long");
    EXPECT_EQ(drawing.Text(14).rotation, 15);
    EXPECT_EQ(drawing.Text(15).normal, (Vector3{0, -1, 0}));

    // A circle of 1 and a line in a block of base point 1,1, twice as large and turned.
    const DrawingTraits circle = drawing.Traits(25);
    EXPECT_EQ(circle.primitive, "CIRCLE");
    EXPECT_EQ(circle.colour, 4);
    EXPECT_EQ(circle.feature, "COLLAR");
    EXPECT_EQ(drawing.Layers()[circle.layer].name, "SURVEY PTS");
    EXPECT_EQ(lines_of(drawing, 27), "DH-001");
}

TEST(DxfFile, TellsColoursOfBlocksByTheirInsertion) {
    const Drawing drawing = sample("colors.dxf");
    ASSERT_GT(drawing.ObjectCount(), 1U);
    EXPECT_EQ(drawing.Traits(0).colour, 170);
    EXPECT_EQ(drawing.Traits(1).true_colour, 15886114U);
    EXPECT_EQ(drawing.Traits(1).colour, 30);
    EXPECT_EQ(sample("transparency.dxf").Traits(0).true_colour, 16760504U);
}

TEST(DxfFile, ListsFrozenAndSwitchedOffLayers) {
    const Drawing drawing = sample("frozen-off.dxf");
    struct Case {
        const char* name;
        bool is_frozen;
        bool is_off;
    };
    for (const Case& row : {Case{"ONTHAW", false, false}, Case{"ONFREEZE", true, false},
                            Case{"OFFTHAW", false, true}, Case{"OFFFREEZE", true, true}}) {
        SCOPED_TRACE(row.name);
        const auto layer = drawing.FindLayer(row.name);
        ASSERT_TRUE(layer);
        EXPECT_EQ(drawing.Layers()[*layer].is_frozen, row.is_frozen);
        EXPECT_EQ(drawing.Layers()[*layer].is_off, row.is_off);
        EXPECT_EQ(drawing.Layers()[*layer].colour, 7);
        EXPECT_GT(drawing.ObjectsOf(*layer).size(), 0U);
    }
}

TEST(DxfFile, TellsGroupsAndExtendedData) {
    const Drawing groups = sample("groups.dxf");
    std::map<std::string, int> sizes;
    for (std::size_t i = 0; i < groups.ObjectCount(); ++i) ++sizes[groups.Traits(i).group];
    EXPECT_EQ(sizes, (std::map<std::string, int>{{"G1", 5}, {"G2", 8}}));
    const Drawing extended = sample("extendeddata.dxf");
    EXPECT_THAT(extended.Fields(3), ElementsAre(testing::FieldsAre("QCAD.1", "valeurD:maison"),
                                                testing::FieldsAre("QCAD.2", "valueD:house"),
                                                testing::FieldsAre("QCAD.3", "wertD:Haus")));
}

TEST(DxfFile, DecodesNamesOfLayers) {
    EXPECT_TRUE(sample("utf-8.dxf").FindLayer("\xC3\xA9ven"));
    EXPECT_TRUE(sample("dxf_unicode.dxf").FindLayer("Tsch\xC3\xBCss mit \xC3\xBC"));
    EXPECT_EQ(layers(sample("small_r13.dxf")), "0 0, 3USMM_PKG 13, FOOT_PRINT 3");
}

TEST(DxfFile, TellsLeaders) {
    const Drawing drawing = sample("leader-mleader.dxf");
    std::vector<std::size_t> leaders;
    for (std::size_t i = 0; i < drawing.ObjectCount(); ++i) {
        if (drawing.Traits(i).primitive == "LEADER") leaders.push_back(i);
    }
    ASSERT_EQ(leaders.size(), 7U);
    const auto first = drawing.Arrow(leaders[0]);
    ASSERT_EQ(first.points.size(), 4U);
    EXPECT_EQ(first.points.front(), (Vector3{30, 40, 0}));
    EXPECT_NEAR(first.points.back()[0], 10.3125, 1e-9);
    EXPECT_TRUE(first.has_head);
    // The style is overridden: heads of 6, one and a half as large.
    EXPECT_EQ(first.head_length, 6);
    EXPECT_EQ(first.scale, 1.5);
    EXPECT_FALSE(drawing.Arrow(leaders[5]).has_head);
    EXPECT_TRUE(drawing.Arrow(leaders[6]).is_curved);
}

TEST(DxfFile, MeasuresDimensions) {
    // Found by another program, angles in radians there.
    constexpr double kDegrees = 57.29577951308232;
    const std::vector<std::pair<DrawingKind, double>> expected = {
        {DrawingKind::DimensionLine, 5.510523541944478},
        {DrawingKind::DimensionLine, 2.866746584106721},
        {DrawingKind::DimensionLine, 0.4140856177043021},
        {DrawingKind::DimensionLine, 3.625327320637768},
        {DrawingKind::DimensionRadius, 6.178801007190202},
        {DrawingKind::DimensionRadius, 3.089400503595072},
        {DrawingKind::DimensionRadius, 3.089400503595107},
        {DrawingKind::DimensionAngle, 1.570796326794896 * kDegrees},
        {DrawingKind::DimensionAngle, 2.201985786565511 * kDegrees},
        {DrawingKind::DimensionAngle, 0.6311894597706156 * kDegrees},
        {DrawingKind::DimensionArc, 8.549710556238617},
        {DrawingKind::DimensionRadius, 5.641858089626992},
        {DrawingKind::DimensionLine, 56.08320584997184},
        {DrawingKind::DimensionLine, 53.57533673289651},
        {DrawingKind::DimensionLine, 74.9594696002178},
        {DrawingKind::DimensionLine, 77.50920090573089},
    };
    const Drawing drawing = sample("uncommon.dxf");
    std::size_t at = 0;
    for (std::size_t i = 0; i < drawing.ObjectCount(); ++i) {
        if (drawing.Kind(i) < DrawingKind::DimensionLine) continue;
        SCOPED_TRACE(at);
        ASSERT_LT(at, expected.size());
        EXPECT_EQ(drawing.Kind(i), expected[at].first);
        EXPECT_NEAR(drawing.Dimension(i).measure, expected[at].second, 1e-9);
        ++at;
    }
    EXPECT_EQ(at, expected.size());
}

}  // namespace
