// The last-error slot: who writes it, who reads it, who empties it.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

#include "api/zolExportedApi_ReadOnly.hpp"
#include "tests/api/allocations.h"
#include "tests/api/pending_error.h"
#include "tests/doubles/scripted_block.h"

namespace zol::testing {
namespace {

class ErrorSlotTest : public ::testing::Test {
protected:
    ErrorSlotTest() {
        doubles::script = {};
        ZOL_API_Init();
        ZOL_API_SetErrorMessage("");
    }
};

TEST_F(ErrorSlotTest, GetErrorWritesThe255BytesOfTheBufferAndNoMore) {
    struct Row {
        std::size_t length;
        std::size_t seen;
    };
    for (const Row row : {Row{0, 0}, Row{7, 7}, Row{254, 254}, Row{255, 254}, Row{300, 254}}) {
        SCOPED_TRACE(row.length);
        ZOL_API_SetErrorMessage(std::string(row.length, 'e'));
        // Reading does not empty the slot: the second time gives the same.
        for (int time = 0; time < 2; ++time) {
            std::array<char, 257> buffer;
            buffer.fill('#');
            ZOL_API_GetError(buffer.data());
            const auto text_end = buffer.begin() + static_cast<std::ptrdiff_t>(row.seen);
            EXPECT_TRUE(std::all_of(buffer.begin(), text_end, [](char c) { return c == 'e'; }));
            EXPECT_TRUE(std::all_of(text_end, buffer.begin() + 255, [](char c) { return c == 0; }));
            EXPECT_EQ(std::string(buffer.begin() + 255, buffer.end()), "##");
        }
    }
}

TEST_F(ErrorSlotTest, AnErrorIsPendingWhileTheSlotIsNotEmpty) {
    EXPECT_EQ(ZOL_API_HasError(), 0);
    ZOL_API_SetErrorMessage("mine");
    EXPECT_EQ(ZOL_API_HasError(), 1);
    ZOL_API_SetErrorMessage("");
    EXPECT_EQ(ZOL_API_HasError(), 0);
}

TEST_F(ErrorSlotTest, AFailureReplacesTheWholeTextAndASuccessEmptiesIt) {
    ZOL_API_SetErrorMessage(std::string(300, 'e'));
    ZOL_BlockModel_NBlocks(nullptr);
    EXPECT_EQ(pending_error(), "ZOL_BlockModel_NBlocks no model currently open.");
    ZOL_API_Init();
    EXPECT_EQ(ZOL_API_HasError(), 1) << "initialising is no guarded call";
    ZOL_BlockModel_IsOpen(nullptr);
    EXPECT_EQ(ZOL_API_HasError(), 0);
}

TEST_F(ErrorSlotTest, EmptyingKeepsTheStorageForTheNextText) {
    const auto fail_and_succeed = [] {
        ZOL_BlockModel_NBlocks(nullptr);
        ZOL_BlockModel_IsOpen(nullptr);
    };
    fail_and_succeed();
    const std::size_t before = allocations();
    for (int cycle = 0; cycle < 10; ++cycle) {
        fail_and_succeed();
    }
    EXPECT_EQ(allocations(), before);
}

}  // namespace
}  // namespace zol::testing
