// Opening and closing: what is asked of the model in which order, and who is left
// with the handle.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/api/pending_error.h"
#include "tests/block/fixture.h"

namespace zol::testing {
namespace {

using Journal = std::vector<std::string>;

class LifecycleTest : public BlockModelTest {
protected:
    /// Closes the fixture's handle, which must succeed.
    void Close() {
        EXPECT_EQ(ZOL_BlockModel_Close(handle_), 0);
        handle_ = nullptr;
    }
};

TEST_F(LifecycleTest, OpensForReading) {
    BlockModelHandle* const handle = ZOL_BlockModel_Open("a model.csv");
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(doubles::journal, (Journal{"Model::Model a model.csv r", "Model::IsOpen"}));
    EXPECT_EQ(handle->match, nullptr);
    EXPECT_EQ(ZOL_BlockModel_Close(handle), 0);
}

TEST_F(LifecycleTest, AModelThatDoesNotOpenIsDestroyedAndNamedAsPassed) {
    doubles::script.opens = false;
    const std::string long_name(300, 'n');
    for (const std::string& name : {std::string("no such file"), std::string(), long_name}) {
        doubles::journal.clear();
        EXPECT_EQ(ZOL_BlockModel_Open(name.c_str()), nullptr);
        EXPECT_EQ(doubles::journal.back(), "Model::~Model");
        EXPECT_EQ(pending_error(),
                  ("ZOL_BlockModel_Open error opening/loading " + name).substr(0, 254));
    }
}

TEST_F(LifecycleTest, OpeningTwiceGivesUnrelatedHandles) {
    BlockModelHandle* const other = ZOL_BlockModel_Open("model");
    ASSERT_NE(other, handle_);
    EXPECT_EQ(ZOL_BlockModel_Close(other), 0);
    EXPECT_EQ(ZOL_BlockModel_IsOpen(handle_), 1);
}

TEST_F(LifecycleTest, ClosingEndsTheMatchThenTheFileThenTheModel) {
    BeginMatch();
    Close();
    EXPECT_EQ(doubles::journal, (Journal{"Match::Close", "Model::Close", "Model::~Model"}));
}

TEST_F(LifecycleTest, AFailedCloseLeavesTheHandleToBeClosedAgain) {
    BeginMatch();
    doubles::script.close_result = -2;
    doubles::script.name = "Ore body";
    EXPECT_EQ(ZOL_BlockModel_Close(handle_), 1);
    EXPECT_EQ(pending_error(), "ZOL_BlockModel_Close error closing Ore body");
    EXPECT_NE(handle_->match, nullptr) << "the match stays, though it was closed";
    EXPECT_EQ(ZOL_BlockModel_IsOpen(handle_), 1);

    doubles::script.close_result = 0;
    Close();
    EXPECT_EQ(doubles::journal,
              (Journal{"Match::Close", "Model::Close", "Model::GetName", "Model::IsOpen",
                       "Match::Close", "Model::Close", "Model::~Model"}));
}

TEST_F(LifecycleTest, IsOpenAsksTheModelAndTakesNoHandleForAnAnswer) {
    EXPECT_EQ(ZOL_BlockModel_IsOpen(handle_), 1);
    doubles::script.opens = false;
    EXPECT_EQ(ZOL_BlockModel_IsOpen(handle_), 0);

    BlockModelHandle without_model;
    for (BlockModelHandle* const handle :
         {static_cast<BlockModelHandle*>(nullptr), &without_model}) {
        make_error_pending();
        EXPECT_EQ(ZOL_BlockModel_IsOpen(handle), 0);
        EXPECT_EQ(ZOL_API_HasError(), 0);
    }
}

TEST_F(LifecycleTest, AThrowWhileOpeningLeavesNoModelBehind) {
    doubles::script.throwing = "Model::IsOpen";
    EXPECT_THROW(ZOL_BlockModel_Open("model"), doubles::EngineFailure);
    EXPECT_EQ(doubles::journal.back(), "Model::~Model");
}

}  // namespace
}  // namespace zol::testing
