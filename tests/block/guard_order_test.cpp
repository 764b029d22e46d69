// The frame around every export: checks, success exit, and where the work stands.
#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <string>

#include "block/handle.h"
#include "tests/api/pending_error.h"
#include "tests/api/recorded_log.h"
#include "tests/block/export_table.h"
#include "tests/block/fixture.h"

namespace zol::testing {
namespace {

using Names = std::vector<std::string>;

/// Each sweep opens a handle a row: some rows end theirs.
class GuardOrderTest : public ::testing::Test {
protected:
    GuardOrderTest() {
        doubles::script = {};
        ZOL_API_Init();
    }

    ~GuardOrderTest() override { doubles::script = {}; }

    /// A script by which no export fails.
    static void ScriptSuccess() {
        doubles::script = {};
        doubles::script.schemas.resize(1);
        for (const int selector : {1, 2, 4, 9, 17}) {
            doubles::script.fields[selector] = {"grade"};
        }
        doubles::script.translations = {"ore"};
    }

    /// A handle that the export does not fail for.
    static BlockModelHandle* OpenFor(const Export& row) {
        BlockModelHandle* const handle = ZOL_BlockModel_Open("model");
        if (row.NeedsAMatch()) {
            handle->match = &handle->model->GetMatch();
        }
        return handle;
    }
};

TEST_F(GuardOrderTest, TheTableHoldsEveryExportOfTheFamily) {
    std::set<std::string> exported;
    std::ifstream file(ZOL_EXPORTS_FILE);
    for (std::string name; std::getline(file, name);) {
        if (name.starts_with("ZOL_BlockModel_")) {
            exported.insert(name);
        }
    }
    std::set<std::string> rows;
    for (const Export& row : block_model_exports()) {
        rows.insert(row.name);
    }
    EXPECT_EQ(rows, exported);
}

TEST_F(GuardOrderTest, WithoutAModelEachFailsInItsOwnWords) {
    model::block::Model another("model", "r");
    BlockModelHandle without_model;
    BlockModelHandle match_only;
    match_only.match = &another.GetMatch();
    doubles::journal.clear();
    RecordedLog log;
    for (BlockModelHandle* const handle :
         {static_cast<BlockModelHandle*>(nullptr), &without_model, &match_only}) {
        for (const Export& row : block_model_exports()) {
            if (row.no_model_text == nullptr || (handle == &match_only && row.TakesAMatch())) {
                continue;
            }
            SCOPED_TRACE(row.name);
            Outputs outputs;
            EXPECT_EQ(row.call(handle, outputs), row.no_model);
            EXPECT_EQ(pending_error(), row.no_model_text);
            Outputs expected;
            std::fill_n(expected.numbers.begin(), row.zeros, 0.0);
            EXPECT_EQ(outputs, expected);
        }
    }
    EXPECT_EQ(log.Finish(), Names{});
    EXPECT_EQ(doubles::journal, Names{});
    EXPECT_EQ(match_only.match, &another.GetMatch()) << "a failed test leaves the match";
}

TEST_F(GuardOrderTest, ASuccessEmptiesTheErrorAndLogsTheOwnNameOnce) {
    for (const Export& row : block_model_exports()) {
        SCOPED_TRACE(row.name);
        ScriptSuccess();
        BlockModelHandle* const handle = OpenFor(row);
        make_error_pending();
        Outputs outputs;
        RecordedLog log;
        row.call(handle, outputs);
        EXPECT_EQ(log.Finish(), Names{row.name});
        EXPECT_EQ(log.Row(std::string(row.name) + "_calls"), "1");
        EXPECT_EQ(pending_error(), "");
        if (outputs.made != nullptr) {
            ZOL_BlockModel_Close(outputs.made);
        }
        if (std::string(row.name) != "ZOL_BlockModel_Close") {
            ZOL_BlockModel_Close(handle);
        }
    }
}

TEST_F(GuardOrderTest, WhatTheLibraryUnderneathThrowsTellsTheOrder) {
    for (const Export& row : block_model_exports()) {
        SCOPED_TRACE(row.name);
        ScriptSuccess();
        BlockModelHandle* const handle = OpenFor(row);
        doubles::script.throwing = row.operation;
        make_error_pending();
        const std::string error_before = pending_error();
        Outputs outputs;
        RecordedLog log;
        EXPECT_THROW(row.call(handle, outputs), doubles::EngineFailure);
        const bool counted = row.order == Order::kSuccessFirst;
        const bool emptied = row.order != Order::kWorkFirst;
        EXPECT_EQ(log.Finish(), counted ? Names{row.name} : Names{});
        EXPECT_EQ(pending_error(), emptied ? "" : error_before);
        doubles::script.throwing.clear();
        ZOL_BlockModel_Close(handle);
    }
}

}  // namespace
}  // namespace zol::testing
