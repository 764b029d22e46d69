// A triangulation opened on the scripted library.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "api/zolExportedApi_ReadOnly.h"
#include "tests/doubles/scripted_triangulation.h"
#include "tri/handle.h"

namespace zol::testing {

using Texts = std::vector<std::string>;

class TriangulationFixture : public ::testing::Test {
protected:
    TriangulationFixture() {
        doubles::triangulation_script = {};
        ZOL_API_Init();
        mesh_ = ZOL_Triangulation_Open("mesh");
        doubles::triangulation_journal.clear();
    }

    ~TriangulationFixture() override {
        doubles::triangulation_script = {};
        ZOL_Triangulation_Close(mesh_);
    }

    /// The text that a call leaves in a buffer of 255 bytes, all of which it writes.
    template <class Call>
    static std::string text_of_call(Call call) {
        constexpr std::size_t kBytes = 255;
        std::string buffer(kBytes + 2, '#');
        EXPECT_EQ(call(buffer.data()), 0);
        EXPECT_EQ(buffer.substr(kBytes), "##") << "nothing behind the buffer is touched";
        const std::size_t end = buffer.find('\0');
        EXPECT_EQ(buffer.substr(end, kBytes - end), std::string(kBytes - end, '\0'));
        return buffer.substr(0, end);
    }

    TriangulationHandle* mesh_;
};

}  // namespace zol::testing
