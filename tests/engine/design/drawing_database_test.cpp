// Drawings as databases: what callers of the library are answered.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/zolDesignExport.h"
#include "tests/engine/temporary_file.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using zol::design::Database;
using zol::design::GetValidLayerName;
using zol::design::Layer;
using zol::design::Metadata;
using zol::design::Object;
using zol::design::ObjectDimension;
using zol::design::ObjectType;
using zol::design::Point;
using zol::graphics::RGB;
using zol::testing_support::TemporaryFile;

constexpr const char* kMine = "made_mine_design_r2010.dxf";

std::string sample(const std::string& name) {
    return std::string(ZOL_SAMPLES) + "/design/" + name;
}

std::array<double, 3> place(const Point& point) {
    std::array<double, 3> xyz{};
    point.GetXyz(&xyz[0], &xyz[1], &xyz[2]);
    return xyz;
}

testing::Matcher<std::array<double, 3>> near(double x, double y, double z) {
    constexpr double kTolerance = 1e-9;
    return ElementsAre(testing::DoubleNear(x, kTolerance), testing::DoubleNear(y, kTolerance),
                       testing::DoubleNear(z, kTolerance));
}

/// An object of the mine that the samples have in several forms; its layer and its database
/// are gone.
class MineObject {
public:
    MineObject(const std::string& layer_name, int index) {
        Database database;
        EXPECT_TRUE(database.Open(sample(kMine), "read"));
        Layer layer;
        EXPECT_TRUE(database.Get(layer_name, &layer)) << layer_name;
        EXPECT_TRUE(layer.GetObject(index, &object_));
    }

    Object* operator->() { return &object_; }
    Object& operator*() { return object_; }

private:
    Object object_;
};

TEST(DrawingDatabase, GivesLayersByNameAndPosition) {
    Database database;
    ASSERT_TRUE(database.Open(sample(kMine), "read"));
    EXPECT_THAT(database.GetLayerList(),
                ElementsAre("0", "Defpoints", "PIT_CREST", "PIT_TOE", "RAMP", "ANNOT", "SURVEY PTS",
                            "B\xC3\xB6schung", "$HIDDEN", "EMPTY_LAYER", "NOT_IN_TABLE"));
    EXPECT_EQ(database.NLayers(), 11);
    Layer layer;
    for (const char* const name : {"RAMP", "ramp", "$HIDDEN"}) {
        EXPECT_TRUE(database.Exists(name)) << name;
        EXPECT_TRUE(database.Get(name, &layer)) << name;
    }
    EXPECT_EQ(layer.GetName(), "$HIDDEN");
    EXPECT_EQ(layer.NObjects(), 1);
    EXPECT_FALSE(layer.IsEdited());
    for (const char* const name : {"RAMPS", " RAMP", ""}) {
        EXPECT_FALSE(database.Exists(name)) << name;
        EXPECT_FALSE(database.Get(name, &layer)) << name;
    }
    EXPECT_EQ(layer.NObjects(), 0) << "what is not got is empty";
    EXPECT_TRUE(database.Get(GetValidLayerName(" \tRAMP "), &layer));
    EXPECT_EQ(layer.NObjects(), 3);
    EXPECT_FALSE(database.Get(-1, &layer));
    EXPECT_FALSE(database.Get(11, &layer));
}

TEST(DrawingDatabase, SaysWhyItDoesNotOpen) {
    const TemporaryFile cut("0\nSECTION\n2\nENTITIES\n0\nLINE\n10");
    struct Case {
        std::string path;
        const char* mode;
        const char* reason;
    };
    const Case cases[] = {
        {"", "read", "No such file"},
        {sample("no_such.dxf"), "read", "No such file"},
        {cut.Path(), "read", "ends"},
        {sample(kMine), "write", "write"},
        {std::string(5000, 'n'), "read", "too long"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.path);
        Database database;
        EXPECT_FALSE(database.Open(row.path, row.mode));
        EXPECT_FALSE(database.IsOpen());
        EXPECT_TRUE(database.HasError());
        ASSERT_THAT(database.GetError(), SizeIs(testing::Ge(1U)));
        for (const std::string& line : database.GetError()) {
            EXPECT_FALSE(line.empty());
            EXPECT_EQ(line.find('\n'), line.npos) << line;
        }
        EXPECT_THAT(database.GetError().front(), HasSubstr(row.reason));
        std::vector<RGB> table(3);
        EXPECT_FALSE(database.GetColourTable(table));
        EXPECT_THAT(table, SizeIs(3));
        EXPECT_EQ(database.NLayers(), 0);
    }
}

