#include "engine/block/omf1_variables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "tests/engine/block/volume_file.h"

namespace zol::engine::block {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr std::int64_t kBlocks = 6;

std::vector<std::string> texts_of(const Variable& variable) {
    std::vector<std::string> texts;
    for (std::int64_t i = 0; i < kBlocks; ++i) texts.push_back(variable.column->Text(i));
    return texts;
}

TEST(Omf1Variables, ReadsEveryKindOfData) {
    VolumeFile file;
    Omf1Writer& w = file.writer;
    w.Object("l1", "Legend", R"("values":"l1v")");
    w.Object("l1v", "ColorArray", R"("array":[[1,2,3],[4,5,6],[7,8,9]])");
    w.Object("l2", "Legend", R"("values":"l2v")");
    w.Object("l2v", "StringArray", R"("array":["granite","ovb"])");
    file.Add("ScalarData", "grade", "ScalarArray",
             w.Blob(std::vector<double>{0.1, kNaN, -0.5, 1e300, 0, 7}),
             R"("description":"g/t","colormap":null)");
    file.Add("ScalarData", "id", "ScalarArray",
             w.Blob(std::vector<std::int64_t>{INT64_MAX, INT64_MIN, 9007199254740993, 0, -1, 1}));
    file.Add("Vector3Data", "dip", "Vector3Array",
             w.Blob(std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8, 9, 1, 2, 3, 4, 5, 6, 7, 8, kNaN}));
    file.Add("Vector2Data", "uv", "Vector2Array",
             w.Blob(std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
    file.Add("ColorData", "packed", "Int3Array",
             w.Blob(std::vector<std::int64_t>{0, 128, 255, 300, -5, 16, 1, 2, 3, 10, 11, 12, 0, 0,
                                              0, 9, 9, 9}));
    file.Add("ColorData", "listed", "ColorArray",
             "[[0,128,255],[300,-5,16],[1,2,3],[10,11,12],[0,0,0],null]");
    file.Add("StringData", "note", "StringArray", R"(["","a","\u00e9","b c","",null])");
    file.Add("DateTimeData", "mined", "DateTimeArray",
             R"(["2020-01-02T03:04:05Z",null,null,null,null,"2021-01-01T00:00:00Z"])");
    file.Add("MappedData", "rock", "ScalarArray",
             w.Blob(std::vector<std::int64_t>{0, 1, -1, 1, 0, 5}), R"("legends":["l1","l2"])");
    file.Add("MappedData", "zone", "ScalarArray", w.Blob(std::vector<double>{0, 1, -1, kNaN, 2, 2}),
             R"("legends":["l1"])");
    file.Add("MappedData", "bare", "ScalarArray",
             w.Blob(std::vector<std::int64_t>{3, 2, 1, 0, -1, -1}));
    file.Add("ScalarData", "corner", "ScalarArray", w.Blob(std::vector<double>{1, 2}),
             R"("location":"vertices")");

    struct Row {
        const char* name;
        Storage storage;
        std::vector<std::string> texts;
        std::vector<std::string> translations;
    };
    const Row rows[] = {
        {"grade", Storage::Double, {"0.1", "", "-0.5", "1e+300", "0", "7"}, {}},
        {"id",
         Storage::Int64,
         {"9223372036854775807", "-9223372036854775808", "9007199254740993", "0", "-1", "1"},
         {}},
        {"dip.x", Storage::Double, {"1", "4", "7", "1", "4", "7"}, {}},
        {"dip.y", Storage::Double, {"2", "5", "8", "2", "5", "8"}, {}},
        {"dip.z", Storage::Double, {"3", "6", "9", "3", "6", ""}, {}},
        {"uv.x", Storage::Double, {"1", "3", "5", "7", "9", "11"}, {}},
        {"uv.y", Storage::Double, {"2", "4", "6", "8", "10", "12"}, {}},
        {"packed",
         Storage::Text,
         {"#0080FFFF", "#FF0010FF", "#010203FF", "#0A0B0CFF", "#000000FF", "#090909FF"},
         {}},
        {"listed",
         Storage::Text,
         {"#0080FFFF", "#FF0010FF", "#010203FF", "#0A0B0CFF", "#000000FF", ""},
         {}},
        {"note", Storage::Text, {"", "a", "\xC3\xA9", "b c", "", ""}, {}},
        {"mined",
         Storage::Text,
         {"2020-01-02T03:04:05Z", "", "", "", "", "2021-01-01T00:00:00Z"},
         {}},
        {"rock", Storage::Integer, {"0", "1", "", "1", "0", "5"}, {"granite", "ovb"}},
        {"zone",
         Storage::Integer,
         {"0", "1", "", "", "2", "2"},
         {"Category0", "Category1", "Category2"}},
        {"bare", Storage::Integer, {"3", "2", "1", "0", "", ""}, {}},
    };
    Source source = open(file);
    ASSERT_EQ(source.variables.size(), std::size(rows));
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const Variable& variable = source.variables[i];
        SCOPED_TRACE(rows[i].name);
        EXPECT_EQ(variable.name, rows[i].name);
        EXPECT_EQ(variable.storage, rows[i].storage);
        EXPECT_EQ(texts_of(variable), rows[i].texts);
        std::vector<std::string> translations;
        for (const Translation& t : variable.translations) translations.push_back(t.name);
        EXPECT_EQ(translations, rows[i].translations);
        for (std::int64_t block = 0; block < kBlocks; ++block) {
            const std::string& text = rows[i].texts[static_cast<std::size_t>(block)];
            const double number = variable.column->Number(block);
            if (variable.IsText() || text.empty()) {
                EXPECT_TRUE(std::isnan(number));
            } else {
                EXPECT_EQ(number, std::strtod(text.c_str(), nullptr));
            }
        }
    }
    EXPECT_EQ(source.variables[0].description, "g/t");
}

TEST(Omf1Variables, TellsVariablesApart) {
    VolumeFile file;
    file.writer.Object("a", "ScalarArray",
                       "\"array\":" + file.writer.Blob(std::vector<double>{1, 2, 3, 4, 5, 6}));
    for (const char* name : {"grade", "volume", "grade", "grade_2", "", "grade"}) {
        file.AddOver("ScalarData", name, "a");
    }
    file.data += ",\"x0\"";
    EXPECT_THAT(names_of(open(file)),
                ElementsAre("grade", "volume_2", "grade_2", "grade_2_2", "variable 5", "grade_3"));
}

TEST(Omf1Variables, RefusesDataThatCanNotBeOnItsCells) {
    struct Row {
        const char* data_class;
        const char* array_class;
        std::string array;
        const char* more;
        const char* fault;
    };
    VolumeFile shared;
    const std::string blob = shared.writer.Blob(std::vector<double>{1, 2, 3, 4, 5, 6});
    const Row rows[] = {
        {"ScalarData", "Vector3Array", blob, "", "refers to a Vector3Array, ScalarArray is"},
        {"Legend", "ScalarArray", blob, "", "refers to a Legend"},
        {"ScalarData", "ScalarArray", blob, "\"location\":null", "has no \"location\""},
        {"ColorData", "Int3Array", blob, "", "does not hold whole numbers"},
        {"StringData", "StringArray", R"(["a"])", "", "has 1 items, 6 are expected"},
        {"StringData", "StringArray", R"(["a","b","c","d","e",7])", "", "[5] is a number"},
        {"ColorData", "ColorArray", "[[1,2],null,null,null,null,null]", "", "[0] is no colour"},
        {"MappedData", "ScalarArray", blob, R"("legends":["v"])", "refers to a VolumeElement"},
    };
    for (const Row& row : rows) {
        VolumeFile file = shared;
        file.Add(row.data_class, "bad", row.array_class, row.array, row.more);
        EXPECT_THAT(fault_of(file), HasSubstr(row.fault));
    }
    VolumeFile hollow = shared;
    hollow.geometry = R"("tensor_u":[1,1,1,1,1,1,1,1,1,1],"tensor_v":[1,1,1,1,1,1,1,1,1,1],
                         "tensor_w":[1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1])";
    for (int i = 0; i < 2; ++i) {
        hollow.geometry.insert(hollow.geometry.find("[") + 1, "1,1,1,1,1,1,1,1,1,1,");
    }
    hollow.Add("ScalarData", "hollow", "ScalarArray", blob);
    EXPECT_THAT(fault_of(hollow), HasSubstr("can't hold"));
}

