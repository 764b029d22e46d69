// What every export of the family has in common: the frame, and the test of the kind.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "api/counted_functions.h"
#include "tests/design/export_table.h"
#include "tests/design/fixture.h"

namespace zol::testing {
namespace {

using doubles::design_journal;
using doubles::design_script;

class DesignSweepTest : public DesignFixture {};

TEST_F(DesignSweepTest, TheTablesHoldEveryCountedFunctionOfTheFamily) {
    expect_rows_named(database_family(), api::kCountedFunctions);
    expect_rows_named(layer_family(), api::kCountedFunctions);
    expect_rows_named(object_family(), api::kCountedFunctions);
}

TEST_F(DesignSweepTest, WithoutAnythingBehindTheHandleEachFailsInItsOwnWords) {
    DatabaseHandle database;
    LayerHandle layer;
    ObjectHandle object;
    expect_failure_of_undefined(database_family(),
                                {static_cast<DatabaseHandle*>(nullptr), &database});
    expect_failure_of_undefined(layer_family(), {static_cast<LayerHandle*>(nullptr), &layer});
    expect_failure_of_undefined(object_family(), {static_cast<ObjectHandle*>(nullptr), &object});
}

TEST_F(DesignSweepTest, ASuccessEmptiesTheErrorAndLogsTheOwnNameOnce) {
    script_design();
    expect_success_of_all(database_family());
    expect_success_of_all(layer_family());
    expect_success_of_all(object_family());
}

TEST_F(DesignSweepTest, WhatTheLibraryUnderneathThrowsTellsTheOrder) {
    script_design();
    expect_order_of_all<doubles::DesignFailure>(database_family());
    expect_order_of_all<doubles::DesignFailure>(layer_family());
    expect_order_of_all<doubles::DesignFailure>(object_family());
}

/// The exports that are for one kind of object only, by how their names begin; the first row
/// that fits an export speaks for it.
struct KindRow {
    std::string_view names;
    const char* test;
    const char* view;
    std::string_view refusal;
};

constexpr std::string_view kNotDefined = "Object not defined.";
constexpr std::string_view kNot3DText = "Object not 3D text.";

constexpr KindRow kKinds[] = {
    {"ZOL_Object_Polyline_", "Object::IsPolyline", "Object::AsPolyline", "Object not a polyline."},
    {"ZOL_Object_Text_", "Object::IsText", "Object::AsText", "Object not text."},
    {"ZOL_Object_3DText_", "Object::Is3DText", "Object::As3DText", kNot3DText},
    {"ZOL_Object_Arrow_GetStart", "Object::IsArrow", "Object::AsArrow", "Object not arrow."},
    {"ZOL_Object_Arrow_GetEnd", "Object::IsArrow", "Object::AsArrow", "Object not arrow."},
    {"ZOL_Object_Arrow_GetNormal", "Object::IsArrow", "Object::AsArrow", "Object not arrow."},
    {"ZOL_Object_Arrow_", "Object::IsArrow", "Object::AsArrow", kNot3DText},
    {"ZOL_Object_DimensionLine_", "Object::IsDimensionLine", "Object::AsDimensionLine",
     "Object not a dimension line."},
    {"ZOL_Object_DimensionRadius_GetTextAttributes", "Object::IsDimensionLine",
     "Object::AsDimensionRadius", "Object not a dimension radius."},
    {"ZOL_Object_DimensionRadius_", "Object::IsDimensionRadius", "Object::AsDimensionRadius",
     "Object not a dimension radius."},
    {"ZOL_Object_DimensionArc_", "Object::IsDimensionArc", "Object::AsDimensionArc",
     "Object not a dimension arc."},
    {"ZOL_Object_DimensionAngle_", "Object::IsDimensionAngle", "Object::AsDimensionAngle",
     "Object not a dimension angle."},
};

const KindRow* kind_of(std::string_view name) {
    for (const KindRow& kind : kKinds) {
        if (name.starts_with(kind.names)) return &kind;
    }
    return nullptr;
}

TEST_F(DesignSweepTest, EachKindIsTestedAheadOfItsViewAndRefusedInItsWords) {
    int tested = 0;
    for (const auto& row : object_family().rows) {
        const KindRow* const kind = kind_of(row.name);
        if (kind == nullptr) continue;
        SCOPED_TRACE(row.name);
        ++tested;

        // Of every kind but the one.
        script_design();
        design_script.true_of.erase(kind->test);
        design_journal.clear();
        DesignOutputs refused;
        EXPECT_EQ(row.call(object_.get(), refused), row.undefined);
        const std::string_view undefined = row.undefined_text;
        EXPECT_EQ(pending_error(),
                  std::string(undefined.substr(0, undefined.size() - kNotDefined.size()))
                      .append(kind->refusal));
        EXPECT_EQ(refused, DesignOutputs());
        EXPECT_EQ(design_journal, Texts{kind->test});

        // Of that one alone, and of that as the first question of all.
        design_script = {};
        design_script.true_of.insert(kind->test);
        design_journal.clear();
        DesignOutputs outputs;
        row.call(object_.get(), outputs);
        EXPECT_EQ(pending_error(), "");
        ASSERT_GE(design_journal.size(), 3U);
        EXPECT_EQ(design_journal[0], kind->test);
        EXPECT_EQ(design_journal[1], kind->view);
    }
    EXPECT_EQ(tested, 43);
}

}  // namespace
}  // namespace zol::testing