TEST(DrawingDatabase, MayBeOpenedAgainAndClosedTwice) {
    Database database;
    EXPECT_FALSE(database.Open(sample("no_such.dxf"), "read"));
    EXPECT_TRUE(database.Open(sample(kMine), "read"));
    EXPECT_FALSE(database.HasError());
    EXPECT_EQ(database.GetName(), sample(kMine));
    for (const bool save : {true, false}) {
        database.Close(save);
        EXPECT_FALSE(database.IsOpen());
        EXPECT_FALSE(database.HasError());
        EXPECT_THAT(database.GetLayerList(), IsEmpty());
    }
}

TEST(DrawingDatabase, LayersAndObjectsOutliveIt) {
    auto database = std::make_unique<Database>();
    ASSERT_TRUE(database->Open(sample(kMine), "read"));
    auto layer = std::make_unique<Layer>();
    ASSERT_TRUE(database->Get("PIT_CREST", layer.get()));
    database->Close(false);
    Object first;
    ASSERT_TRUE(layer->GetObject(0, &first));
    database.reset();
    Object second;
    ASSERT_TRUE(layer->GetObject(1, &second));
    const Metadata metadata = second.GetMetadata();
    layer.reset();
    EXPECT_EQ(first.AsPolyline().NPoints(), 12);
    EXPECT_EQ(second.GetName(), "bench_1_PIT_CREST");
    second = Object();
    EXPECT_EQ(metadata.GetValue(1), "1");
}

TEST(DrawingObject, HasTraitsAndMetadata) {
    MineObject crest("PIT_CREST", 0);
    EXPECT_EQ(crest->GetType(), ObjectType::kPolyline);
    EXPECT_EQ(crest->GetName(), "bench_0_PIT_CREST");
    EXPECT_EQ(crest->GetGroup(), "phase1");
    EXPECT_EQ(crest->GetFeature(), "CREST");
    EXPECT_EQ(crest->GetDescription(), "bench at 100");
    EXPECT_EQ(crest->GetPrimitive(), "POLYLINE");
    EXPECT_EQ(crest->GetValue(), 100.0);
    EXPECT_EQ(crest->GetColour().index, 1);
    EXPECT_FALSE(crest->HasError());
    const Metadata metadata = crest->GetMetadata();
    ASSERT_EQ(metadata.NFields(), 2);
    const std::string real = metadata.GetField(0);
    EXPECT_EQ(metadata.GetFieldIndex(real), 0);
    EXPECT_EQ(metadata.GetValue(real), "100");
    EXPECT_TRUE(metadata.HasField(metadata.GetField(1)));
    EXPECT_FALSE(metadata.HasField("DESC")) << "it is the object's description";
    EXPECT_EQ(metadata.GetFieldIndex("none"), -1);
    EXPECT_EQ(metadata.GetValue("none"), "");
}

TEST(DrawingObject, OfNoLayerIsUnknownAndEmpty) {
    const Object object;
    EXPECT_EQ(object.GetType(), ObjectType::kUnknown);
    EXPECT_FALSE(object.IsPolyline() || object.IsText() || object.Is3DText() || object.IsArrow());
    EXPECT_FALSE(object.HasError());
    EXPECT_FALSE(object.GetMetadata().HasMetadata());
}

TEST(DrawingObject, ColouredByRedGreenAndBlueStandsBehindThePalette) {
    Database database;
    ASSERT_TRUE(database.Open(sample(kMine), "read"));
    std::vector<RGB> table;
    ASSERT_TRUE(database.GetColourTable(table));
    ASSERT_GT(table.size(), 256U);
    EXPECT_EQ(table[1].value, 0x0000FFU) << "red is the lowest byte";
    EXPECT_EQ(table[5].value, 0xFF0000U);
    // 420 is 3368601: 0x336699.
    const int index = MineObject("RAMP", 1)->GetColour().index;
    ASSERT_GE(index, 256);
    EXPECT_EQ(table.at(static_cast<std::size_t>(index)).value, 0x996633U);
}

