// The call log, byte by byte.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "api/zolExportedApi_ReadOnly.h"
#include "tests/api/files.h"
#include "tests/api/pending_error.h"
#include "tests/api/recorded_log.h"
#include "tests/doubles/scripted_block.h"
#include "tests/doubles/scripted_tick.h"

namespace zol::testing {
namespace {

using Names = std::vector<std::string>;

/// A call that succeeds without a handle.
void call_is_open() {
    ZOL_BlockModel_IsOpen(nullptr);
}

/// The names come from a list of the tests' own: their order is part of the format.
std::string summary_of_zeros() {
    std::string text = "\n\n\n";
    std::ifstream order(ZOL_SUMMARY_ORDER_FILE);
    for (std::string name; std::getline(order, name);) {
        text.append(name).append("_time: 0\n").append(name).append("_calls: 0\n");
    }
    return text;
}

class CallLogTest : public ::testing::Test {
protected:
    CallLogTest() : file_(fresh_file_name("call.log")) {
        doubles::script = {};
        doubles::ticks.clear();
        doubles::tick_readings = 0;
        ZOL_API_Init();
    }

    ~CallLogTest() override {
        ZOL_API_FinishLogging();
        std::remove(file_.c_str());
    }

    const std::string file_;
};

TEST_F(CallLogTest, ARunWithoutCallsHoldsThreeEmptyLinesAndTheWholeSummary) {
    ZOL_API_StartLogging(file_.c_str());
    ZOL_API_FinishLogging();
    const std::string text = text_of_file(file_);
    EXPECT_EQ(text, summary_of_zeros());
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 3 + 316);
}

TEST_F(CallLogTest, EverySuccessfulCallIsOnDiskAtOnce) {
    ZOL_API_StartLogging(file_.c_str());
    call_is_open();
    EXPECT_EQ(text_of_file(file_), "ZOL_BlockModel_IsOpen\n");
    ZOL_BlockModel_NBlocks(nullptr);
    ZOL_API_HasError();
    call_is_open();
    EXPECT_EQ(text_of_file(file_), "ZOL_BlockModel_IsOpen\nZOL_BlockModel_IsOpen\n");
}

TEST_F(CallLogTest, StartingTwiceKeepsTheFirstFileAndItsCounters) {
    const std::string other = fresh_file_name("other.log");
    ZOL_API_StartLogging(file_.c_str());
    call_is_open();
    ZOL_API_StartLogging(other.c_str());
    call_is_open();
    ZOL_API_FinishLogging();
    EXPECT_EQ(text_of_file(other), "");
    EXPECT_NE(std::remove(other.c_str()), 0) << "the second file was created";
    EXPECT_NE(text_of_file(file_).find("\nZOL_BlockModel_IsOpen_calls: 2\n"), std::string::npos);
}

TEST_F(CallLogTest, FinishingWithoutALogDoesNothing) {
    ZOL_API_StartLogging(file_.c_str());
    ZOL_API_FinishLogging();
    const std::string finished = text_of_file(file_);
    ZOL_API_FinishLogging();
    call_is_open();
    EXPECT_EQ(text_of_file(file_), finished);
}

TEST_F(CallLogTest, ANewRunStartsFromAnEmptyFileAndZeroCounters) {
    ZOL_API_StartLogging(file_.c_str());
    call_is_open();
    ZOL_API_FinishLogging();
    ZOL_API_StartLogging(file_.c_str());
    ZOL_API_FinishLogging();
    EXPECT_EQ(text_of_file(file_), summary_of_zeros());
}

TEST_F(CallLogTest, AFileThatCannotBeOpenedIsSilentAndForgottenByTheNextStart) {
    make_error_pending();
    ZOL_API_StartLogging("/no/such/folder/call.log");
    EXPECT_EQ(ZOL_API_HasError(), 1) << "logging leaves the error slot alone";
    call_is_open();
    EXPECT_EQ(doubles::tick_readings, 2) << "the guard goes on counting";
    ZOL_API_StartLogging(file_.c_str());
    EXPECT_EQ(text_of_file(file_), "") << "logging counts as on";
    ZOL_API_FinishLogging();

    ZOL_API_StartLogging(file_.c_str());
    call_is_open();
    EXPECT_EQ(text_of_file(file_), "ZOL_BlockModel_IsOpen\n");
}

TEST_F(CallLogTest, TimesAreSumsOfTickDifferencesAlsoAcrossTheWrap) {
    struct Row {
        const char* what;
        std::initializer_list<std::uint32_t> ticks;
        const char* time;
    };
    const Row rows[] = {
        {"a plain call", {100, 107}, "7"},
        {"two calls", {100, 107, 200, 205}, "12"},
        {"the tick wraps during the call", {0xFFFFFFFE, 3}, "5"},
        {"the sum wraps", {0, 0xFFFFFFFF, 0, 3}, "2"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        doubles::ticks = row.ticks;
        RecordedLog log;
        while (!doubles::ticks.empty()) {
            call_is_open();
        }
        log.Finish();
        EXPECT_EQ(log.Row("ZOL_BlockModel_IsOpen_time"), row.time);
    }
}

TEST_F(CallLogTest, AFailedCallReadsTheTickOnceAndAddsNothing) {
    doubles::ticks = {5, 1000};
    RecordedLog log;
    ZOL_BlockModel_NBlocks(nullptr);
    EXPECT_EQ(doubles::tick_readings, 1);
    EXPECT_EQ(log.Finish(), Names{});
    EXPECT_EQ(log.Row("ZOL_BlockModel_NBlocks_time"), "0");
    EXPECT_EQ(log.Row("ZOL_BlockModel_NBlocks_calls"), "0");
}

TEST_F(CallLogTest, WithLoggingOffTheClockIsNotRead) {
    call_is_open();
    ZOL_BlockModel_NBlocks(nullptr);
    EXPECT_EQ(doubles::tick_readings, 0);
}

}  // namespace
}  // namespace zol::testing
