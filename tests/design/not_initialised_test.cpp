// What the family answers before the library is initialised, which nothing undoes.
#include <gtest/gtest.h>

#include "tests/design/export_table.h"

namespace zol::testing {
namespace {

TEST(DesignNotInitialisedTest, EveryExportFailsAndTouchesNothing) {
    expect_failure_before_initialising(database_family());
    expect_failure_before_initialising(layer_family());
    expect_failure_before_initialising(object_family());
}

}  // namespace
}  // namespace zol::testing
