// The cursor: who is asked, what ends a match, what is passed on.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "tests/api/pending_error.h"
#include "tests/api/recorded_log.h"
#include "tests/block/fixture.h"

namespace zol::testing {
namespace {

using geometry::Extent;
using Journal = std::vector<std::string>;
using Six = std::array<double, 6>;

class CursorTest : public BlockModelTest {
protected:
    int GetBlockExtent(Six& box) {
        return ZOL_BlockModel_GetBlockExtent(handle_, &box[0], &box[1], &box[2], &box[3], &box[4],
                                             &box[5]);
    }

    /// All that the seven functions of the cursor say, one after the other.
    void ExpectAnswersOf(const doubles::ScriptedCursor& cursor, const Six& box) {
        EXPECT_EQ(ZOL_BlockModel_FirstBlock(handle_), 0);
        EXPECT_EQ(ZOL_BlockModel_NextBlock(handle_), 0);
        EXPECT_EQ(ZOL_BlockModel_IsEof(handle_), cursor.eof ? 1 : 0);
        EXPECT_EQ(ZOL_BlockModel_GetPosition(handle_), cursor.position);
        double number = 0;
        EXPECT_EQ(ZOL_BlockModel_GetNumber(handle_, "grade", &number), 0);
        EXPECT_EQ(number, cursor.number);
        char text[255];
        EXPECT_EQ(ZOL_BlockModel_GetString(handle_, "rock", text), 0);
        EXPECT_EQ(text, cursor.text);
        Six read_box;
        EXPECT_EQ(GetBlockExtent(read_box), 0);
        EXPECT_EQ(read_box, box);
    }
};

TEST_F(CursorTest, SevenFunctionsFollowTheMatchWhileThereIsOne) {
    doubles::script.model = {false, 1.5, "waste", 11, Extent(1, 2, 3, 4, 5, 6)};
    doubles::script.match = {true, 2.5, "ore", 5'000'000'000, Extent(10, 20, 30, 40, 50, 60)};
    // Their results are dropped: a move that found nothing is no failure.
    doubles::script.move_result = 1;
    const auto journal_of = [](const std::string& cursor) {
        return Journal{cursor + "::FindFirst",     cursor + "::Next",
                       cursor + "::IsEof",         cursor + "::GetPosition",
                       cursor + "::Get grade",     cursor + "::GetString rock",
                       cursor + "::GetBlockExtent"};
    };

    ExpectAnswersOf(doubles::script.model, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(doubles::journal, journal_of("Model"));

    BeginMatch();
    ExpectAnswersOf(doubles::script.match, {10, 20, 30, 40, 50, 60});
    EXPECT_EQ(doubles::journal, journal_of("Match"));
}

TEST_F(CursorTest, AMatchAloneIsEnoughForACursor) {
    BlockModelHandle match_only;
    match_only.match = &handle_->model->GetMatch();
    doubles::journal.clear();
    EXPECT_EQ(ZOL_BlockModel_FirstBlock(&match_only), 0);
    EXPECT_EQ(doubles::journal, Journal{"Match::FindFirst"});
}

TEST_F(CursorTest, ABlockExtentIsZeroWhileItIsAskedFor) {
    Six box;
    box.fill(7.0);
    doubles::during_call = [&] { EXPECT_EQ(box, Six{}); };
    doubles::script.model.extent = Extent(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(GetBlockExtent(box), 0);
    EXPECT_EQ(box, (Six{1, 2, 3, 4, 5, 6}));
}

TEST_F(CursorTest, APositionOfMinusOneIsToldFromAFailureByTheError) {
    doubles::script.model.position = -1;
    EXPECT_EQ(ZOL_BlockModel_GetPosition(handle_), -1);
    EXPECT_EQ(ZOL_API_HasError(), 0);
    EXPECT_EQ(ZOL_BlockModel_GetPosition(nullptr), -1);
    EXPECT_EQ(ZOL_API_HasError(), 1);
}

/// A function that goes to a place, and what it asks of the model.
struct Going {
    const char* asked;
    int (*go)(BlockModelHandle* handle);
};

const Going kGoings[] = {
    {"Model::SetPosition 5000000000",
     [](BlockModelHandle* handle) {
         const long long position = 5'000'000'000;
         return ZOL_BlockModel_SetPosition(handle, &position);
     }},
    {"Model::FindXyz 1 2 3",
     [](BlockModelHandle* handle) {
         const double x = 1, y = 2, z = 3;
         return ZOL_BlockModel_FindXyz(handle, &x, &y, &z);
     }},
    {"Model::FindWorldXyz 1 2 3",
     [](BlockModelHandle* handle) {
         const double x = 1, y = 2, z = 3;
         return ZOL_BlockModel_FindWorldXyz(handle, &x, &y, &z);
     }},
};

TEST_F(CursorTest, GoingToAPlaceEndsTheMatchFirstAlsoWhenNothingIsThere) {
    doubles::script.find_result = 1;
    doubles::script.move_result = 1;
    for (const Going& going : kGoings) {
        SCOPED_TRACE(going.asked);
        BeginMatch();
        going.go(handle_);
        EXPECT_EQ(handle_->match, nullptr);
        going.go(handle_);
        EXPECT_EQ(doubles::journal, (Journal{"Match::Close", going.asked, going.asked}));
        EXPECT_EQ(ZOL_API_HasError(), 0);
    }
}

TEST_F(CursorTest, TheMatchIsClosedAheadOfTheSuccessExit) {
    for (const Going& going : kGoings) {
        SCOPED_TRACE(going.asked);
        BeginMatch();
        doubles::script.throwing = "Match::Close";
        make_error_pending();
        RecordedLog log;
        EXPECT_THROW(going.go(handle_), doubles::EngineFailure);
        EXPECT_EQ(log.Finish(), Journal{});
        EXPECT_EQ(ZOL_API_HasError(), 1);
        EXPECT_NE(handle_->match, nullptr);
        doubles::script.throwing.clear();
    }
}

TEST_F(CursorTest, OnlyOneOfTheSearchesFoldsItsResult) {
    const double at = 0;
    for (const int result : {0, 1, 2, -1}) {
        doubles::script.find_result = result;
        EXPECT_EQ(ZOL_BlockModel_FindXyz(handle_, &at, &at, &at), result == 0 ? 0 : 1);
        EXPECT_EQ(ZOL_BlockModel_FindWorldXyz(handle_, &at, &at, &at), result);
        EXPECT_EQ(ZOL_API_HasError(), 0);
    }
}

TEST_F(CursorTest, APositionThatTheModelRefusesIsNoFailure) {
    doubles::script.move_result = 1;
    const long long position = -5;
    EXPECT_EQ(ZOL_BlockModel_SetPosition(handle_, &position), 0);
}

}  // namespace
}  // namespace zol::testing
