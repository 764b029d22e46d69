// Texts: codes inside them, encodings, where they stand; and the texts of dimensions.
#include "engine/formats/dxf/text_codes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "engine/formats/dxf/text_decoder.h"
#include "tests/engine/formats/dxf/drawings.h"

namespace {

using namespace zol::engine;
using namespace zol::testing_support;

TEST(TextCodes, OfOneLineAreShown) {
    struct Case {
        const char* text;
        const char* expected;
    };
    const Case cases[] = {
        {"35%%d", "35\xC2\xB0"},
        {"%%P1 %%c2",
         "\xC2\xB1"
         "1 \xE2\x8C\x80"
         "2"},
        {"100%%%", "100%"},
        {"%%uunder%%U", "under"},
        {"%%065%%066", "AB"},
        {"%%06", "%%06"},
        {"50% %%", "50% %%"},
        {"a^Jb^Ic^Md^ e^", "a\nb\tcd^e^"},
        {"{\\P}", "{\\P}"},
    };
    for (const Case& row : cases) EXPECT_EQ(shown_line(row.text), row.expected) << row.text;
}

TEST(TextCodes, OfManyLinesAreShown) {
    struct Case {
        const char* text;
        const char* lines;
        const char* font;
    };
    const Case cases[] = {
        {"a\\Pb\\Nc\\Xd", "a\nb\nc\nd", ""},
        {"{\\fArial|b1|i0;bold} \\H2.5x;big", "bold big", "Arial"},
        {"plain {\\FRomans;x}", "plain x", ""},
        {"\\\\ \\{ \\} a\\~b",
         "\\ { } a\xC2\xA0"
         "b",
         ""},
        {"\\Lu\\l \\Oo\\o \\Kk\\k", "u o k", ""},
        {"\\S1/2; \\S1#2; \\S+1^ -1; \\S2^ ; \\S\\/\\;/x;", "1/2 1/2 +1/-1 2 /;/x", ""},
        {"\\pxqc,i0;\\A1;\\C3;\\c255;\\W1;\\Q0;\\T1;x", "x", ""},
        {"%%d ^J^ ", "\xC2\xB0 \n^", ""},
        {"{{{", "", ""},
        {"\\f", "", ""},
        {"\\", "\\", ""},
        {"\\Sopen", "open", ""},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(shown_text(row.text).lines, row.lines);
        EXPECT_EQ(shown_text(row.text).font, row.font);
    }
}

TEST(TextDecoding, GoesByReleaseAndCodePage) {
    struct Case {
        const char* name;
        const char* header;
        const char* text;
        const char* expected;
    };
    const char* const w = "\xE6\x9C\xA8";
    const Case cases[] = {
        {"no header", "", "B\xF6schung", "B\xC3\xB6schung"},
        {"Central Europe", "9 $DWGCODEPAGE|3 ANSI_1250", "\xE8", "\xC4\x8D"},
        {"Cyrillic", "9 $DWGCODEPAGE|3 ansi_1251", "\xCF\xEB", "\xD0\x9F\xD0\xBB"},
        {"DOS", "9 $DWGCODEPAGE|3 DOS850", "\x81", "\xC3\xBC"},
        // The second byte is a backslash in a page of single bytes.
        {"Japanese", "9 $DWGCODEPAGE|3 ANSI_932", "\x95\x5CP", "\xE8\xA1\xA8P"},
        // These two bytes are valid UTF-8 as well.
        {"Chinese", "9 $DWGCODEPAGE|3 ANSI_936", "\xC4\xBE", w},
        {"unknown page", "9 $DWGCODEPAGE|3 KLINGON", "\xF6", "\xC3\xB6"},
        {"UTF-8 in spite of the page", "9 $DWGCODEPAGE|3 ANSI_1252", "\xC3\xB6", "\xC3\xB6"},
        {"valid by chance", "9 $DWGCODEPAGE|3 ANSI_1250", "\xDA\x8E|0 TEXT|10 0|20 0|1 \xDA",
         "\xC3\x9A\xC5\xBD"},
        {"2007", "9 $ACADVER|1 AC1021|9 $DWGCODEPAGE|3 ANSI_1250", "\xC3\xB6", "\xC3\xB6"},
        // The pair is valid UTF-8 as well.
        {"escape of a pair", "", "\\M+5C9BD\\M+10041", "\xE5\xB1\xB1\x41"},
        {"2007, but no UTF-8", "9 $ACADVER|1 AC1021|9 $DWGCODEPAGE|3 ANSI_1250", "\xE8",
         "\xC4\x8D"},
        {"escapes", "", "\\U+6728 \\U+D83D\\U+DE00 \\U+12 \\M+1955C", ""},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const Drawing drawing =
            drawing_of_entities(std::string("0 TEXT|10 0|20 0|1 ") + row.text, "", row.header);
        const std::string expected = *row.expected != '\0'
                                         ? std::string(row.expected)
                                         : w + std::string(" \xF0\x9F\x98\x80 \\U+12 \xE8\xA1\xA8");
        EXPECT_EQ(lines_of(drawing, 0), expected);
    }
}

TEST(Texts, StandWhereTheirAnchorAndPlaneSay) {
    struct Case {
        const char* name;
        const char* entity;
        DrawingKind kind;
        Vector3 origin;
        double rotation;
        bool is_mirrored;
        TextAcross across;
        TextUp up;
    };
    using enum DrawingKind;
    const Case cases[] = {
        {"plain",
         "0 TEXT|1 x|10 1|20 2|50 30",
         Text,
         {1, 2, 0},
         30,
         false,
         TextAcross::Left,
         TextUp::Baseline},
        {"anchored",
         "0 TEXT|1 x|10 1|20 2|11 5|21 6|72 2|73 3",
         Text,
         {5, 6, 0},
         0,
         false,
         TextAcross::Right,
         TextUp::Top},
        {"middle",
         "0 TEXT|1 x|10 1|20 2|11 5|21 6|72 4",
         Text,
         {5, 6, 0},
         0,
         false,
         TextAcross::Centre,
         TextUp::Middle},
        {"fitted",
         "0 TEXT|1 x|10 1|20 2|11 1|21 6|72 5",
         Text,
         {1, 2, 0},
         90,
         false,
         TextAcross::Left,
         TextUp::Baseline},
        {"negative angle",
         "0 TEXT|1 x|10 0|20 0|50 -90",
         Text,
         {0, 0, 0},
         270,
         false,
         TextAcross::Left,
         TextUp::Baseline},
        {"backward",
         "0 TEXT|1 x|10 0|20 0|50 10|71 2",
         Text,
         {0, 0, 0},
         10,
         true,
         TextAcross::Left,
         TextUp::Baseline},
        {"upside down",
         "0 TEXT|1 x|10 0|20 0|50 10|71 4",
         Text,
         {0, 0, 0},
         190,
         true,
         TextAcross::Left,
         TextUp::Baseline},
        // Seen from above it runs to the left and is read from its end.
        {"from below",
         "0 TEXT|1 x|10 1|20 2|50 0|230 -1",
         Text,
         {-1, 2, 0},
         0,
         true,
         TextAcross::Left,
         TextUp::Baseline},
        {"standing",
         "0 TEXT|1 x|10 1|20 2|30 3|210 0|220 -1|230 0",
         Text3D,
         {1, -3, 2},
         0,
         false,
         TextAcross::Left,
         TextUp::Baseline},
        {"many lines",
         "0 MTEXT|1 x|10 1|20 2|50 15|71 5",
         Text3D,
         {1, 2, 0},
         15,
         false,
         TextAcross::Centre,
         TextUp::Middle},
        {"direction behind the angle",
         "0 MTEXT|1 x|10 1|20 2|50 15|11 0|21 1|71 9",
         Text3D,
         {1, 2, 0},
         90,
         false,
         TextAcross::Right,
         TextUp::Bottom},
        {"angle behind the direction",
         "0 MTEXT|1 x|10 1|20 2|11 0|21 1|50 15",
         Text3D,
         {1, 2, 0},
         15,
         false,
         TextAcross::Left,
         TextUp::Top},
        {"heights of columns",
         "0 MTEXT|1 x|10 1|20 2|75 2|76 1|50 400",
         Text3D,
         {1, 2, 0},
         0,
         false,
         TextAcross::Left,
         TextUp::Top},
        {"embedded object",
         "0 MTEXT|1 x|10 1|20 2|101 Embedded Object|50 77",
         Text3D,
         {1, 2, 0},
         0,
         false,
         TextAcross::Left,
         TextUp::Top},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const Drawing drawing = drawing_of_entities(row.entity);
        ASSERT_EQ(drawing.ObjectCount(), 1U);
        EXPECT_EQ(drawing.Kind(0), row.kind);
        const DrawingText text = drawing.Text(0);
        for (std::size_t k = 0; k < 3; ++k) EXPECT_NEAR(text.origin[k], row.origin[k], 1e-12);
        EXPECT_NEAR(text.rotation, row.rotation, 1e-9);
        EXPECT_EQ(text.is_mirrored, row.is_mirrored);
        EXPECT_EQ(text.across, row.across);
        EXPECT_EQ(text.up, row.up);
    }
}

TEST(Texts, GrowAndTurnWithTheirInsertion) {
    const char* const block = "0 BLOCK|2 B|0 TEXT|1 x|10 1|20 0|40 2|0 ENDBLK";
    const Drawing turned = drawing_of_entities("0 INSERT|2 B|10 5|20 5|41 4|42 3|50 90", block);
    EXPECT_NEAR(turned.Text(0).origin[1], 9, 1e-12);
    EXPECT_NEAR(turned.Text(0).rotation, 90, 1e-9);
    EXPECT_NEAR(turned.Text(0).height, 6, 1e-12);
    EXPECT_NEAR(turned.Text(0).width, 4.0 / 3, 1e-12);
    const Drawing mirrored = drawing_of_entities("0 INSERT|2 B|41 -1", block);
    EXPECT_TRUE(mirrored.Text(0).is_mirrored);
    EXPECT_NEAR(mirrored.Text(0).rotation, 0, 1e-9);
    const Drawing tilted = drawing_of_entities("0 INSERT|2 B|210 1|220 0|230 0", block);
    EXPECT_EQ(tilted.Kind(0), DrawingKind::Text3D);
    EXPECT_NEAR(tilted.Text(0).normal[0], 1, 1e-12);
}

TEST(Dimensions, AreWrittenAsTheirStyleSays) {
    struct Case {
        const char* name;
        const char* style;
        const char* dimension;
        const char* expected;
    };
    const char* const line = "|70 1|13 0|23 0|14 3|24 4|10 0|20 1";
    const char* const overrides =
        "|1001 ACAD|1000 DSTYLE|1002 {|1070 271|1070 1|1070 40|1040 2|1002 }";
    const Case cases[] = {
        {"no style", "", "", "5.0000"},
        {"measure in a text", "", "|1 L=<> m", "L=5.0000 m"},
        {"no text", "", "|1  ", ""},
        {"text of its own", "", "|1 abc\\Pdef", "abc def"},
        {"decimals", "|271 2|78 8", "", "5"},
        {"factor and comma", "|271 2|144 0.5|278 44", "", "2,50"},
        {"rounded", "|271 1|45 2", "", "6.0"},
        {"text around", "|271 0|3 (<>)", "", "(5)"},
        {"text behind", "|271 0|3  mm", "", "5 mm"},
        {"no zero in front", "|271 2|144 0.05|78 4", "", ".25"},
        {"overridden", "|271 3", overrides, "5.0"},
        {"text around, overridden", "|271 0|3 x",
         "|1001 ACAD|1000 DSTYLE|1002 {|1070 3|1000 \xB1\\U+00B5<>%%d|1002 }",
         "\xC2\xB1\xC2\xB5"
         "5\xC2\xB0"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const std::string table =
            "0 TABLE|2 DIMSTYLE|0 DIMSTYLE|2 S" + std::string(row.style) + "|0 ENDTAB";
        const Drawing drawing = drawing_of(
            section("TABLES", tags(table)) +
            section("ENTITIES", tags("0 DIMENSION|3 S" + std::string(line) + row.dimension)) +
            "0\nEOF\n");
        ASSERT_EQ(drawing.ObjectCount(), 1U);
        const DrawingDimension dimension = drawing.Dimension(0);
        EXPECT_EQ(dimension.text, row.expected);
        EXPECT_EQ(dimension.measure, 5);
        EXPECT_EQ(dimension.style, "S");
        EXPECT_EQ(dimension.arrow_length, row.dimension == overrides ? 0.36 : 0.18);
    }
}

TEST(Dimensions, OfAnglesTakeTheOneThatHoldsTheirArc) {
    // Two lines that cross at 1,1 with 60 degrees between them, and an arc in each quarter.
    struct Case {
        double x;
        double y;
        double measure;
    };
    for (const Case& row : {Case{3, 2, 60}, Case{0, 3, 120}, Case{-1, 0, 60}, Case{2, -2, 120}}) {
        SCOPED_TRACE(row.x);
        const Drawing drawing = drawing_of_entities(
            "0 DIMENSION|70 2|13 0|23 1|14 2|24 1|15 1|25 1|10 2|20 2.732050807568877|16 " +
            std::to_string(row.x) + "|26 " + std::to_string(row.y));
        const DrawingDimension dimension = drawing.Dimension(0);
        EXPECT_NEAR(dimension.measure, row.measure, 1e-9);
        EXPECT_NEAR(dimension.first[0], 1, 1e-12);
        // Counter-clockwise, the arc is to the left of the way from begin to end seen from it.
        const Vector3 begin = minus(dimension.second, dimension.first);
        const Vector3 end = minus(dimension.third, dimension.first);
        EXPECT_GT(cross(begin, end)[2], 0);
        EXPECT_GT(dot(plus(begin, end), minus({row.x, row.y, 0}, dimension.first)), 0);
    }
}

}  // namespace
