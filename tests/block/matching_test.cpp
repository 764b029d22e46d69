// Matching: what begins a match and what ends it, and what reaches the library underneath.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "tests/api/pending_error.h"
#include "tests/block/fixture.h"

namespace zol::testing {
namespace {

using geometry::Extent;
using Journal = std::vector<std::string>;
using Six = std::array<double, 6>;

class MatchingTest : public BlockModelTest {
protected:
    int GetMatchExtent(Six& box) {
        return ZOL_BlockModel_GetBlockMatchExtent(handle_, &box[0], &box[1], &box[2], &box[3],
                                                  &box[4], &box[5]);
    }
};

struct Setting {
    const char* asked;
    int (*set)(BlockModelHandle* handle);
};

template <int kSwitch>
int set_exact(BlockModelHandle* handle) {
    const int exact = kSwitch;
    return ZOL_BlockModel_SetUseExactVolume(handle, &exact);
}

const Setting kSettings[] = {
    {"Match::AddTriangulation no such file.obj#Pit",
     [](BlockModelHandle* handle) {
         return ZOL_BlockModel_AddMatchTriangulation(handle, "no such file.obj#Pit");
     }},
    // Neither in order nor inside of any model.
    {"Match::SetExtent 6 5 4 3 2 1",
     [](BlockModelHandle* handle) {
         const Six box{6, 5, 4, 3, 2, 1};
         return ZOL_BlockModel_SetMatchExtent(handle, &box[0], &box[1], &box[2], &box[3], &box[4],
                                              &box[5]);
     }},
    {"Match::SetUseExactVolume 0", set_exact<0>},
    {"Match::SetUseExactVolume 1", set_exact<1>},
    // The switch is on for 1 alone.
    {"Match::SetUseExactVolume 0", set_exact<2>},
    {"Match::SetUseExactVolume 0", set_exact<-1>},
};

TEST_F(MatchingTest, AnySettingBeginsAMatchAndTheNextKeepsIt) {
    for (const Setting& setting : kSettings) {
        SCOPED_TRACE(setting.asked);
        doubles::journal.clear();
        EXPECT_EQ(setting.set(handle_), 0);
        EXPECT_EQ(handle_->match, &handle_->model->GetMatch());
        EXPECT_EQ(setting.set(handle_), 0);
        EXPECT_EQ(ZOL_BlockModel_ClearMatch(handle_), 0);
        EXPECT_EQ(handle_->match, nullptr);
        EXPECT_EQ(doubles::journal, (Journal{"Model::GetMatch", setting.asked, "Model::GetMatch",
                                             setting.asked, "Match::Close"}));
    }
}

TEST_F(MatchingTest, AMatchIsClearedOnce) {
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(ZOL_BlockModel_ClearMatch(handle_), 1);
        EXPECT_EQ(pending_error(), "ZOL_BlockModel_ClearMatch no blocks currently matched.");
        EXPECT_EQ(set_exact<0>(handle_), 0);
        EXPECT_EQ(ZOL_BlockModel_ClearMatch(handle_), 0);
        EXPECT_EQ(pending_error(), "");
    }
}

TEST_F(MatchingTest, TheAnswersAreThoseOfTheMatch) {
    BeginMatch();
    doubles::script.match_extent = Extent(1, 2, 3, 4, 5, 6);
    doubles::script.match_volume = 12.5;
    Six box;
    box.fill(7.0);
    doubles::during_call = [&] { EXPECT_EQ(box, Six{}); };
    EXPECT_EQ(GetMatchExtent(box), 0);
    doubles::during_call = nullptr;
    EXPECT_EQ(box, (Six{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(ZOL_BlockModel_GetBlockMatchVolume(handle_), 12.5);
    EXPECT_EQ(doubles::journal, (Journal{"Match::GetMatchExtent", "Match::GetMatchVolume"}));
}

TEST_F(MatchingTest, ASearchLeavesNoMatchToAsk) {
    BeginMatch();
    const double at = 0;
    EXPECT_EQ(ZOL_BlockModel_FindXyz(handle_, &at, &at, &at), 0);
    EXPECT_EQ(ZOL_BlockModel_GetBlockMatchVolume(handle_), -1.0);
    EXPECT_EQ(pending_error(), "ZOL_BlockModel_GetBlockMatchVolume no blocks currently matched.");
    EXPECT_EQ(ZOL_BlockModel_NextBlock(handle_), 0);
    EXPECT_EQ(doubles::journal, (Journal{"Match::Close", "Model::FindXyz 0 0 0", "Model::Next"}));
}

TEST_F(MatchingTest, AMatchThatFailsToCloseStays) {
    BeginMatch();
    doubles::script.throwing = "Match::Close";
    EXPECT_THROW(ZOL_BlockModel_ClearMatch(handle_), doubles::EngineFailure);
    EXPECT_NE(handle_->match, nullptr);
    doubles::script.throwing.clear();
}

}  // namespace
}  // namespace zol::testing
