// Line sets and point sets of OMF 1 as databases.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/zolDesignExport.h"
#include "tests/engine/omf1_writer.h"
#include "tests/engine/temporary_file.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using zol::design::Database;
using zol::design::Layer;
using zol::design::Object;
using zol::graphics::RGB;
using zol::testing_support::Omf1Writer;
using zol::testing_support::TemporaryFile;
using Whole = std::vector<std::int64_t>;
using Real = std::vector<double>;

constexpr const char* kAtVertices = R"("location":"vertices")";
constexpr const char* kAtSegments = R"("location":"segments")";

std::string named(const char* name, const char* place) {
    return std::string("\"name\":\"") + name + "\"," + place;
}

/// A file with one element whose parts a test chooses.
struct SetFile {
    /// An array of the class with what is in it, and data of it with further members.
    void AddData(const std::string& data_class, const std::string& members_of_data,
                 const std::string& array_class, const std::string& array) {
        const std::string key = "data" + std::to_string(n_data++);
        writer.Object(key + "a", array_class, "\"array\":" + array);
        writer.Object(key, data_class, "\"array\":\"" + key + "a\"," + members_of_data);
        data += (data.empty() ? "\"" : ",\"") + key + "\"";
    }

    std::string Bytes() {
        const std::string kind = is_lines ? "LineSet" : "PointSet";
        writer.Object("p", "Project", R"("origin":[1000,2000,0],"elements":["e"])");
        writer.Object("v", "Vector3Array", "\"array\":" + writer.Blob(vertices));
        std::string shape = "\"vertices\":\"v\"" + geometry;
        if (is_lines) {
            writer.Object("s", "Int2Array", "\"array\":" + writer.Blob(segments));
            shape += R"(,"segments":"s")";
        }
        writer.Object("g", kind + "Geometry", shape);
        writer.Object("e", kind + "Element", R"("geometry":"g","data":[)" + data + "]," + members);
        return writer.Bytes();
    }

    bool is_lines = true;
    Real vertices = {0, 0, 5, 10, 0, 6, 10, 10, 7, 0, 10, 8, 50, 0, 9, 60, 0, 10};
    Whole segments = {0, 1, 1, 2, 2, 0, 0, 3, 3, 4, 5, 4};
    /// Members of the element besides geometry and data, and of the geometry.
    std::string members = R"("name":"Strings","color":[10,20,30])";
    std::string geometry;
    Omf1Writer writer;
    std::string data;
    int n_data = 0;
};

/// The one layer of a file, whose database is closed.
class OneLayer {
public:
    explicit OneLayer(SetFile& content) : file_(content.Bytes()) {
        Database database;
        EXPECT_TRUE(database.Open(file_.Path(), "read"));
        EXPECT_EQ(database.NLayers(), 1);
        EXPECT_TRUE(database.Get(0, &layer_));
        database.GetColourTable(table_);
    }

    Layer& operator*() { return layer_; }
    void Get(int index, Object& object) { ASSERT_TRUE(layer_.GetObject(index, &object)); }
    /// 0xBBGGRR
    std::uint32_t ColourOf(const Object& object) const {
        return table_.at(static_cast<std::size_t>(object.GetColour().index)).value;
    }

private:
    TemporaryFile file_;
    Layer layer_;
    std::vector<RGB> table_;
};

using Places = std::vector<std::array<double, 3>>;

Places points_of(Object& object) {
    Places points;
    for (int i = 0; i < object.AsPolyline().NPoints(); ++i) {
        std::array<double, 3> xyz{};
        object.AsPolyline().GetPoint(i).GetXyz(&xyz[0], &xyz[1], &xyz[2]);
        points.push_back(xyz);
    }
    return points;
}

TEST(Omf1Design, JoinsSegmentsToPolylinesInTheOrderOfTheFile) {
    SetFile content;
    content.geometry = R"(,"origin":[0,0,100])";
    content.members = R"("name":"Strings","description":"of the pit","subtype":"borehole")";
    OneLayer layer(content);
    EXPECT_EQ((*layer).GetName(), "Strings");
    EXPECT_EQ((*layer).GetDescription(), "of the pit");
    ASSERT_EQ((*layer).NObjects(), 3);
    struct Case {
        bool is_closed;
        Places points;
    };
    const Case cases[] = {
        {true, {{1000, 2000, 105}, {1010, 2000, 106}, {1010, 2010, 107}}},
        {false, {{1000, 2000, 105}, {1000, 2010, 108}, {1050, 2000, 109}}},
        {false, {{1060, 2000, 110}, {1050, 2000, 109}}},
    };
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        Object object;
        layer.Get(i, object);
        ASSERT_TRUE(object.IsPolyline());
        EXPECT_EQ(object.AsPolyline().GetPolylineFlagA(), cases[i].is_closed);
        EXPECT_EQ(points_of(object), cases[i].points);
        EXPECT_EQ(object.GetName(), std::to_string(i + 1));
        EXPECT_EQ(object.GetValue(), cases[i].points[0][2]);
        EXPECT_EQ(object.GetPrimitive(), "LineSet");
        EXPECT_EQ(object.GetFeature(), "borehole");
    }
}