TEST(Omf1Variables, AColumnThatTurnsOutCorruptIsMissingAndReportedOnce) {
    VolumeFile file;
    Omf1Writer& w = file.writer;
    file.Add("ScalarData", "short", "ScalarArray", w.Blob(std::vector<double>{1, 2}));
    file.Add("MappedData", "half", "ScalarArray", w.Blob(std::vector<double>{0, 1, 0.5, 0, 0, 0}));
    file.Add("MappedData", "far", "ScalarArray",
             w.Blob(std::vector<std::int64_t>{0, 1, 2147483648, 0, 0, 0}));
    file.Add("MappedData", "below", "ScalarArray",
             w.Blob(std::vector<std::int64_t>{0, 1, -2, 0, 0, 0}));
    file.Add("ColorData", "long", "Int3Array", w.Blob(std::vector<std::int64_t>(19, 1)));
    file.Add("ScalarData", "good", "ScalarArray", w.Blob(std::vector<double>{1, 2, 3, 4, 5, 6}));
    const TemporaryFile reports("");
    ::setenv("ZOL_DIAGNOSTICS", reports.Path().c_str(), 1);
    Source source = open(file);
    for (const Variable& variable : source.variables) {
        SCOPED_TRACE(variable.name);
        const bool good = variable.name == "good";
        EXPECT_EQ(texts_of(variable)[1], good ? "2" : "");
        EXPECT_EQ(std::isnan(variable.column->Number(0)), !good);
    }
    ::unsetenv("ZOL_DIAGNOSTICS");
    std::ifstream lines(reports.Path());
    int n_lines = 0;
    for (std::string line; std::getline(lines, line); ++n_lines) {
        const char* names[] = {"short", "half", "far", "below", "long"};
        ASSERT_LT(n_lines, 5);
        EXPECT_THAT(line, HasSubstr(std::string(" of \"") + names[n_lines] + "\" holds "));
        EXPECT_THAT(line, HasSubstr("the values are missing"));
    }
    EXPECT_EQ(n_lines, 5);
}

