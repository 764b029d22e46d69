// The frame around every export: checks, success exit, and where the work stands.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <vector>

#include "block/handle.h"
#include "tests/block/export_table.h"
#include "tests/block/fixture.h"

namespace zol::testing {
namespace {

class GuardOrderTest : public ::testing::Test {
protected:
    GuardOrderTest() {
        doubles::script = {};
        ZOL_API_Init();
    }

    ~GuardOrderTest() override { doubles::script = {}; }
};

TEST_F(GuardOrderTest, TheTableHoldsEveryExportOfTheFamily) {
    expect_whole_table(block_model_family(), ZOL_EXPORTS_FILE);
}

TEST_F(GuardOrderTest, WithoutAModelEachFailsInItsOwnWords) {
    BlockModelHandle without_model;
    doubles::journal.clear();
    expect_failure_of_undefined(block_model_family(),
                                {static_cast<BlockModelHandle*>(nullptr), &without_model});
}

TEST_F(GuardOrderTest, AMatchAloneDoesOnlyForWhatSpeaksOfMatches) {
    model::block::Model another("model", "r");
    BlockModelHandle match_only;
    match_only.match = &another.GetMatch();
    doubles::journal.clear();
    auto family = block_model_family();
    std::vector<BlockModelExport> rows;
    std::remove_copy_if(family.rows.begin(), family.rows.end(), std::back_inserter(rows),
                        takes_a_match);
    family.rows = rows;
    expect_failure_of_undefined(family, {&match_only});
    EXPECT_EQ(match_only.match, &another.GetMatch()) << "a failed test leaves the match";
}

TEST_F(GuardOrderTest, ASuccessEmptiesTheErrorAndLogsTheOwnNameOnce) {
    expect_success_of_all(block_model_family());
}

TEST_F(GuardOrderTest, WhatTheLibraryUnderneathThrowsTellsTheOrder) {
    expect_order_of_all<doubles::EngineFailure>(block_model_family());
}

}  // namespace
}  // namespace zol::testing