TEST(DrawingPolyline, TellsPlacesBulgesAndMarks) {
    MineObject ramp("RAMP", 1);
    ASSERT_TRUE(ramp->IsPolyline());
    auto& line = ramp->AsPolyline();
    EXPECT_TRUE(line.GetPolylineFlagA());
    EXPECT_TRUE(line.GetPolylineFlagB(0));
    EXPECT_FALSE(line.GetPolylineFlagB(1)) << "from the first corner to the second";
    EXPECT_TRUE(line.GetPolylineFlagB(2));
    EXPECT_FALSE(line.GetPolylineFlagB(-1));
    EXPECT_FALSE(line.GetPolylineFlagB(line.NPoints() + 1));
    // A half circle round (500050, 7000000), and two of its bulges are told.
    int flattened = 0;
    std::vector<double> bulges;
    for (int i = 0; i < line.NPoints(); ++i) {
        const Point point = line.GetPoint(i);
        double x = 0;
        double y = 0;
        double z = 0;
        double bulge = 0;
        std::int32_t connection = -1;
        std::string name = "?";
        point.GetXyzwtn(&x, &y, &z, &bulge, &connection, &name);
        EXPECT_EQ(z, 75.0);
        EXPECT_EQ(connection, i == 0 ? 0 : 1);
        EXPECT_EQ(name, "");
        if (bulge != 0) bulges.push_back(bulge);
        flattened += line.IsPointKindTwo(i) ? 1 : 0;
        EXPECT_FALSE(line.IsPointKindOne(i));
        if (line.IsPointKindTwo(i) && x > 500050) {
            EXPECT_NEAR(std::hypot(x - 500050, y - 7000000), 50, 1e-9);
        }
    }
    EXPECT_THAT(bulges, ElementsAre(1.0, 0.5));
    EXPECT_EQ(line.NPoints(), 4 + flattened);

    MineObject crest("PIT_CREST", 0);
    EXPECT_EQ(crest->AsPolyline().NPoints(), 12);
    EXPECT_THAT(place(crest->AsPolyline().GetPoint(1)),
                ElementsAre(500173.20508075686, 7000100.0, 100.0));
    EXPECT_FALSE(crest->AsPolyline().GetPolylineFlagB(0));
}

TEST(DrawingText, TellsRecordsAndHowItStands) {
    MineObject plain("ANNOT", 0);
    ASSERT_TRUE(plain->IsText());
    EXPECT_EQ(plain->AsText().NRecords(), 1);
    EXPECT_EQ(plain->AsText().GetRecord(0), "Crest RL 100");
    EXPECT_EQ(plain->AsText().GetRecord(1), "") << "one past the last";
    EXPECT_THAT(place(plain->AsText().GetOrigin()), ElementsAre(500200.0, 7000000.0, 100.0));
    EXPECT_EQ(plain->AsText().GetTextNumberA(), 5.0);
    EXPECT_EQ(plain->AsText().GetTextNumberB(), 30.0);
    EXPECT_EQ(plain->AsText().GetTextNumberC(), 1.0);
    EXPECT_EQ(plain->AsText().GetTextStringB(), "baseline left");
    EXPECT_FALSE(plain->AsText().GetTextFlag());
    EXPECT_EQ(MineObject("ANNOT", 1)->AsText().GetTextStringB(), "middle centre");

    MineObject lines("ANNOT", 2);
    ASSERT_TRUE(lines->Is3DText());
    EXPECT_EQ(lines->As3DText().NRecords(), 3);
    EXPECT_EQ(lines->As3DText().GetRecord(1), "Line two bold");
    EXPECT_EQ(lines->As3DText().GetOriginPositionFirst(), 2);
    EXPECT_EQ(lines->As3DText().GetOriginPositionSecond(), 3);
    EXPECT_EQ(lines->As3DText().Get3DTextNumberA(), 3.0);

    MineObject upright("ANNOT", 3);
    ASSERT_TRUE(upright->Is3DText());
    EXPECT_THAT(place(upright->As3DText().GetNormal()), near(0, -1, 0));
    EXPECT_EQ(upright->As3DText().GetOriginPositionFirst(), 1);
    EXPECT_EQ(upright->As3DText().GetOriginPositionSecond(), 4);
}

const ObjectDimension& dimension_of(Object& object) {
    if (object.IsDimensionLine()) return object.AsDimensionLine();
    if (object.IsDimensionRadius()) return object.AsDimensionRadius();
    if (object.IsDimensionArc()) return object.AsDimensionArc();
    return object.AsDimensionAngle();
}

