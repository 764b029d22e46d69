#include "engine/block/omf1_source.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/formats/read_error.h"
#include "tests/engine/block/volume_file.h"

namespace zol::engine::block {
namespace {

using geometry::Coord3D;
using geometry::Extent;
using testing::ElementsAre;
using testing::HasSubstr;

std::vector<double> corners(const Extent& box) {
    return {box.x0, box.y0, box.z0, box.x1, box.y1, box.z1};
}

void expect_near(const Coord3D& actual, const Coord3D& expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-12);
    EXPECT_NEAR(actual.y, expected.y, 1e-12);
    EXPECT_NEAR(actual.z, expected.z, 1e-12);
}

TEST(Omf1Source, ReadsARealFile) {
    const auto file = std::make_shared<File>(ZOL_SAMPLES "/omf/test_file.omf");
    Source source = open_omf1(file, "vol");
    EXPECT_EQ(source.name, "vol");
    expect_near(source.placement.Origin(), {10, 10, -10});
    EXPECT_FALSE(source.placement.IsRotated());
    ASSERT_EQ(source.geometry->NBlocks(), 3000);
    EXPECT_THAT(corners(source.extent), ElementsAre(0, 0, 0, 10, 15, 20));
    ASSERT_EQ(source.schemas.size(), 1U);
    EXPECT_EQ(source.schemas[0].dimensions.y, 15);
    EXPECT_EQ(source.schemas[0].maximum_size.z, 1);
    EXPECT_THAT(corners(source.geometry->BlockExtent(1)), ElementsAre(1, 0, 0, 2, 1, 1));
    ASSERT_THAT(names_of(source), ElementsAre("Random Data"));
    Variable& data = source.variables[0];
    EXPECT_EQ(data.storage, Storage::Double);
    EXPECT_EQ(data.column->Number(0), 0.6690738153210025);
    EXPECT_EQ(data.column->Text(1), "0.09117767621511763");
    EXPECT_GE(data.column->Number(2999), 0.0);
}

TEST(Omf1Source, PlacesVolumesInTheWorld) {
    struct Row {
        const char* name;
        const char* axes;
        Coord3D angles;
        /// Of the model's lower corner, and of block 0's centroid: the file's first cell.
        Coord3D origin;
        Coord3D first_centroid;
    };
    // Cells of 10 x 5 x (2 and 4); origins add up to (101, 202, 303).
    const Row rows[] = {
        {"plain", "", {0, 0, 0}, {101, 202, 303}, {106, 204.5, 304}},
        {"turned",
         R"(,"axis_u":[0,1,0],"axis_v":[-1,0,0],"axis_w":[0,0,1])",
         {90, 0, 0},
         {101, 202, 303},
         {98.5, 207, 304}},
        {"tilted",
         R"(,"axis_u":[0.8,0,-0.6],"axis_v":[0,1,0],"axis_w":[0.6,0,0.8])",
         {0, 36.86989764584402, 0},
         {101, 202, 303},
         {105.6, 204.5, 300.8}},
        {"downward", R"(,"axis_w":[0,0,-1])", {0, 0, 0}, {101, 202, 297}, {106, 204.5, 302}},
        {"swapped",
         R"(,"axis_u":[0,1,0],"axis_v":[1,0,0])",
         {90, 0, 180},
         {101, 202, 309},
         {103.5, 207, 304}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        VolumeFile file;
        file.project = R"(,"origin":[1,2,3])";
        file.geometry =
            R"("tensor_u":[10,10,10],"tensor_v":[5,5],"tensor_w":[2,4],"origin":[100,200,300])";
        file.geometry += row.axes;
        Source source = open(file);
        expect_near(source.placement.Origin(), row.origin);
        expect_near(source.placement.Angles(), row.angles);
        EXPECT_THAT(corners(source.extent), ElementsAre(0, 0, 0, 30, 10, 6));
        const Extent box = source.geometry->BlockExtent(0);
        const Coord3D middle((box.x0 + box.x1) / 2, (box.y0 + box.y1) / 2, (box.z0 + box.z1) / 2);
        const Coord3D world = source.placement.ToWorld(middle.x, middle.y, middle.z);
        expect_near(world, row.first_centroid);
        EXPECT_EQ(source.geometry->Find(source.placement.ToModel(world.x, world.y, world.z)), 0);
    }
}

TEST(Omf1Source, TakesTheOrderOfCellsFromASidecar) {
    VolumeFile file;
    file.geometry = R"("tensor_u":[1,1,1],"tensor_v":[1,1],"tensor_w":[1,3],"axis_w":[0,0,-1])";
    TemporaryFile stored(file.Bytes());
    stored.WriteSidecar(R"({"other":[],"block:model":{"order":"zyx","more":1}})");
    Source source = open_stored(stored);
    // w runs against the model's z, so block 0 is the upper one, of width 1.
    EXPECT_THAT(corners(source.geometry->BlockExtent(0)), ElementsAre(0, 0, 3, 1, 1, 4));
    EXPECT_THAT(corners(source.geometry->BlockExtent(1)), ElementsAre(0, 0, 0, 1, 1, 3));
    EXPECT_THAT(corners(source.geometry->BlockExtent(2)), ElementsAre(0, 1, 3, 1, 2, 4));

    EXPECT_THAT(fault_of(file, "", R"({"block:model":{"order":"zzx"}})"),
                HasSubstr(".json: $[\"block:model\"].order is no order"));
    EXPECT_THAT(fault_of(file, "", R"({"block:model":[]})"), HasSubstr("$[\"block:model\"] is"));
    EXPECT_THAT(fault_of(file, "", "{"), HasSubstr(".json: not JSON at byte 1"));

    constexpr std::uintmax_t kOneTooMany = (std::uintmax_t{64} << 20) + 1;
    std::filesystem::resize_file(stored.Path() + ".json", kOneTooMany);
    EXPECT_THAT(fault_of_stored(stored), HasSubstr(".json: the file is too large for a sidecar"));
}

TEST(Omf1Source, RefusesWhatIsNoVolume) {
    EXPECT_THAT(fault_of({}, "topo"),
                HasSubstr(R"(no volume "topo"; its elements are "topo" (SurfaceElement), "ore")"));
    struct Row {
        const char* geometry;
        const char* fault;
    };
    const Row rows[] = {
        {R"("tensor_u":[1],"tensor_v":[1])", "$.g has no \"tensor_w\""},
        {R"("tensor_u":[1],"tensor_v":[1],"tensor_w":[])", "$.g.tensor_w is empty"},
        {R"("tensor_u":[1],"tensor_v":[1,0],"tensor_w":[1])", "$.g.tensor_v[1] is no width"},
        {R"("tensor_u":[-1],"tensor_v":[1],"tensor_w":[1])", "$.g.tensor_u[0] is no width"},
        {R"("tensor_u":[NaN],"tensor_v":[1],"tensor_w":[1])", "$.g.tensor_u[0] is no width"},
        {R"("tensor_u":[Infinity],"tensor_v":[1],"tensor_w":[1])", "$.g.tensor_u[0] is no width"},
        {R"("tensor_u":["1"],"tensor_v":[1],"tensor_w":[1])", "$.g.tensor_u[0] is a text"},
        {R"("tensor_u":[1],"tensor_v":[1],"tensor_w":[1],"axis_u":[2,0,0])", "not of length 1"},
        {R"("tensor_u":[1],"tensor_v":[1],"tensor_w":[1],"axis_u":[0.6,-0.8,0])", "right angles"},
        {R"("tensor_u":[1],"tensor_v":[1],"tensor_w":[1],"axis_u":[1,0])", "3 are expected"},
        {R"("tensor_u":[1],"tensor_v":[1],"tensor_w":[1],"origin":[0,NaN,0])", "not finite"},
    };
    for (const Row& row : rows) {
        VolumeFile file;
        file.geometry = row.geometry;
        EXPECT_THAT(fault_of(file), HasSubstr(row.fault));
    }
    VolumeFile vast;
    std::string ones = "1";
    for (int i = 1; i < 1626; ++i) ones += ",1";
    vast.geometry =
        "\"tensor_u\":[" + ones + "],\"tensor_v\":[" + ones + "],\"tensor_w\":[" + ones + "]";
    EXPECT_THAT(fault_of(vast), HasSubstr("more than 4294967294 cells"));
}

/// Opens a file and reads all of it; ReadError is the only other way out.
void read_whole(const std::string& bytes) {
    const TemporaryFile stored(bytes);
    try {
        Source source = open_stored(stored);
        for (std::int64_t block = 0; block < source.geometry->NBlocks(); ++block) {
            source.geometry->Find({0, 0, 0});
            for (const Variable& variable : source.variables) variable.column->Text(block);
        }
    } catch (const ReadError&) {
    }
}

TEST(Omf1Source, SurvivesTruncatedAndAlteredFiles) {
    VolumeFile file;
    file.Add("ScalarData", "n", "ScalarArray",
             file.writer.Blob(std::vector<double>{1, 2, 3, 4, 5, 6}));
    file.Add("StringData", "t", "StringArray", R"(["a","b","c","d","e","f"])");
    const std::string good = file.Bytes();
    for (std::size_t length = 0; length < good.size(); ++length) {
        const TemporaryFile stored(std::string_view(good).substr(0, length));
        ASSERT_THROW(open_stored(stored), ReadError) << length;
    }
    for (std::size_t at = 0; at < good.size(); ++at) {
        std::string bytes = good;
        bytes[at] = static_cast<char>(bytes[at] ^ "\x01\x10\x80"[at % 3]);
        read_whole(bytes);
    }
}

}  // namespace
}  // namespace zol::engine::block