TEST(Omf1Design, DoesNotCloseALineThatGoesThereAndBack) {
    SetFile content;
    content.segments = {0, 1, 1, 0, 2, 2};
    OneLayer layer(content);
    ASSERT_EQ((*layer).NObjects(), 2);
    Object there_and_back;
    layer.Get(0, there_and_back);
    EXPECT_EQ(points_of(there_and_back).size(), 3U);
    EXPECT_FALSE(there_and_back.AsPolyline().GetPolylineFlagA());
}

TEST(Omf1Design, GivesALineTheDataThatAllOfItHas) {
    SetFile content;
    Omf1Writer& writer = content.writer;
    content.AddData("ScalarData", named("grade", kAtSegments), "ScalarArray",
                    writer.Blob(Real{1.5, 1.5, 1.5, 2, 3, 0.1}));
    content.AddData("StringData", named("Name", kAtSegments), "StringArray",
                    R"(["a","a","a","b","c",""])");
    content.AddData("MappedData", named("rock", kAtVertices) + R"(,"legends":["l"])", "ScalarArray",
                    writer.Blob(Whole{0, 0, 0, 1, 7, 7}));
    writer.Object("l", "Legend", R"("values":"lv")");
    writer.Object("lv", "StringArray", R"("array":["ore","waste"])");
    content.AddData(
        "ColorData", named("tint", kAtSegments), "Int3Array",
        writer.Blob(Whole{255, 0, 0, 255, 0, 0, 255, 0, 0, 1, 1, 1, 2, 2, 2, 0, 300, -5}));
    OneLayer layer(content);
    struct Case {
        const char* name;
        const char* grade;
        const char* rock;
        std::uint32_t colour;
    };
    const Case cases[] = {
        {"a", "1.5", "ore", 0x0000FF},
        {"2", "", "", 0x1E140A},
        {"3", "0.1", "7", 0x00FF00},
    };
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        Object object;
        layer.Get(i, object);
        EXPECT_EQ(object.GetName(), cases[i].name);
        EXPECT_EQ(object.GetMetadata().GetValue("grade"), cases[i].grade);
        EXPECT_EQ(object.GetMetadata().HasField("grade"), cases[i].grade[0] != '\0');
        EXPECT_EQ(object.GetMetadata().GetValue("rock"), cases[i].rock);
        EXPECT_FALSE(object.GetMetadata().HasField("Name"));
        EXPECT_EQ(layer.ColourOf(object), cases[i].colour);
    }
}

TEST(Omf1Design, GivesAPointItsOwnData) {
    SetFile content;
    content.is_lines = false;
    content.vertices = {1, 2, 3, 4, 5, 6};
    Omf1Writer& writer = content.writer;
    content.AddData("ScalarData", named("value", kAtVertices), "ScalarArray",
                    writer.Blob(Real{-7.25, std::nan("")}));
    content.AddData("Vector2Data", named("dip", kAtVertices), "Vector2Array",
                    writer.Blob(Real{1, 2, 3, 4}));
    content.AddData("DateTimeData", kAtVertices, "DateTimeArray",
                    R"(["2020-01-02T03:04:05Z",null])");
    content.AddData("ColorData", kAtVertices, "ColorArray", "[[1,2,3],null]");
    content.AddData("ColorData", kAtVertices, "Int3Array",
                    writer.Blob(Whole{16, 17, 18, 19, 20, 21}));
    OneLayer layer(content);
    ASSERT_EQ((*layer).NObjects(), 2);
    Object first;
    layer.Get(0, first);
    Object second;
    layer.Get(1, second);
    EXPECT_EQ(points_of(first), (Places{{1001, 2002, 3}}));
    EXPECT_EQ(points_of(second), (Places{{1004, 2005, 6}}));
    EXPECT_EQ(first.GetValue(), -7.25);
    EXPECT_EQ(second.GetValue(), 6) << "its height, where the value is missing";
    const auto metadata = first.GetMetadata();
    ASSERT_EQ(metadata.NFields(), 4);
    EXPECT_EQ(metadata.GetValue("dip.y"), "2");
    EXPECT_EQ(metadata.GetValue("data 3"), "2020-01-02T03:04:05Z");
    EXPECT_EQ(metadata.GetValue("data 5"), "#101112FF");
    EXPECT_FALSE(second.GetMetadata().HasField("data 3"));
    EXPECT_EQ(layer.ColourOf(first), 0x030201U);
    EXPECT_EQ(layer.ColourOf(second), 0x1E140AU);
}

