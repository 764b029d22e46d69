// What the family answers before the library is initialised, which nothing undoes.
#include <gtest/gtest.h>

#include "tests/grid/export_table.h"

namespace zol::testing {
namespace {

TEST(GridNotInitialisedTest, EveryExportFailsAndTouchesNothing) {
    expect_failure_before_initialising(grid_family());
}

}  // namespace
}  // namespace zol::testing
