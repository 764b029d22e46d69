// What the library answers before it is initialised. The tests build on each other
// in their order, since the last of them ends that state for good.
#include <gtest/gtest.h>

#include <cstdint>

#include "api/zolExportedApi_ReadOnly.h"
#include "tests/api/pending_error.h"
#include "tests/api/recorded_log.h"
#include "tests/block/export_table.h"
#include "tests/doubles/scripted_block.h"

namespace zol::testing {
namespace {

TEST(NotInitialisedTest, EveryExportFailsAndTouchesNothing) {
    // Not even looked at: reading it would end the test.
    // NOLINTNEXTLINE(performance-no-int-to-ptr): an address that nothing stands at
    auto* const rubbish = reinterpret_cast<BlockModelHandle*>(std::uintptr_t{8});
    RecordedLog log;
    for (const Export& row : block_model_exports()) {
        SCOPED_TRACE(row.name);
        Outputs outputs;
        EXPECT_EQ(row.call(rubbish, outputs), row.not_initialised);
        EXPECT_EQ(pending_error(), "ZOL_API not initialised.");
        EXPECT_EQ(outputs, Outputs());
    }
    EXPECT_TRUE(doubles::journal.empty());
    EXPECT_EQ(log.Finish(), std::vector<std::string>{});
    EXPECT_EQ(log.Row("ZOL_BlockModel_NBlocks_calls"), "0");
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