TEST(Omf1Design, RefusesLayersThatDoNotAddUp) {
    struct Case {
        const char* name;
        void (*spoil)(SetFile&);
        const char* reason;
    };
    const Case cases[] = {
        {"an index too high", [](SetFile& f) { f.segments[1] = 6; },
         "segment 0 names point 6; there are 6"},
        {"an index below 0", [](SetFile& f) { f.segments[2] = -1; }, "segment 1 names point -1"},
        {"half a segment", [](SetFile& f) { f.segments.pop_back(); }, "no rows of 16"},
        {"half a vertex", [](SetFile& f) { f.vertices.pop_back(); }, "no rows of 24"},
        {"no number", [](SetFile& f) { f.vertices[4] = std::nan(""); }, "point 1: a coordinate"},
        {"too far out", [](SetFile& f) { f.geometry = R"(,"origin":[1e200,0,0])"; }, "too far out"},
        {"too few data",
         [](SetFile& f) {
             f.AddData("ScalarData", kAtSegments, "ScalarArray", f.writer.Blob(Real{1, 2}));
         },
         "holds 16 bytes, 48 are expected"},
        {"too few texts",
         [](SetFile& f) { f.AddData("StringData", kAtVertices, "StringArray", R"(["a"])"); },
         "has 1 items, 6 are expected"},
        {"too few colours",
         [](SetFile& f) { f.AddData("ColorData", kAtVertices, "ColorArray", "[[1,2,3]]"); },
         "refers to 1 colours, 6 are expected"},
        {"data of faces",
         [](SetFile& f) {
             f.AddData("StringData", R"("location":"faces")", "StringArray", R"(["a"])");
         },
         "of which the element has none"},
        {"segments of points",
         [](SetFile& f) {
             f.is_lines = false;
             f.AddData("StringData", kAtSegments, "StringArray", "[]");
         },
         "of which the element has none"},
        {"a colour beyond 255", [](SetFile& f) { f.members = R"("name":"a","color":[1,2,256])"; },
         "not from 0 to 255"},
    };
    const TemporaryFile diagnostics("");
    setenv("ZOL_DIAGNOSTICS", diagnostics.Path().c_str(), 1);
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        std::filesystem::resize_file(diagnostics.Path(), 0);
        SetFile content;
        row.spoil(content);
        const TemporaryFile file(content.Bytes());
        Database database;
        Layer layer;
        EXPECT_TRUE(database.Open(file.Path(), "read")) << "another layer may be good";
        EXPECT_FALSE(database.Get(0, &layer));
        std::ifstream said(diagnostics.Path());
        EXPECT_THAT(std::string(std::istreambuf_iterator<char>(said), {}), HasSubstr(row.reason));
    }
    unsetenv("ZOL_DIAGNOSTICS");
}

TEST(Omf1Design, RefusesAFileWithoutLayers) {
    Omf1Writer writer;
    writer.Object("p", "Project", R"("elements":["e"])");
    writer.Object("e", "SurfaceElement", R"("name":"relief")");
    const TemporaryFile file(writer.Bytes());
    Database database;
    EXPECT_FALSE(database.Open(file.Path(), "read"));
    EXPECT_THAT(database.GetError(), ElementsAre(HasSubstr("\"relief\" (SurfaceElement)")));
}

// Written by the format's own library; the figures were decoded by other means.
TEST(Omf1Design, ReadsASample) {
    Database database;
    ASSERT_TRUE(database.Open(std::string(ZOL_SAMPLES) + "/omf/test_file.omf", "read"));
    EXPECT_THAT(database.GetLayerList(), ElementsAre("Random Points", "Random Line"));
    std::vector<RGB> table;
    ASSERT_TRUE(database.GetColourTable(table));
    Layer points;
    ASSERT_TRUE(database.Get("Random Points", &points));
    ASSERT_EQ(points.NObjects(), 100);
    Object first;
    ASSERT_TRUE(points.GetObject(0, &first));
    EXPECT_EQ(points_of(first),
              (Places{{0.022818273948950307, 0.6018914284572072, 0.09682581726225747}}));
    EXPECT_EQ(first.GetMetadata().GetValue("rand data"), "0.8526999807826635");
    EXPECT_EQ(table.at(static_cast<std::size_t>(first.GetColour().index)).value, 0x008000U);
    Layer lines;
    ASSERT_TRUE(database.Get("Random Line", &lines));
    EXPECT_FALSE(database.Get("random line", &lines));
}

}  // namespace
