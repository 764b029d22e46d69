// The grid family over a scripted library: checks, order, and where each answer goes.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "grid/handle.h"
#include "tests/api/pending_error.h"
#include "tests/api/recorded_log.h"
#include "tests/doubles/scripted_grid.h"
#include "tests/grid/export_table.h"

namespace zol::testing {
namespace {

using Texts = std::vector<std::string>;

class GridTest : public ::testing::Test {
protected:
    GridTest() {
        Restart();
        ZOL_API_Init();
        handle_ = ZOL_Grid_Open("grid");
        doubles::grid_journal.clear();
    }

    ~GridTest() override {
        Restart();
        if (handle_ != nullptr) {
            ZOL_Grid_Close(handle_);
        }
    }

    static void Restart() { doubles::grid_script = {}; }

    GridHandle* handle_;
};

TEST_F(GridTest, TheTableHoldsEveryExportOfTheFamily) {
    expect_whole_table(grid_family(), ZOL_EXPORTS_FILE);
}

TEST_F(GridTest, WithoutAGridEachFailsInItsOwnWordsAndTouchesNothing) {
    GridHandle without_grid;
    expect_failure_of_undefined(grid_family(), {static_cast<GridHandle*>(nullptr), &without_grid});
}

TEST_F(GridTest, ASuccessEmptiesTheErrorAndLogsTheOwnNameOnce) {
    expect_success_of_all(grid_family());
}

TEST_F(GridTest, WhatTheLibraryUnderneathThrowsTellsTheOrder) {
    expect_order_of_all<doubles::GridFailure>(grid_family());
}

TEST_F(GridTest, OpensClosesAndGivesUnrelatedHandles) {
    GridHandle* const other = ZOL_Grid_Open("a grid.asc");
    ASSERT_NE(other, nullptr);
    ASSERT_NE(other, handle_);
    EXPECT_EQ(doubles::grid_journal, (Texts{"Grid::Grid a grid.asc", "Grid::IsValid"}));
    EXPECT_EQ(ZOL_Grid_Close(other), 0);
    EXPECT_EQ(doubles::grid_journal.back(), "Grid::~Grid");
    EXPECT_EQ(ZOL_Grid_IsValid(handle_), 1);
}

TEST_F(GridTest, AGridThatIsNotValidIsDestroyedAndNamedAsPassed) {
    doubles::grid_script.valid = false;
    for (const std::string& name :
         {std::string("no such file"), std::string(), std::string(300, 'n')}) {
        doubles::grid_journal.clear();
        EXPECT_EQ(ZOL_Grid_Open(name.c_str()), nullptr);
        EXPECT_EQ(doubles::grid_journal.back(), "Grid::~Grid");
        EXPECT_EQ(pending_error(), ("ZOL_Grid_Open error opening/loading " + name).substr(0, 254));
    }
}

TEST_F(GridTest, AThrowWhileOpeningLeavesNoGridBehind) {
    doubles::grid_script.throwing = "Grid::IsValid";
    EXPECT_THROW(ZOL_Grid_Open("grid"), doubles::GridFailure);
    EXPECT_EQ(doubles::grid_journal.back(), "Grid::~Grid");
}

TEST_F(GridTest, AHandleThatIsAliveMayStandForAGridThatIsNotValid) {
    doubles::grid_script.valid = false;
    make_error_pending();
    EXPECT_EQ(ZOL_Grid_IsValid(handle_), 0);
    EXPECT_EQ(ZOL_API_HasError(), 0);
}

TEST_F(GridTest, HandsTheLatticeOutInOrder) {
    doubles::grid_script.lower = {1.0, 2.0};
    doubles::grid_script.upper = {3.0, 4.0};
    doubles::grid_script.along_x = 5.0;
    doubles::grid_script.along_y = 6.0;
    doubles::grid_script.width = 7;
    doubles::grid_script.height = 8;
    std::array<double, 6> numbers{};
    auto& [x0, y0, x1, y1, along_x, along_y] = numbers;
    EXPECT_EQ(ZOL_Grid_GetExtent(handle_, &x0, &y0, &x1, &y1), 0);
    EXPECT_EQ(ZOL_Grid_GetSpacing(handle_, &along_x, &along_y), 0);
    EXPECT_EQ(numbers, (std::array{1.0, 2.0, 3.0, 4.0, 5.0, 6.0}));
    int width = 0;
    int height = 0;
    EXPECT_EQ(ZOL_Grid_NumNodes(handle_, &width, &height), 0);
    EXPECT_EQ(width, 7);
    EXPECT_EQ(height, 8);
}

TEST_F(GridTest, ANodeAnswersWhatTheGridLeft) {
    struct Row {
        const char* name;
        bool readable;
        bool masked;
        int result;
    };
    const Row rows[] = {
        {"a value", true, false, 0},
        {"masked", true, true, 0},
        {"not there", false, false, 1},
        {"not there, with the flag left set", false, true, 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        doubles::grid_script.readable = row.readable;
        doubles::grid_script.masked = row.masked;
        doubles::grid_script.value = 2.5;
        doubles::grid_journal.clear();
        make_error_pending();
        const int first = -1;
        const int second = 2147483647;
        double value = 0.0;
        int masked = -77;
        RecordedLog log;
        EXPECT_EQ(ZOL_Grid_GetNodeValue(handle_, &first, &second, &value, &masked), row.result);
        EXPECT_EQ(value, 2.5);
        EXPECT_EQ(masked, row.masked ? 1 : 0);
        EXPECT_EQ(ZOL_API_HasError(), 0) << "tells it from a handle that is not defined";
        EXPECT_EQ(log.Finish(), Texts{"ZOL_Grid_GetNodeValue"});
        // The indices as they are, and a flag that starts as false.
        EXPECT_EQ(doubles::grid_journal, Texts{"Grid::GetNodeValue -1 2147483647 0"});
    }
}

}  // namespace
}  // namespace zol::testing