TEST(Omf1Variables, AColumnOfAFileThatChangedIsMissing) {
    VolumeFile file;
    file.Add("ScalarData", "number", "ScalarArray",
             file.writer.Blob(std::vector<double>{1, 2, 3, 4, 5, 6}));
    file.Add("StringData", "text", "StringArray", R"(["a","b","c","d","e","f"])");
    TemporaryFile stored(file.Bytes());
    Source source = open_stored(stored);
    stored.Rewrite("short");
    for (const Variable& variable : source.variables) EXPECT_EQ(variable.column->Text(0), "");
}

TEST(Omf1Variables, OneBlobIsDecodedOnceForAllItsArrays) {
    const struct {
        const char* data_class;
        const char* array_class;
        bool of_doubles;
        std::size_t width;
    } rows[] = {
        {"ScalarData", "ScalarArray", true, 1},   {"ScalarData", "ScalarArray", false, 1},
        {"Vector3Data", "Vector3Array", true, 3}, {"MappedData", "ScalarArray", false, 1},
        {"MappedData", "ScalarArray", true, 1},   {"ColorData", "Int3Array", false, 3},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.data_class);
        VolumeFile file;
        const std::size_t count = row.width * kBlocks;
        const std::string blob = row.of_doubles
                                     ? file.writer.Blob(std::vector<double>(count, 7))
                                     : file.writer.Blob(std::vector<std::int64_t>(count, 7));
        file.Add(row.data_class, "first", row.array_class, blob);
        file.Add(row.data_class, "second", row.array_class, blob);
        TemporaryFile stored(file.Bytes());
        Source source = open_stored(stored);
        const std::string text = source.variables.front().column->Text(0);
        EXPECT_NE(text, "");
        // Nothing more can be read from now on.
        stored.Rewrite("short");
        EXPECT_EQ(source.variables.back().column->Text(kBlocks - 1), text);
    }
}

TEST(Omf1Variables, ArraysOfSeveralWidthsMayClaimOneBlob) {
    VolumeFile file;
    const std::string blob = file.writer.Blob(std::vector<double>{1, 2, 3, 4, 5, 6});
    file.Add("ScalarData", "right", "ScalarArray", blob);
    file.Add("Vector3Data", "wrong", "Vector3Array", blob);
    Source source = open(file);
    EXPECT_EQ(source.variables.front().column->Text(kBlocks - 1), "6");
    EXPECT_EQ(source.variables.back().column->Text(kBlocks - 1), "");
}

}  // namespace
}  // namespace zol::engine::block
