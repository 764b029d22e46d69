// The model as a whole: members in order, zeros in their places, schemas counted.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "tests/api/pending_error.h"
#include "tests/block/fixture.h"

namespace zol::testing {
namespace {

using geometry::Coord3D;
using geometry::Extent;
using geometry::Point3I;
using Six = std::array<double, 6>;
using Three = std::array<double, 3>;

class GeometryTest : public BlockModelTest {};

TEST_F(GeometryTest, MembersGoOutInOrder) {
    doubles::script.extent = Extent(1, 2, 3, 4, 5, 6);
    doubles::script.origin = Coord3D(7, 8, 9);
    doubles::script.orientation = Coord3D(30, 20, 10);
    Six box;
    EXPECT_EQ(ZOL_BlockModel_GetModelExtent(handle_, &box[0], &box[1], &box[2], &box[3], &box[4],
                                            &box[5]),
              0);
    EXPECT_EQ(box, (Six{1, 2, 3, 4, 5, 6}));
    Three point;
    EXPECT_EQ(ZOL_BlockModel_GetModelOrigin(handle_, &point[0], &point[1], &point[2]), 0);
    EXPECT_EQ(point, (Three{7, 8, 9}));
    EXPECT_EQ(ZOL_BlockModel_GetModelOrientation(handle_, &point[0], &point[1], &point[2]), 0);
    EXPECT_EQ(point, (Three{30, 20, 10}));
}

TEST_F(GeometryTest, EachConversionGoesItsOwnWay) {
    doubles::script.to_world_shift = 100;
    doubles::script.to_model_shift = -100;
    const double x = 1, y = 2, z = 3;
    Three out;
    EXPECT_EQ(ZOL_BlockModel_ModelToWorld(handle_, &x, &y, &z, &out[0], &out[1], &out[2]), 0);
    EXPECT_EQ(out, (Three{101, 102, 103}));
    EXPECT_EQ(ZOL_BlockModel_WorldToModel(handle_, &x, &y, &z, &out[0], &out[1], &out[2]), 0);
    EXPECT_EQ(out, (Three{-99, -98, -97}));
}

TEST_F(GeometryTest, ConvertingAPointInPlaceConvertsZero) {
    for (const auto convert : {ZOL_BlockModel_ModelToWorld, ZOL_BlockModel_WorldToModel}) {
        double x = 1, y = 2, z = 3;
        convert(handle_, &x, &y, &z, &x, &y, &z);
    }
    EXPECT_EQ(doubles::journal,
              (std::vector<std::string>{"Model::ToWorld 0 0 0", "Model::ToModel 0 0 0"}));
}

TEST_F(GeometryTest, CountsOfBlocksKeepTheir64Bits) {
    doubles::script.blocks = 5'000'000'000;
    EXPECT_EQ(ZOL_BlockModel_NBlocks(handle_), 5'000'000'000);
}

TEST_F(GeometryTest, StratigraphicIsWhatTheModelSays) {
    for (const bool strat : {false, true}) {
        doubles::script.strat = strat;
        EXPECT_EQ(ZOL_BlockModel_IsStratigraphicModel(handle_), strat ? 1 : 0);
    }
}

/// A function that looks a schema up; it writes the first of the outputs.
struct Lookup {
    std::string name;
    std::size_t outputs;
    int (*get)(BlockModelHandle* handle, const int* index, Six& out);
};

const Lookup kLookups[] = {
    {"ZOL_BlockModel_GetSchemaExtent", 6,
     [](BlockModelHandle* handle, const int* index, Six& out) {
         return ZOL_BlockModel_GetSchemaExtent(handle, index, &out[0], &out[1], &out[2], &out[3],
                                               &out[4], &out[5]);
     }},
    {"ZOL_BlockModel_GetSchemaDimensions", 3,
     [](BlockModelHandle* handle, const int* index, Six& out) {
         return ZOL_BlockModel_GetSchemaDimensions(handle, index, &out[0], &out[1], &out[2]);
     }},
    {"ZOL_BlockModel_GetSchemaSizes", 6,
     [](BlockModelHandle* handle, const int* index, Six& out) {
         return ZOL_BlockModel_GetSchemaSizes(handle, index, &out[0], &out[1], &out[2], &out[3],
                                              &out[4], &out[5]);
     }},
};

/// A schema whose every answer begins with its position and goes on 50, 60, 70, 80, 90.
doubles::ScriptedSchema schema_at(int position, bool original) {
    return {.original = original,
            .extent = Extent(position, 50, 60, 70, 80, 90),
            .dimensions = Point3I{position, 50, 60},
            .least = Coord3D(position, 50, 60),
            .greatest = Coord3D(70, 80, 90)};
}

/// Schemas of a model, and the position that each index finds from 0 on; kNone where
/// the index passes and finds nothing.
struct Schemas {
    std::vector<bool> original;
    int count;
    std::vector<int> found;
};
constexpr int kNone = -1;

/// `found` is a position, kNone, or nothing for an index that fails.
void expect_lookup(BlockModelHandle* handle, const Lookup& lookup, int index,
                   std::optional<int> found) {
    SCOPED_TRACE(lookup.name + " " + std::to_string(index));
    const bool finds = found && *found != kNone;
    Six expected;
    expected.fill(-7);
    Six out = expected;
    if (finds) {
        const Six answers{static_cast<double>(*found), 50, 60, 70, 80, 90};
        std::copy_n(answers.begin(), lookup.outputs, expected.begin());
    }
    make_error_pending();
    EXPECT_EQ(lookup.get(handle, &index, out), finds ? 0 : 1);
    EXPECT_EQ(pending_error(), found ? "" : lookup.name + " Invalid index.");
    EXPECT_EQ(out, expected);
}

TEST_F(GeometryTest, SchemaIndexesCountOriginalSchemasAndAreTestedAgainstAll) {
    const Schemas cases[] = {
        {{}, 1, {}},
        {{true}, 1, {0}},
        {{false}, 1, {kNone}},
        {{true, true, true}, 3, {0, 1, 2}},
        {{true, false, false}, 1, {0, kNone, kNone}},
        {{false, true}, 2, {1, kNone}},
        {{true, false, true}, 2, {0, 2, kNone}},
    };
    for (const Schemas& schemas : cases) {
        SCOPED_TRACE(::testing::PrintToString(schemas.original));
        doubles::script.schemas.clear();
        for (const bool original : schemas.original) {
            const int position = static_cast<int>(doubles::script.schemas.size());
            doubles::script.schemas.push_back(schema_at(position, original));
        }
        EXPECT_EQ(ZOL_BlockModel_NSchemas(handle_), schemas.count);
        const int all = static_cast<int>(schemas.original.size());
        for (const Lookup& lookup : kLookups) {
            expect_lookup(handle_, lookup, -1, {});
            for (int index = 0; index < all; ++index) {
                expect_lookup(handle_, lookup, index,
                              schemas.found[static_cast<std::size_t>(index)]);
            }
            expect_lookup(handle_, lookup, all, {});
        }
    }
}

TEST_F(GeometryTest, AMatchIsLeftInPeace) {
    BeginMatch();
    double x = 0, y = 0, z = 0;
    ZOL_BlockModel_GetModelOrigin(handle_, &x, &y, &z);
    ZOL_BlockModel_NBlocks(handle_);
    EXPECT_NE(handle_->match, nullptr);
    EXPECT_EQ(doubles::journal,
              (std::vector<std::string>{"Model::GetModelOrigin", "Model::NBlocks"}));
}

}  // namespace
}  // namespace zol::testing
