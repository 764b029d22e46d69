// What the process around has set is neither changed nor felt: GDAL's own state, the
// floating-point mode, the locale.
#include <cpl_conv.h>
#include <cpl_error.h>
#include <gdal.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cfenv>
#include <clocale>
#include <cmath>
#include <filesystem>
#include <set>
#include <string>

#include "platform/zolGridExport.h"
#include "tests/engine/grid/rasters.h"
#include "tests/engine/temporary_file.h"

#if defined(__SSE2__)
#include <xmmintrin.h>
#endif

namespace zol::engine::grid {
namespace {

using model::grid::Grid;
using testing_support::Raster;
using testing_support::TemporaryFile;

int errors_of_the_host = 0;
void CPL_STDCALL count_error(CPLErr, CPLErrorNum, const char*) {
    ++errors_of_the_host;
}

std::set<std::string> files_beside(const std::string& path) {
    std::set<std::string> names;
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    const std::string stem = std::filesystem::path(path).filename();
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().filename();
        if (name.starts_with(stem)) names.insert(name);
    }
    return names;
}

TEST(Surroundings, TheHostsUseOfGdalIsLeftAlone) {
    errors_of_the_host = 0;
    CPLPushErrorHandler(count_error);
    CPLSetThreadLocalConfigOption("GDAL_PAM_ENABLED", "YES");
    CPLSetThreadLocalConfigOption("GTIFF_POINT_GEO_IGNORE", "YES");
    CPLError(CE_Warning, CPLE_AppDefined, "the host's own");
    const auto cached = GDALGetCacheUsed64();
    const auto cache_limit = GDALGetCacheMax64();

    EXPECT_FALSE(Grid(ZOL_SAMPLES "/README.md").IsValid());
    const Grid masked(ZOL_SAMPLES "/grid/test_with_mask_8bit.tif");
    const Grid points(ZOL_SAMPLES "/grid/byte_point.tif");
    double value = 0.0;
    bool flag = false;
    EXPECT_TRUE(masked.GetNodeValue(0, 0, value, flag));
    geometry::Point2D lower;
    geometry::Point2D upper;
    points.GetExtent(lower, upper);

    EXPECT_EQ(errors_of_the_host, 1);
    EXPECT_STREQ(CPLGetLastErrorMsg(), "the host's own");
    EXPECT_STREQ(CPLGetThreadLocalConfigOption("GDAL_PAM_ENABLED", ""), "YES");
    EXPECT_STREQ(CPLGetThreadLocalConfigOption("AAIGRID_DATATYPE", "none"), "none");
    EXPECT_EQ(lower.x, 440720) << "the host's option is not ours";
    EXPECT_EQ(GDALGetCacheUsed64(), cached);
    EXPECT_EQ(GDALGetCacheMax64(), cache_limit);
    CPLSetThreadLocalConfigOption("GDAL_PAM_ENABLED", nullptr);
    CPLSetThreadLocalConfigOption("GTIFF_POINT_GEO_IGNORE", nullptr);
    CPLPopErrorHandler();
}

TEST(Surroundings, NothingIsWrittenBesideAFile) {
    const TemporaryFile file(
        "ncols 2\nnrows 1\nxllcorner 0\nyllcorner 0\ncellsize 1\nNODATA_value 1\n1 2\n");
    const auto before = files_beside(file.Path());
    {
        const Grid grid(file.Path());
        double value = 0.0;
        bool masked = false;
        EXPECT_TRUE(grid.GetNodeValue(0, 0, value, masked));
    }
    EXPECT_EQ(files_beside(file.Path()), before);
}

#if defined(__SSE2__)
TEST(Surroundings, TheFloatingPointModeIsNotFelt) {
    Raster floats(3, 1, GDT_Float32);
    floats.Fill({1e-40, 0.1, -1e-44});
    const TemporaryFile text(
        "ncols 3\nnrows 1\nxllcorner 0.1\nyllcorner 0.3\ncellsize 0.7\n1e-310 0.1 2.675\n");
    const auto read = [&](const std::string& path) {
        const Grid grid(path);
        geometry::Point2D lower;
        geometry::Point2D upper;
        grid.GetExtent(lower, upper);
        std::array<double, 5> seen = {lower.x, upper.x};
        for (int i = 0; i < 3; ++i) {
            bool masked = false;
            EXPECT_TRUE(grid.GetNodeValue(i, 0, seen[static_cast<std::size_t>(i) + 2], masked));
        }
        return seen;
    };
    for (const std::string& path : {floats.Path(), text.Path()}) {
        const auto usual = read(path);
        const unsigned mode = _mm_getcsr();
        // Upward, small numbers to zero on the way in and out.
        _mm_setcsr(mode | 0x4000U | 0x8000U | 0x0040U);
        const auto unusual = read(path);
        EXPECT_NE(_mm_getcsr() & 0x8040U, 0U) << "it is left as it was";
        _mm_setcsr(mode);
        EXPECT_EQ(unusual, usual);
        EXPECT_NE(usual[2], 0.0);
    }
}
#endif

}  // namespace
}  // namespace zol::engine::grid
