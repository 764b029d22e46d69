// What the family answers before the library is initialised, which nothing undoes.
#include <gtest/gtest.h>

#include "tests/tri/export_table.h"

namespace zol::testing {
namespace {

TEST(TriangulationNotInitialisedTest, EveryExportFailsAndTouchesNothing) {
    expect_failure_before_initialising(triangulation_family());
}

}  // namespace
}  // namespace zol::testing
