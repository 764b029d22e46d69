// What becomes of single entities: planes, arcs, curves, insertions.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>

#include "engine/formats/dxf/flattening.h"
#include "engine/formats/dxf/placing.h"
#include "tests/engine/formats/dxf/drawings.h"

namespace {

using namespace zol::engine;
using namespace zol::testing_support;

// A polyline as text, to four decimals: "(1 2 3)(4 5 6)".
std::string points_text(const std::vector<DrawingPoint>& points) {
    std::string text;
    for (const DrawingPoint& point : points) {
        text += '(';
        for (std::size_t k = 0; k < 3; ++k) {
            const double rounded = std::round(point.place[k] * 1e4) / 1e4;
            std::string number = std::to_string(rounded == 0 ? 0.0 : rounded);
            number.erase(number.find_last_not_of('0') + 1);
            if (number.back() == '.') number.pop_back();
            text += (k == 0 ? "" : " ") + number;
        }
        text += ')';
    }
    return text;
}

TEST(Shapes, LieWhereTheirPlaneAndInsertionPutThem) {
    struct Case {
        const char* name;
        const char* blocks;
        const char* entities;
        const char* expected;
    };
    const char* const block = "0 BLOCK|2 B|10 1|20 1|0 LINE|10 1|20 1|11 2|21 3|31 1|0 ENDBLK";
    const Case cases[] = {
        {"upright", "", "0 LWPOLYLINE|38 5|10 1|20 2|10 3|20 4", "(1 2 5)(3 4 5)"},
        {"elevation behind the vertices", "", "0 LWPOLYLINE|10 1|20 2|38 5", "(1 2 5)"},
        {"upside down", "", "0 LWPOLYLINE|38 5|10 1|20 2|230 -1", "(-1 2 -5)"},
        {"facing x", "", "0 LWPOLYLINE|38 5|10 1|20 2|210 1|220 0|230 0", "(5 1 2)"},
        // Close to z, so that its x axis is across the y axis.
        {"nearly upright", "", "0 LWPOLYLINE|10 1000|20 0|210 0.01|220 0|230 1",
         "(999.95 0 -9.9995)"},
        {"in the world", "", "0 LINE|10 1|20 2|30 3|11 4|21 5|31 6|230 -1", "(1 2 3)(4 5 6)"},
        {"heights of a plane polyline", "",
         "0 POLYLINE|30 7|0 VERTEX|10 1|20 2|0 VERTEX|10 3|20 4|0 SEQEND", "(1 2 7)(3 4 7)"},
        {"heights that are not announced", "", "0 POLYLINE|0 VERTEX|10 1|20 2|30 9|0 SEQEND",
         "(1 2 9)"},
        {"polyline with no end", "", "0 POLYLINE|70 8|0 VERTEX|10 1|20 2|30 3", "(1 2 3)"},
        {"without the frame of a spline", "",
         "0 POLYLINE|70 12|0 VERTEX|70 16|10 9|20 9|0 VERTEX|70 8|10 1|20 2|30 3|0 SEQEND",
         "(1 2 3)"},
        {"face of three corners", "",
         "0 3DFACE|10 0|20 0|30 0|11 1|21 0|31 0|12 1|22 1|32 2|13 1|23 1|33 2",
         "(0 0 0)(1 0 0)(1 1 2)"},
        {"corners of a solid", "", "0 SOLID|10 0|20 0|11 1|21 0|12 0|22 1|13 1|23 1",
         "(0 0 0)(1 0 0)(1 1 0)(0 1 0)"},
        {"inserted", block, "0 INSERT|2 b|10 10|20 20|30 30", "(10 20 30)(11 22 31)"},
        {"turned and scaled", block, "0 INSERT|2 B|10 10|20 20|41 2|42 2|43 2|50 90",
         "(10 20 0)(6 22 2)"},
        {"mirrored by its plane", block, "0 INSERT|2 B|10 10|20 20|230 -1",
         "(-10 20 0)(-11 22 -1)"},
        {"array", "0 BLOCK|2 P|10 0|20 0|0 POINT|10 0|20 0|0 ENDBLK",
         "0 INSERT|2 P|10 1|20 1|50 90|70 2|71 2|44 5|45 10", "(1 1 0)(1 6 0)(-9 1 0)(-9 6 0)"},
        {"counts of 0 are 1", "0 BLOCK|2 P|0 POINT|10 0|20 0|0 ENDBLK",
         "0 INSERT|2 P|10 1|20 1|70 0|71 0", "(1 1 0)"},
        {"nested",
         "0 BLOCK|2 A|0 INSERT|2 P|10 1|20 0|41 3|0 ENDBLK|0 BLOCK|2 P|0 LWPOLYLINE|10 1|"
         "20 0|230 -1|0 ENDBLK",
         "0 INSERT|2 A|10 100|20 0|50 180", "(102 0 0)"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const Drawing drawing = drawing_of_entities(row.entities, row.blocks);
        std::string text;
        for (std::size_t i = 0; i < drawing.ObjectCount(); ++i) {
            text += points_text(drawing.Polyline(i).points);
        }
        EXPECT_EQ(text, row.expected);
    }
}

TEST(Shapes, AreCurvesWithinTheirTolerance) {
    struct Case {
        const char* name;
        const char* entity;
        // The circle that all points lie on, and whether it is closed.
        Vector3 centre;
        double radius;
        std::size_t points;
        bool is_closed;
    };
    const Case cases[] = {
        {"circle", "0 CIRCLE|10 5|20 6|30 7|40 2", {5, 6, 7}, 2, 180, true},
        {"quarter", "0 ARC|10 0|20 0|40 1|50 0|51 90", {0, 0, 0}, 1, 46, false},
        {"arc through 0", "0 ARC|10 0|20 0|40 1|50 350|51 10", {0, 0, 0}, 1, 11, false},
        {"angles beyond a turn", "0 ARC|10 0|20 0|40 1|50 -370|51 730", {0, 0, 0}, 1, 11, false},
        {"half circle", "0 LWPOLYLINE|10 -1|20 0|42 1|10 1|20 0", {0, 0, 0}, 1, 91, false},
        {"to the right", "0 LWPOLYLINE|10 -1|20 0|42 -1|10 1|20 0", {0, 0, 0}, 1, 91, false},
        {"two halves", "0 LWPOLYLINE|70 1|10 -1|20 0|42 1|10 1|20 0|42 1", {0, 0, 0}, 1, 180, true},
        {"three quarters",
         "0 LWPOLYLINE|10 0|20 -1|42 2.414213562373095|10 -1|20 0",
         {0, 0, 0},
         1,
         136,
         false},
        {"round ellipse",
         "0 ELLIPSE|10 1|20 1|11 0|21 3|40 1|41 0|42 6.283185307179586",
         {1, 1, 0},
         3,
         180,
         true},
        {"rational spline",
         "0 SPLINE|71 2|40 0|40 0|40 0|40 1|40 1|40 1|41 1|41 0.7071067811865476|41 1|10 1|20 0|10 "
         "1|20 1|10 0|20 1",
         {0, 0, 0},
         1,
         0,
         false},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const auto polyline = drawing_of_entities(row.entity).Polyline(0);
        if (row.points != 0) {
            EXPECT_EQ(polyline.points.size(), row.points);
        }
        EXPECT_EQ(polyline.is_closed, row.is_closed);
        EXPECT_TRUE(polyline.is_curved);
        Vector3 last = polyline.points.front().place;
        for (const DrawingPoint& point : polyline.points) {
            EXPECT_NEAR(length(minus(point.place, row.centre)), row.radius, 1e-9);
            const Vector3 middle = times(plus(last, point.place), 0.5);
            EXPECT_GT(length(minus(middle, row.centre)), row.radius * (1 - 1.6e-4));
            last = point.place;
        }
    }
}

TEST(Shapes, HaveBulgesTurnedWithTheirPlane) {
    const auto bulge_of = [](const Drawing& drawing) {
        return drawing.Polyline(0).points.front().bulge;
    };
    const std::string polyline = "0 LWPOLYLINE|10 0|20 0|42 0.5|10 2|20 0";
    EXPECT_EQ(bulge_of(drawing_of_entities(polyline)), 0.5);
    EXPECT_EQ(bulge_of(drawing_of_entities(polyline + "|230 -1")), -0.5);
    EXPECT_EQ(bulge_of(drawing_of_entities("0 INSERT|2 B|41 -1",
                                           "0 BLOCK|2 B|" + polyline + "|0 ENDBLK")),
              -0.5);
    // Half of the chord times the bulge to the right of it.
    const auto points = drawing_of_entities(polyline).Polyline(0).points;
    double lowest = 0;
    for (const DrawingPoint& point : points) lowest = std::min(lowest, point.place[1]);
    EXPECT_NEAR(lowest, -0.5, 1e-3);
}

TEST(Shapes, MarkPointsOfCurves) {
    const std::string polyline =
        "|0 VERTEX|10 0|20 0|0 VERTEX|70 1|10 1|20 0|0 VERTEX|10 2|20 0|0 SEQEND";
    const auto fitted = drawing_of_entities("0 POLYLINE|70 2" + polyline).Polyline(0);
    EXPECT_EQ(fitted.points[0].mark, PointMark::Control);
    EXPECT_EQ(fitted.points[1].mark, PointMark::Flattened);
    const auto arc = drawing_of_entities("0 ARC|10 0|20 0|40 1|50 0|51 90").Polyline(0);
    EXPECT_EQ(arc.points.front().mark, PointMark::None);
    EXPECT_EQ(arc.points[1].mark, PointMark::Flattened);
    EXPECT_EQ(arc.points.back().place[1], 1);
    const auto fits = drawing_of_entities("0 SPLINE|71 3|11 0|21 0|11 1|21 1").Polyline(0);
    EXPECT_EQ(points_text(fits.points), "(0 0 0)(1 1 0)");
    EXPECT_EQ(fits.points[0].mark, PointMark::Control);
}

TEST(Shapes, AreSkippedWhenTheirNumbersDoNotFit) {
    for (const char* const entity : {
             "0 CIRCLE|10 0|20 0|40 0",
             "0 CIRCLE|40 1",
             "0 LINE|10 0|20 0",
             "0 LWPOLYLINE|90 5",
             "0 POLYLINE|0 SEQEND",
             "0 ELLIPSE|10 0|20 0|11 0|21 0|40 1",
             "0 TEXT|10 0|20 0",
             "0 SPLINE|71 3|40 0|40 1|10 0|20 0",
             "0 SPLINE|71 99|11 0|21 0",
             // Knots that fall, none that differ, a weight of nothing.
             "0 SPLINE|71 1|40 0|40 2|40 1|40 3|10 0|20 0|10 1|20 1",
             "0 SPLINE|71 1|40 0|40 0|40 0|40 0|10 0|20 0|10 1|20 1",
             "0 SPLINE|71 1|40 0|40 0|40 1|40 1|41 0|41 1|10 0|20 0|10 1|20 1",
             "0 DIMENSION|70 2|13 0|23 0|14 1|24 0|15 0|25 1|10 1|20 1|16 5|26 5",
             "0 DIMENSION|70 15|10 1|20 1",
             "0 LEADER|10 1|20 1",
             "0 INSERT|2 NOBODY",
         }) {
        SCOPED_TRACE(entity);
        const Drawing drawing = drawing_of_entities(entity);
        EXPECT_EQ(drawing.ObjectCount(), 0U);
        EXPECT_EQ(drawing.Skipped().size(), 1U);
    }
}

}  // namespace
