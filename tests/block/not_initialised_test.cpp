// What the library answers before it is initialised. The tests build on each other
// in their order, since the last of them ends that state for good.
#include <gtest/gtest.h>

#include "api/zolExportedApi_ReadOnly.h"
#include "tests/api/pending_error.h"
#include "tests/api/recorded_log.h"
#include "tests/block/export_table.h"
#include "tests/doubles/scripted_block.h"

namespace zol::testing {
namespace {

TEST(NotInitialisedTest, EveryExportFailsAndTouchesNothing) {
    expect_failure_before_initialising(block_model_family());
}

TEST(NotInitialisedTest, InitialisingLeavesTheErrorPending) {
    EXPECT_EQ(ZOL_BlockModel_IsOpen(nullptr), -1);
    EXPECT_EQ(ZOL_API_Init(), 0);
    EXPECT_EQ(pending_error(), "ZOL_API not initialised.");
    EXPECT_EQ(ZOL_API_Init(), 0);
    EXPECT_EQ(ZOL_BlockModel_IsOpen(nullptr), 0);
    EXPECT_EQ(pending_error(), "");
}

}  // namespace
}  // namespace zol::testing
