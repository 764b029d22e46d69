// Rasters as grids: where nodes lie, what is masked, and which values come out.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

#include "platform/zolGridExport.h"
#include "tests/engine/grid/grid_asking.h"
#include "tests/engine/grid/rasters.h"
#include "tests/engine/temporary_file.h"

namespace zol::engine::grid {
namespace {

using model::grid::Grid;
using testing::HasSubstr;
using testing_support::grid_text;
using testing_support::Node;
using testing_support::node_of;
using testing_support::Raster;
using testing_support::read_all;
using testing_support::reason_of;
using testing_support::TemporaryFile;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(Raster, NodesLieWhereTheFileSaysWhateverItsOrder) {
    struct Row {
        const char* name;
        Raster::Place place;
        geometry::Point2D lower;
        geometry::Point2D upper;
        double along_x;
        double along_y;
        /// Of the node of least x and y.
        double south_west;
    };
    // 4 columns, 3 rows; the cell in column c and row r holds c + 10 r.
    const Row rows[] = {
        {"north up", {100, 10, 0, 230, 0, -10}, {105, 205}, {135, 225}, 10, 10, 20},
        {"south up", {100, 10, 0, 200, 0, 10}, {105, 205}, {135, 225}, 10, 10, 0},
        {"from the east", {140, -10, 0, 230, 0, -10}, {105, 205}, {135, 225}, 10, 10, 23},
        {"not square", {100, 2, 0, 230, 0, -10}, {101, 205}, {107, 225}, 2, 10, 20},
        {"turned by rounding",
         {100, 10, 1e-10, 230, -1e-10, -10},
         {105, 205},
         {135, 225},
         10,
         10,
         20},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Raster raster(4, 3);
        raster.PutAt(row.place);
        const Grid grid(raster.Path());
        ASSERT_TRUE(grid.IsValid());
        geometry::Point2D lower;
        geometry::Point2D upper;
        double along_x = 0.0;
        double along_y = 0.0;
        grid.GetExtent(lower, upper);
        grid.GetSpacing(along_x, along_y);
        EXPECT_DOUBLE_EQ(lower.x, row.lower.x);
        EXPECT_DOUBLE_EQ(lower.y, row.lower.y);
        EXPECT_DOUBLE_EQ(upper.x, row.upper.x);
        EXPECT_DOUBLE_EQ(upper.y, row.upper.y);
        EXPECT_DOUBLE_EQ(along_x, row.along_x);
        EXPECT_DOUBLE_EQ(along_y, row.along_y);
        EXPECT_EQ(grid.GetWidthNodeCount(), 4);
        EXPECT_EQ(grid.GetHeightNodeCount(), 3);
        EXPECT_EQ(node_of(grid, 0, 0).value, row.south_west);
        // The opposite corners of the file add up to 23.
        EXPECT_EQ(node_of(grid, 3, 2).value, 23 - row.south_west);
        for (const auto& [column, line] :
             {std::pair{-1, 0}, {0, -1}, {4, 0}, {0, 3}, {-2147483647 - 1, 2147483647}}) {
            EXPECT_FALSE(node_of(grid, column, line).read) << column << ' ' << line;
        }
    }
}

TEST(Raster, GroundControlPointsServeWhenAllAreOnOneGeotransform) {
    for (const double off : {0.0, 30.0}) {
        SCOPED_TRACE(off);
        Raster raster(4, 3);
        raster.PutAtPoints(off);
        const Grid grid(raster.Path());
        ASSERT_TRUE(grid.IsValid());
        geometry::Point2D lower;
        geometry::Point2D upper;
        grid.GetExtent(lower, upper);
        EXPECT_NEAR(lower.x, off == 0.0 ? 105 : 0, 1e-9);
        EXPECT_NEAR(upper.y, off == 0.0 ? 225 : 2, 1e-9);
        EXPECT_EQ(node_of(grid, 0, 0).value, 20);
    }
}

/// Holds all nodes of a grid against what GDAL reads.
void expect_as_gdal(const std::string& path, const Grid& grid) {
    GDALAllRegister();
    CPLSetThreadLocalConfigOption("AAIGRID_DATATYPE", "Float64");
    GDALDatasetH dataset = GDALOpen(path.c_str(), GA_ReadOnly);
    CPLSetThreadLocalConfigOption("AAIGRID_DATATYPE", nullptr);
    ASSERT_NE(dataset, nullptr);
    GDALRasterBandH band = GDALGetRasterBand(dataset, 1);
    const int columns = GDALGetRasterXSize(dataset);
    const int rows = GDALGetRasterYSize(dataset);
    ASSERT_EQ(grid.GetWidthNodeCount(), columns);
    ASSERT_EQ(grid.GetHeightNodeCount(), rows);
    const auto cells = static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows);
    std::vector<double> values(cells);
    std::vector<double> mask(cells);
    Raster::Check(GDALRasterIO(band, GF_Read, 0, 0, columns, rows, values.data(), columns, rows,
                               GDT_Float64, 0, 0));
    Raster::Check(GDALRasterIO(GDALGetMaskBand(band), GF_Read, 0, 0, columns, rows, mask.data(),
                               columns, rows, GDT_Float64, 0, 0));
    Raster::Place place{};
    const bool is_south_up = GDALGetGeoTransform(dataset, place.data()) == CE_None && place[5] > 0;
    int wrong = 0;
    for (std::size_t cell = 0; cell < cells; ++cell) {
        const auto column = static_cast<int>(cell) % columns;
        const auto row = static_cast<int>(cell) / columns;
        const Node node = node_of(grid, column, is_south_up ? row : rows - 1 - row);
        const bool is_masked = mask[cell] == 0 || !std::isfinite(values[cell]);
        wrong += node.read && node.masked == is_masked && (is_masked || node.value == values[cell])
                     ? 0
                     : 1;
    }
    EXPECT_EQ(wrong, 0);
    GDALClose(dataset);
}

TEST(Raster, RealFilesAreWhereTheyAreKnownToBeAndAsGdalReadsThem) {
    struct Row {
        const char* name;
        geometry::Point2D lower;
        geometry::Point2D upper;
        /// NaN where no source says it.
        double south_west = kNan;
        double north_east = kNan;
    };
    // Figures of the files' publishers, or seen in another reader. Pixels that are points
    // (n43.tif, byte_point.tif) and nodes that the header states (the Surfer files) are no
    // half cell off.
    const Row rows[] = {
        {"n43.tif", {-80, 43}, {-79, 44}, 202, 247},
        {"byte_point.tif", {440720, 3750180}, {441860, 3751320}, 181, 148},
        {"gsg_ascii.grd", {440750, 3750150}, {441890, 3751290}, 181, 148},
        {"gsg_binary.grd", {440750, 3750150}, {441890, 3751290}, 181, 148},
        {"gsg_7binary.grd", {440750, 3750150}, {441890, 3751290}, 181, 148},
        {"warp_52_dem.tif",
         {8453404.0272763865, 4676803.3342},
         {8472811.51, 4696210.8209},
         2671,
         1360},
        {"surfer-grid.grd", {0, 0}, {1105000, 905000}},
        {"grassascii.txt", {-68.75, 20.8333333}, {118.75, 229.1666667}},
        {"float_nan.tif", {50, 50}, {250, 150}},
        {"byte_nogeoref.tif", {0, 0}, {19, 19}, 181, 148},
        {"sombrero_gmt.grd", {-15, -15}, {15, 15}},
        {"pixel_per_line_comma.asc", {100025, 650025}, {100725, 650575}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string path = std::string(ZOL_SAMPLES "/grid/") + row.name;
        const Grid grid(path);
        ASSERT_TRUE(grid.IsValid());
        geometry::Point2D lower;
        geometry::Point2D upper;
        grid.GetExtent(lower, upper);
        const double slack = 1e-8 * std::fabs(upper.y);
        EXPECT_NEAR(lower.x, row.lower.x, slack);
        EXPECT_NEAR(lower.y, row.lower.y, slack);
        EXPECT_NEAR(upper.x, row.upper.x, slack);
        EXPECT_NEAR(upper.y, row.upper.y, slack);
        expect_as_gdal(path, grid);
        if (!std::isnan(row.south_west)) {
            EXPECT_EQ(node_of(grid, 0, 0).value, row.south_west);
            EXPECT_EQ(
                node_of(grid, grid.GetWidthNodeCount() - 1, grid.GetHeightNodeCount() - 1).value,
                row.north_east);
        }
    }
}

TEST(Raster, GmtRowsRunFromTheSouth) {
    std::string bytes = read_all(ZOL_SAMPLES "/grid/sombrero_gmt.grd");
    // The first of its values: 42 as a big-endian float.
    bytes.replace(0x640, 4, std::string("\x42\x28\0\0", 4));
    const TemporaryFile file(bytes);
    const Grid grid(file.Path());
    ASSERT_TRUE(grid.IsValid());
    EXPECT_EQ(node_of(grid, 0, 0).value, 42);
}

TEST(Raster, AnAlphaBandMasks) {
    Raster raster(3, 1, GDT_Byte, {"ALPHA=YES"}, 2);
    raster.Fill({1, 2, 3});
    raster.Fill({255, 0, 1}, 2);
    const Grid grid(raster.Path());
    ASSERT_TRUE(grid.IsValid());
    EXPECT_FALSE(node_of(grid, 0, 0).masked);
    EXPECT_TRUE(node_of(grid, 1, 0).masked);
    EXPECT_FALSE(node_of(grid, 2, 0).masked);
}

TEST(Raster, BandsSideBySideAreToldApart) {
    for (const char* tiled : {"TILED=NO", "TILED=YES"}) {
        Raster raster(4, 3, GDT_Float32, {"INTERLEAVE=PIXEL", tiled}, 3);
        raster.Fill({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}, 2);
        const std::string path = raster.Path();
        EXPECT_EQ(node_of(Grid(path), 3, 0).value, 23);
        EXPECT_EQ(node_of(Grid(path + "#2"), 3, 0).value, 11);
        EXPECT_EQ(node_of(Grid(path + "#3"), 3, 0).value, 0);
    }
}

TEST(Raster, PagesOfATiffAreNamedByTheirNumber) {
    Raster raster(4, 3);
    Raster other(2, 2);
    other.Fill({7, 8, 9, 10});
    raster.Append(other);
    const std::string path = raster.Path();
    EXPECT_EQ(node_of(Grid(path), 3, 0).value, 23);
    EXPECT_EQ(node_of(Grid(path + "#page 1"), 3, 0).value, 23);
    const Grid second(path + "#page 2");
    ASSERT_TRUE(second.IsValid());
    EXPECT_EQ(second.GetWidthNodeCount(), 2);
    EXPECT_EQ(node_of(second, 1, 0).value, 10);
    EXPECT_THAT(reason_of(path + "#page 3"),
                HasSubstr("it has no band \"page 3\", but 1, and 2 rasters, \"#page 1\" to "
                          "\"#page 2\""));
}

TEST(Raster, MasksWhatTheFileDeclaresAndNothingElse) {
    struct Row {
        const char* name;
        GDALDataType type;
        double nodata;
        std::vector<double> values;
        std::vector<bool> masked;
    };
    const Row rows[] = {
        {"a whole number", GDT_Int32, -9999, {-9999, -9998, 0}, {true, false, false}},
        {"nothing declared", GDT_Int32, kNan, {-9999, 0, 1}, {false, false, false}},
        {"a part of a number", GDT_Int16, 2.5, {2, 3, 2}, {false, false, false}},
        {"out of the type's range", GDT_Byte, -1, {255, 0, 1}, {false, false, false}},
        {"NaN and infinite", GDT_Float32, kNan, {kNan, kInfinity, 0}, {true, true, false}},
        {"infinite, declared",
         GDT_Float64,
         -kInfinity,
         {-kInfinity, -1e308, 0},
         {true, false, false}},
        {"with more digits than a float",
         GDT_Float32,
         -3.4028234663852886e38,
         {-3.4028235e38, -3.3e38, 0},
         {true, false, false}},
        {"beyond a float",
         GDT_Float32,
         -1.7976931348623157e308,
         {-3.4e38, 0, 1},
         {false, false, false}},
        {"rounded by its writer",
         GDT_Float64,
         1.70141e38,
         {1.7014100000000001e38, 1.69e38, 0},
         {true, false, false}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Raster raster(3, 1, row.type);
        if (!std::isnan(row.nodata)) {
            Raster::Check(GDALSetRasterNoDataValue(raster.Band(), row.nodata));
        }
        raster.Fill(row.values);
        const Grid grid(raster.Path());
        ASSERT_TRUE(grid.IsValid());
        for (int i = 0; i < 3; ++i) {
            const auto at = static_cast<std::size_t>(i);
            const Node node = node_of(grid, i, 0);
            EXPECT_TRUE(node.read);
            EXPECT_EQ(node.masked, row.masked[at]) << i;
        }
    }
}

TEST(Raster, AMaskDoesNotSilenceTheMissingNumber) {
    Raster raster(3, 1, GDT_Int16);
    Raster::Check(GDALSetRasterNoDataValue(raster.Band(), -9999));
    raster.Fill({-9999, 1, 2});
    raster.Mask({255, 255, 0});
    const Grid grid(raster.Path());
    ASSERT_TRUE(grid.IsValid());
    EXPECT_TRUE(node_of(grid, 0, 0).masked);
    EXPECT_FALSE(node_of(grid, 1, 0).masked);
    EXPECT_TRUE(node_of(grid, 2, 0).masked);
}

TEST(Raster, TellsBigWholeNumbersApartWhenMasking) {
    constexpr std::int64_t kMissing = 9007199254740993;
    Raster raster(3, 1, GDT_Int64);
    Raster::Check(GDALSetRasterNoDataValueAsInt64(raster.Band(), kMissing));
    std::array<std::int64_t, 3> values = {kMissing, kMissing - 1, -1};
    Raster::Check(
        GDALRasterIO(raster.Band(), GF_Write, 0, 0, 3, 1, values.data(), 3, 1, GDT_Int64, 0, 0));
    const Grid grid(raster.Path());
    EXPECT_TRUE(node_of(grid, 0, 0).masked);
    EXPECT_FALSE(node_of(grid, 1, 0).masked);
    EXPECT_EQ(node_of(grid, 2, 0).value, -1);
}

TEST(Raster, AppliesScaleAndOffsetButToMissingNumbers) {
    Raster raster(3, 1, GDT_Int16);
    Raster::Check(GDALSetRasterNoDataValue(raster.Band(), -32768));
    Raster::Check(GDALSetRasterScale(raster.Band(), 0.1));
    Raster::Check(GDALSetRasterOffset(raster.Band(), 1000));
    raster.Fill({-32768, 0, 15});
    const Grid grid(raster.Path());
    const Node missing = node_of(grid, 0, 0);
    EXPECT_TRUE(missing.masked);
    EXPECT_EQ(missing.value, -32768);
    EXPECT_EQ(node_of(grid, 1, 0).value, 1000);
    EXPECT_EQ(node_of(grid, 2, 0).value, 15 * 0.1 + 1000);
}

TEST(Raster, MasksWhatItsScaleMakesInfinite) {
    Raster raster(2, 1, GDT_Float64);
    Raster::Check(GDALSetRasterScale(raster.Band(), 1e300));
    raster.Fill({1e300, 2});
    const Grid grid(raster.Path());
    EXPECT_TRUE(node_of(grid, 0, 0).masked);
    EXPECT_FALSE(node_of(grid, 1, 0).masked);
    EXPECT_EQ(node_of(grid, 1, 0).value, 2e300);
}

TEST(Raster, KeepsTheDigitsOfTexts) {
    const TemporaryFile file(grid_text(2, 1, "1234567.891 1e-320\n"));
    const Grid grid(file.Path());
    ASSERT_TRUE(grid.IsValid());
    EXPECT_EQ(node_of(grid, 0, 0).value, 1234567.891);
    EXPECT_EQ(node_of(grid, 1, 0).value, 1e-320);
}

TEST(Raster, TakesABandByItsNumberOrItsName) {
    const std::string file = ZOL_SAMPLES "/grid/all-nodata.tif";
    for (const char* band : {"", "#1", "#4"}) {
        EXPECT_TRUE(Grid(file + band).IsValid()) << band;
    }
    for (const char* band : {"#0", "#5", "#-1", "#4x", "#99999999999999999999", "#grade"}) {
        EXPECT_THAT(reason_of(file + band), HasSubstr("it has no band")) << band;
    }
    Raster raster(2, 1);
    GDALSetDescription(raster.Band(), "seam floor");
    EXPECT_TRUE(Grid(raster.Path() + "#seam floor").IsValid());
    // A file of the whole name goes first.
    const TemporaryFile plain(grid_text(1, 1, "7\n"));
    std::ofstream(plain.Path() + "#9") << grid_text(1, 1, "8\n");
    const Grid grid(plain.Path() + "#9");
    ::unlink((plain.Path() + "#9").c_str());
    ASSERT_TRUE(grid.IsValid());
    EXPECT_EQ(node_of(grid, 0, 0).value, 8);
}

}  // namespace
}  // namespace zol::engine::grid
