// A block model opened on the scripted library.
#pragma once

#include <gtest/gtest.h>

#include "api/zolExportedApi_ReadOnly.h"
#include "block/handle.h"
#include "tests/doubles/scripted_block.h"

namespace zol::testing {

class BlockModelTest : public ::testing::Test {
protected:
    BlockModelTest() {
        doubles::script = {};
        doubles::during_call = nullptr;
        ZOL_API_Init();
        handle_ = ZOL_BlockModel_Open("model");
        doubles::journal.clear();
    }

    ~BlockModelTest() override {
        doubles::script = {};
        doubles::during_call = nullptr;
        if (handle_ != nullptr) {
            ZOL_BlockModel_Close(handle_);
        }
    }

    /// Puts the handle in the state that a setting of the match leaves it in.
    void BeginMatch() {
        handle_->match = &handle_->model->GetMatch();
        doubles::journal.clear();
    }

    BlockModelHandle* handle_;
};

}  // namespace zol::testing
