// What the family answers before the library is initialised, which nothing undoes.
#include <gtest/gtest.h>

#include <cstdint>

#include "tests/api/pending_error.h"
#include "tests/api/recorded_log.h"
#include "tests/doubles/scripted_grid.h"
#include "tests/grid/export_table.h"

namespace zol::testing {
namespace {

TEST(GridNotInitialisedTest, EveryExportFailsAndTouchesNothing) {
    // Not even looked at: reading it would end the test.
    // NOLINTNEXTLINE(performance-no-int-to-ptr): an address that nothing stands at
    auto* const rubbish = reinterpret_cast<GridHandle*>(std::uintptr_t{8});
    RecordedLog log;
    for (const Export& row : kExports) {
        SCOPED_TRACE(row.name);
        Outputs outputs;
        EXPECT_EQ(row.call(rubbish, outputs), row.not_initialised);
        EXPECT_EQ(pending_error(), "ZOL_API not initialised.");
        EXPECT_EQ(outputs, Outputs());
    }
    EXPECT_TRUE(doubles::grid_journal.empty());
    EXPECT_EQ(log.Finish(), std::vector<std::string>{});
}

}  // namespace
}  // namespace zol::testing
