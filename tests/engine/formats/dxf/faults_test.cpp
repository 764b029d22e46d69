// Drawings that are broken, cut, or made to be too much.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include "engine/formats/dxf/insertions.h"
#include "engine/formats/dxf/tag_reader.h"
#include "engine/formats/read_error.h"
#include "tests/engine/formats/dxf/drawings.h"

namespace {

using testing::HasSubstr;
using namespace zol::engine;
using namespace zol::testing_support;

std::string refusal(const std::string& text) {
    try {
        drawing_of(text);
    } catch (const ReadError& error) {
        return error.what();
    }
    return "none";
}

TEST(BrokenDrawing, IsRefusedWithItsPlace) {
    struct Case {
        const char* name;
        std::string text;
        const char* expected;
    };
    const std::string begin = "0\nSECTION\n2\nENTITIES\n";
    const Case cases[] = {
        {"empty", "", "no section of entities"},
        {"no drawing", "0\nLINE\n", "line 2: a drawing begins with a section"},
        {"no entities", section("HEADER", "") + "0\nEOF\n", "no section of entities"},
        {"cut in a section", begin + "0\nLINE\n", "line 6: the file ends inside the section"},
        {"cut behind a code", begin + "0\n", "line 5: the file ends behind a group code"},
        {"cut by the end mark", begin + "0\nEOF\n", "line 6: the file ends inside the section"},
        {"no code", begin + "x\n1\n", "line 5: \"x\" is no group code"},
        {"code beyond all", begin + "70000\n1\n", "line 5: \"70000\" is no group code"},
        {"no number", begin + "0\nLINE\n10\nabc\n", "line 8: \"abc\" is no number"},
        {"not a number", begin + "0\nLINE\n10\nnan\n", "line 8: \"nan\" is no number"},
        {"beyond 1e100", begin + "0\nLWPOLYLINE\n10\n1e308\n", "line 8: \"1e308\" is no number"},
        {"code missing", begin + "0\nLINE\n\n0\n0\nENDSEC\n", "a group code is missing"},
        {"section without a name", "0\nSECTION\n0\nENDSEC\n", "a section has no name"},
        {"binary, cut", std::string("AutoCAD Binary DXF\r\n\x1A\0\0\0SEC", 27),
         "ends inside a tag"},
        {"binary, odd code", std::string("AutoCAD Binary DXF\r\n\x1A\0\0\0SECTION\0\x50\0", 34),
         "byte 32: group code 80 is none"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        EXPECT_THAT(refusal(row.text), HasSubstr(row.expected));
    }
}

TEST(BrokenDrawing, IsReadWhereItOnlyLooksOdd) {
    const std::string point = "0\nPOINT\n10\n1\n20\n2\n";
    struct Case {
        const char* name;
        std::string text;
    };
    const Case cases[] = {
        {"comments", "999\nhello\n" + section("ENTITIES", "999\nx\n" + point) + "0\nEOF\n"},
        {"blanks round codes and names",
         "  0 \n SECTION\n  2\nENTITIES \n 0\nPOINT\n 10\n 1.0 \n 20\n2\n  0\nENDSEC\n  0\nEOF"},
        {"no end mark", section("ENTITIES", point)},
        {"blank lines at the end", section("ENTITIES", point) + "\n\n"},
        {"rubbish behind the end mark", section("ENTITIES", point) + "0\nEOF\nwhat\never\n1"},
        {"unknown section", section("SURPRISE", "1\nx\n") + section("ENTITIES", point)},
        {"handles and colours out of bounds",
         section("ENTITIES", "0\nPOINT\n5\nXYZ\n62\n9999\n370\n-77\n10\n1\n20\n2\n") + "0\nEOF\n"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const Drawing drawing = drawing_of(row.text);
        ASSERT_EQ(drawing.ObjectCount(), 1U);
        EXPECT_EQ(drawing.Polyline(0).points[0].place, (Vector3{1, 2, 0}));
    }
}

TEST(BrokenDrawing, CutAnywhereIsReadOrRefused) {
    for (const char* const name :
         {"attrib.dxf", "block-basepoint.dxf", "bin_dxf_r12.dxf", "frozen-off.dxf"}) {
        SCOPED_TRACE(name);
        std::ostringstream content;
        content << std::ifstream(sample_drawing(name), std::ios::binary).rdbuf();
        const std::string whole = content.str();
        ASSERT_GT(whole.size(), 1000U);
        TemporaryFile file("");
        int read = 0;
        for (std::size_t size = 0; size < whole.size(); size += 31) {
            file.Rewrite(whole.substr(0, size));
            try {
                const Drawing drawing = read_dxf(File(file.Path()));
                for (std::size_t i = 0; i < drawing.ObjectCount(); ++i) drawing.Traits(i);
                ++read;
            } catch (const ReadError&) {
            }
        }
        // Only what is cut behind the last section has all of its entities.
        EXPECT_LT(read, 8);
    }
}

TEST(TooMuch, OfInsertionsIsSkippedWithAWord) {
    // Each block holds ten of the next: ten to the eighth in all.
    std::string nest = "0 BLOCK|2 B8|0 POINT|10 0|20 0|0 ENDBLK";
    for (int i = 7; i >= 0; --i) {
        nest += "|0 BLOCK|2 B" + std::to_string(i);
        for (int k = 0; k < 10; ++k) nest += "|0 INSERT|2 B" + std::to_string(i + 1);
        nest += "|0 ENDBLK";
    }
    std::string chain = "0 BLOCK|2 C40|0 POINT|10 0|20 0|0 ENDBLK";
    for (int i = 39; i >= 0; --i) {
        chain += "|0 BLOCK|2 C" + std::to_string(i) + "|0 INSERT|2 C" + std::to_string(i + 1) +
                 "|0 ENDBLK";
    }
    struct Case {
        const char* name;
        std::string blocks;
        const char* entities;
        const char* skipped;
        std::size_t objects;
    };
    const std::string ring =
        "0 BLOCK|2 A|0 POINT|10 0|20 0|0 INSERT|2 B|0 ENDBLK|0 BLOCK|2 B|0 INSERT|2 A|0 ENDBLK";
    const Case cases[] = {
        {"array of a billion", "0 BLOCK|2 A|0 POINT|10 0|20 0|0 ENDBLK",
         "0 INSERT|2 A|70 30000|71 30000|44 1|45 1|0 INSERT|2 A", "INSERT (of too many objects)",
         1},
        {"blocks in blocks", nest, "0 INSERT|2 B0|0 INSERT|2 B0|0 INSERT|2 B6",
         "INSERT (of too many objects)", 100},
        {"a block in itself", ring, "0 INSERT|2 A", "INSERT (of a block in itself)", 1},
        {"too deep", chain, "0 INSERT|2 C0|0 INSERT|2 C20", "INSERT (nested too deep)", 1},
        {"growing beyond 1e100",
         "0 BLOCK|2 A|0 POINT|10 0|20 0|0 INSERT|2 B|41 1e90|0 ENDBLK|"
         "0 BLOCK|2 B|0 POINT|10 1|20 1|0 ENDBLK",
         "0 INSERT|2 A|41 1e90", "INSERT (with numbers beyond 1e100)", 1},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const Drawing drawing = drawing_of_entities(row.entities, row.blocks);
        EXPECT_EQ(drawing.ObjectCount(), row.objects);
        ASSERT_EQ(drawing.Skipped().size(), 1U);
        EXPECT_EQ(drawing.Skipped()[0].what, row.skipped);
    }
}

TEST(TooMuch, OfInsertionsThatMakeNothingEndsWithAWord) {
    const std::string array = "|70 700|71 700|44 1|45 1";
    struct Case {
        const char* name;
        std::string blocks;
        std::string inner;
        std::string outer;
    };
    // Each is 700 x 700 of 700 x 700 of something that is never shown.
    const Case cases[] = {
        {"beyond 1e100", "0 BLOCK|2 A|0 POINT|10 0|20 0|0 ENDBLK", "0 INSERT|2 A|41 1e60" + array,
         "|41 1e60" + array},
        {"of empty blocks", "0 BLOCK|2 A|0 ENDBLK", "0 INSERT|2 A" + array, array},
        {"of missing blocks", "0 BLOCK|2 A", "0 INSERT|2 C|0 INSERT|2 C|0 INSERT|2 C", array},
        {"of blocks in themselves", "0 BLOCK|2 A", "0 INSERT|2 B|0 INSERT|2 B|0 INSERT|2 B", array},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        std::string entities = "0 POINT|10 0|20 0";
        for (int i = 0; i < 20; ++i) entities += "|0 INSERT|2 B" + row.outer;
        const Drawing drawing =
            drawing_of_entities(entities, row.blocks + "|0 BLOCK|2 B|" + row.inner + "|0 ENDBLK");
        EXPECT_EQ(drawing.ObjectCount(), 1U);
        std::map<std::string, std::uint64_t> skipped;
        for (const DrawingSkip& skip : drawing.Skipped()) skipped[skip.what] = skip.count;
        EXPECT_EQ(skipped["INSERT (of too many objects)"], 20U);
        for (const auto& [what, count] : skipped) EXPECT_LE(count, Insertions::kMostSteps) << what;
    }
}

// A drawing whose insertion of 700 x 700 points owns the dictionary 1, with these objects.
Drawing drawing_of_owner(const std::string& objects, const std::string& data_of_point = {}) {
    return drawing_of(
        section("BLOCKS", tags("0 BLOCK|2 A|0 POINT|10 0|20 0" + data_of_point + "|0 ENDBLK")) +
        section("ENTITIES", tags("0 INSERT|5 A|102 {ACAD_XDICTIONARY|360 1|102 }|2 A|70 700|71 700|"
                                 "44 1|45 1")) +
        section("OBJECTS", tags(objects)) + "0\nEOF\n");
}

TEST(TooMuch, OfRecordsIsKeptOnceForAllOwners) {
    // For each owner anew these would be a terabyte.
    constexpr int kValues = 50000;
    std::string objects =
        "0 DICTIONARY|5 1|3 R|360 2|0 DICTIONARY|5 4|3 G|350 3|"
        "0 GROUP|5 3|340 A|0 XRECORD|5 2";
    for (int i = 0; i < kValues; ++i) objects += "|1 v";
    for (const char* const data_of_point : {"", "|1001 APP|1000 own=1"}) {
        SCOPED_TRACE(data_of_point);
        const Drawing drawing = drawing_of_owner(objects, data_of_point);
        ASSERT_EQ(drawing.ObjectCount(), 490000U);
        EXPECT_TRUE(drawing.Skipped().empty());
        for (const std::size_t object : {std::size_t{0}, std::size_t{489999}}) {
            EXPECT_EQ(drawing.Traits(object).group, "G");
            const auto fields = drawing.Fields(object);
            ASSERT_EQ(fields.size(), kValues + (*data_of_point == '\0' ? 0U : 1U));
            EXPECT_EQ(fields.back().name, "R.1." + std::to_string(kValues));
            EXPECT_EQ(fields.back().value, "v");
        }
    }
}

TEST(TooMuch, OfFieldsIsLeftOutWithAWord) {
    const auto many = [](const std::string& tag, int count) {
        std::string list;
        for (int i = 0; i < count; ++i) list += tag;
        return list;
    };
    struct Case {
        const char* name;
        std::string objects;
    };
    const Case cases[] = {
        {"a record under many names",
         "0 DICTIONARY|5 1" + many("|3 R|360 2", 5000) + "|0 XRECORD|5 2" + many("|1 v", 5000)},
        {"a long name of many values", "0 DICTIONARY|5 1|3 " + std::string(500000, 'k') +
                                           "|360 2|0 XRECORD|5 2" + many("|1 v", 50000)},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const Drawing drawing = drawing_of_owner(row.objects);
        EXPECT_EQ(drawing.ObjectCount(), 490000U);
        EXPECT_TRUE(drawing.Fields(0).empty());
        ASSERT_EQ(drawing.Skipped().size(), 1U);
        EXPECT_EQ(drawing.Skipped()[0].what, "fields of records and groups (too many)");
    }
}

TEST(TooMuch, OfAnApplicationsNameIsCut) {
    std::string entity =
        "0 POINT|10 0|20 0|1001 " + std::string(254, 'a') + "\xC3\xB6" + std::string(500000, 'a');
    for (int i = 0; i < 50000; ++i) entity += "|1071 1";
    const auto fields = drawing_of_entities(entity).Fields(0);
    ASSERT_EQ(fields.size(), 50000U);
    EXPECT_EQ(fields[0].name, std::string(254, 'a') + ".1");
}

TEST(TooMuch, OfATextIsReadAllTheSame) {
    const std::string megabyte(std::size_t{1} << 20U, 'x');
    const std::string name(300, 'n');
    const Drawing drawing = drawing_of_entities("0 TEXT|8 " + name + "|10 0|20 0|1 " + megabyte);
    EXPECT_EQ(lines_of(drawing, 0), megabyte);
    EXPECT_TRUE(drawing.FindLayer(name));
}

TEST(Recognition, GoesByTheFirstTag) {
    struct Case {
        const char* text;
        bool is_dxf;
    };
    for (const Case& row : {Case{"0\nSECTION\n", true}, Case{"999\nx\n  0\nSECTION\n", true},
                            Case{"0\nLINE\n", false}, Case{"ply\n", false}, Case{"", false}}) {
        const TemporaryFile file(row.text);
        EXPECT_EQ(is_dxf(File(file.Path())), row.is_dxf) << row.text;
    }
    EXPECT_TRUE(is_dxf(File(sample_drawing("bin_dxf_r2000.dxf"))));
}

}  // namespace