// The measures follow from the points of the file.
TEST(DrawingDimension, OfEveryKindTellsItsMeasure) {
    struct Case {
        int index;
        ObjectType type;
        double measure;
    };
    const Case cases[] = {
        {4, ObjectType::kDimensionLine, 30},
        {5, ObjectType::kDimensionLine, 50},
        {6, ObjectType::kDimensionRadius, 25},
        {7, ObjectType::kDimensionRadius, 50},
        {8, ObjectType::kDimensionAngle, 60},
        {9, ObjectType::kDimensionAngle, 90},
        {10, ObjectType::kDimensionArc, 31.41592653589793},
        {11, ObjectType::kDimensionLine, 7},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.index);
        MineObject object("ANNOT", row.index);
        ASSERT_EQ(object->GetType(), row.type);
        EXPECT_NEAR(dimension_of(*object).GetDimensionNumberA(), row.measure, 1e-6);
        EXPECT_FALSE(dimension_of(*object).GetDimensionTextA().empty());
        EXPECT_GT(dimension_of(*object).GetDimensionTextNumber(), 0);
    }
}

TEST(DrawingDimension, TellsWhereItStands) {
    MineObject linear("ANNOT", 4);
    EXPECT_THAT(place(linear->AsDimensionLine().GetStart()), near(500000, 6999980, 0));
    EXPECT_THAT(place(linear->AsDimensionLine().GetEnd()), near(500030, 6999980, 0));
    EXPECT_THAT(place(linear->AsDimensionLine().GetNormal()), near(0, 0, 1));
    EXPECT_EQ(linear->AsDimensionRadius().GetDimensionTextA(),
              linear->AsDimensionLine().GetDimensionTextA())
        << "a line dimension taken for one of a radius tells its own text";
    EXPECT_EQ(linear->AsDimensionRadius().GetDimensionNumberA(), 30.0);

    MineObject angle("ANNOT", 9);
    EXPECT_THAT(place(angle->AsDimensionAngle().GetOrigin()), near(500000, 7000000, 0));
}

TEST(DrawingArrow, TellsItsHeadInThreeMeasures) {
    MineObject leader("ANNOT", 12);
    ASSERT_TRUE(leader->IsArrow());
    auto& arrow = leader->AsArrow();
    EXPECT_THAT(place(arrow.GetStart()), ElementsAre(500010.0, 7000010.0, 70.0));
    EXPECT_THAT(place(arrow.GetEnd()), ElementsAre(500030.0, 7000025.0, 72.0));
    EXPECT_THAT(place(arrow.GetNormal()), near(0, 0, 1));
    EXPECT_TRUE(arrow.GetArrowFlagA());
    EXPECT_FALSE(arrow.GetArrowFlagB());
    EXPECT_EQ(arrow.GetArrowCodeA(), 3);
    EXPECT_GT(arrow.GetHeadFirst(), 0);
    EXPECT_DOUBLE_EQ(arrow.GetHeadSecond() * 3, arrow.GetHeadFirst());
    EXPECT_DOUBLE_EQ(arrow.GetRelativeHeadFirst(),
                     arrow.GetScaledHeadFirst() / std::sqrt(20.0 * 20 + 15 * 15 + 2 * 2));
}

/// Asks everything that the object's kind answers; gives the number of points and records.
int ask_all(Object& object) {
    EXPECT_FALSE(object.HasError());
    EXPECT_NE(object.GetType(), ObjectType::kUnknown);
    if (object.IsPolyline()) {
        auto& line = object.AsPolyline();
        for (int i = 0; i < line.NPoints(); ++i) place(line.GetPoint(i));
        return line.NPoints();
    }
    if (object.IsText()) return object.AsText().NRecords();
    if (object.Is3DText()) return object.As3DText().NRecords();
    if (object.IsArrow()) return object.AsArrow().GetHeadFirst() > 0 ? 1 : 0;
    return dimension_of(object).GetDimensionTextNumber() > 0 ? 1 : 0;
}

TEST(DrawingDatabase, OfEverySampleIsWalked) {
    int objects = 0;
    for (const auto& entry : std::filesystem::directory_iterator(sample(""))) {
        std::string ending = entry.path().extension().string();
        if (ending != ".dxf" && ending != ".DXF") continue;
        SCOPED_TRACE(entry.path().filename().string());
        Database database;
        ASSERT_TRUE(database.Open(entry.path().string(), "read"));
        std::vector<RGB> table;
        ASSERT_TRUE(database.GetColourTable(table));
        for (int i = 0; i < database.NLayers(); ++i) {
            Layer layer;
            ASSERT_TRUE(database.Get(i, &layer));
            for (int j = 0; j < layer.NObjects(); ++j) {
                Object object;
                ASSERT_TRUE(layer.GetObject(j, &object));
                EXPECT_GT(ask_all(object), 0);
                EXPECT_LT(static_cast<std::size_t>(object.GetColour().index), table.size());
                ++objects;
            }
        }
    }
    EXPECT_GT(objects, 300);
}

}  // namespace
