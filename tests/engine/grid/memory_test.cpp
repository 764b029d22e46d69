// What a walk over a large raster takes.
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "platform/zolGridExport.h"
#include "tests/engine/grid/grid_asking.h"
#include "tests/engine/grid/rasters.h"

namespace zol::engine::grid {
namespace {

using model::grid::Grid;
using testing_support::node_of;
using testing_support::Raster;

/// The most memory that this process has held at a time since the last forgetting, in
/// bytes; 0 where the system does not tell.
double peak_bytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) {
            return std::stod(line.substr(6)) * 1024;
        }
    }
    return 0.0;
}

bool forget_peak() {
    std::ofstream command("/proc/self/clear_refs");
    return static_cast<bool>(command << "5" << std::flush);
}

TEST(Memory, OfAWalkIsBoundedWhateverTheRaster) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "freed memory is kept back";
#endif
    // 800 MB when decoded.
    constexpr int kSide = 10000;
    constexpr double kMost = 64e6;
    Raster raster(kSide, kSide, GDT_Float64, {"SPARSE_OK=YES", "TILED=YES"});
    const Grid grid(raster.Path());
    ASSERT_TRUE(grid.IsValid());
    // What GDAL takes once.
    ASSERT_TRUE(node_of(grid, 0, 0).read);
    if (!forget_peak()) {
        GTEST_SKIP() << "the peak can't be measured here";
    }
    const double before = peak_bytes();
    constexpr int kStep = 16;
    int unread = 0;
    for (int i = 0; i < kSide; i += kStep) {
        for (int j = 0; j < kSide; j += kStep) {
            unread += node_of(grid, j, i).read ? 0 : 1;
        }
    }
    for (int i = 0; i < kSide; i += kStep) {
        for (int j = 0; j < kSide; j += kStep) {
            unread += node_of(grid, i, j).read ? 0 : 1;
        }
    }
    EXPECT_EQ(unread, 0);
    EXPECT_LT(peak_bytes() - before, kMost);
}

}  // namespace
}  // namespace zol::engine::grid
