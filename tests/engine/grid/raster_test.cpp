// Rasters as grids: where nodes lie, which are masked, what does not open, and what
// happens to a file that turns out bad later.
#include <cpl_vsi.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

#include "engine/formats/read_error.h"
#include "engine/grid/source.h"
#include "platform/zolGridExport.h"
#include "tests/engine/grid/rasters.h"
#include "tests/engine/temporary_file.h"

namespace zol::engine::grid {
namespace {

using model::grid::Grid;
using testing::HasSubstr;
using testing_support::Raster;
using testing_support::TemporaryFile;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// The value of a node; "masked" as NaN is not told from it, hence the flag beside it.
struct Node {
    double value = 0.0;
    bool masked = false;
    bool read = false;
};

Node node_of(const Grid& grid, int column, int row) {
    Node node;
    node.read = grid.GetNodeValue(column, row, node.value, node.masked);
    return node;
}

std::string reason_of(const std::string& name) {
    try {
        open_source(name);
    } catch (const ReadError& error) {
        return error.what();
    }
    return "it opens";
}

std::string grid_text(int columns, int rows, const std::string& values) {
    return "ncols " + std::to_string(columns) + "\nnrows " + std::to_string(rows) +
           "\nxllcorner 100\nyllcorner 200\ncellsize 10\nNODATA_value -9999\n" + values;
}

std::string read_all(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

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

TEST(Raster, RealFilesAreWhereTheyAreKnownToBe) {
    struct Row {
        const char* name;
        geometry::Point2D lower;
        geometry::Point2D upper;
        double south_west;
        double north_east;
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
        {"surfer-grid.grd", {0, 0}, {1105000, 905000}, 0, 0},
        {"grassascii.txt", {-68.75, 20.8333333}, {118.75, 229.1666667}, 0, 0},
        {"float_nan.tif", {50, 50}, {250, 150}, 0, 0},
        {"byte_nogeoref.tif", {0, 0}, {19, 19}, 181, 148},
        {"sombrero_gmt.grd", {-15, -15}, {15, 15}, 0, 0},
        {"pixel_per_line_comma.asc", {100025, 650025}, {100725, 650575}, 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Grid grid(std::string(ZOL_SAMPLES "/grid/") + row.name);
        ASSERT_TRUE(grid.IsValid());
        geometry::Point2D lower;
        geometry::Point2D upper;
        grid.GetExtent(lower, upper);
        const double slack = 1e-8 * std::fabs(upper.y);
        EXPECT_NEAR(lower.x, row.lower.x, slack);
        EXPECT_NEAR(lower.y, row.lower.y, slack);
        EXPECT_NEAR(upper.x, row.upper.x, slack);
        EXPECT_NEAR(upper.y, row.upper.y, slack);
        if (row.south_west != 0) {
            EXPECT_EQ(node_of(grid, 0, 0).value, row.south_west);
            EXPECT_EQ(
                node_of(grid, grid.GetWidthNodeCount() - 1, grid.GetHeightNodeCount() - 1).value,
                row.north_east);
        }
    }
}

TEST(Raster, NetcdfRowsRunFromTheSouth) {
    std::string bytes = read_all(ZOL_SAMPLES "/grid/sombrero_gmt.grd");
    // The first of its values: 42 as a big-endian float.
    bytes.replace(0x640, 4, std::string("\x42\x28\0\0", 4));
    const TemporaryFile file(bytes);
    const Grid grid(file.Path());
    ASSERT_TRUE(grid.IsValid());
    EXPECT_EQ(node_of(grid, 0, 0).value, 42);
}

TEST(Raster, ANetcdfHeaderThatClaimsTooMuchIsNotBelieved) {
    const std::string bytes = read_all(ZOL_SAMPLES "/grid/sombrero_gmt.grd");
    struct Row {
        const char* name;
        std::size_t at;
    };
    const Row rows[] = {
        {"dimensions", 0x0c},
        {"length of a name", 0x10},
        {"length of a dimension", 0x18},
        {"attributes", 0x2c},
        {"values of an attribute", 0x44},
        {"variables", 0x1c4},
        {"start of the values", 0x314},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        for (const char* claim : {"\x7f\xff\xff\xff", "\x01\x80\x80\x80"}) {
            std::string changed = bytes;
            changed.replace(row.at, 4, claim, 4);
            const TemporaryFile file(changed);
            EXPECT_THAT(reason_of(file.Path()), HasSubstr("its netCDF header claims"));
        }
    }
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

TEST(Raster, WhatIsNoGridSaysWhy) {
    const TemporaryFile empty("");
    const TemporaryFile prose("Dear all,\nplease find the grid attached.\n");
    const TemporaryFile zip("PK\x03\x04 and so on");
    const TemporaryFile gzip("\x1f\x8b and so on");
    const TemporaryFile zero_columns(grid_text(0, 3, "1 2 3\n"));
    const TemporaryFile negative(grid_text(-4, 3, "1 2 3\n"));
    const TemporaryFile too_many(grid_text(2147483647, 2147483647, "1 2 3\n"));
    const TemporaryFile beyond(
        "ncols 2147483648\nnrows 1\nxllcorner 0\nyllcorner 0\ncellsize 1\n1\n");
    const TemporaryFile no_cells("ncols 2\nnrows 1\nxllcorner 0\nyllcorner 0\ncellsize 0\n1 2\n");
    const TemporaryFile not_apart(
        "ncols 2\nnrows 1\nxllcorner 1e300\nyllcorner 0\ncellsize 1\n1 2\n");
    const TemporaryFile cut_head("ncols 2\nnrows 1\nxllcor");
    const TemporaryFile taken("");
    ::unlink(taken.Path().c_str());
    ASSERT_EQ(::mkfifo(taken.Path().c_str(), 0600), 0);
    Raster complex(2, 2, GDT_CFloat32);
    Raster sheared(2, 2);
    sheared.PutAt({0, 10, 1e-8, 0, 0, -10});
    Raster quarter(2, 2);
    quarter.PutAt({0, 0, 10, 0, 10, 0});

    struct Row {
        const char* name;
        std::string file;
        const char* reason;
    };
    const Row rows[] = {
        {"not there", "/no/such/file.tif", "No such file"},
        {"no name", "", "can't open the file"},
        {"empty", empty.Path(), "the file is empty"},
        {"prose", prose.Path(), "no raster in a format that is read"},
        {"a zip archive", zip.Path(), "zip archive"},
        {"compressed", gzip.Path(), "it is compressed"},
        {"a folder", ZOL_SAMPLES, "it is a folder"},
        {"a pipe", taken.Path(), "not a regular file"},
        {"an address", "https://example.com/dem.tif", "/vsicurl/https://example.com/dem.tif"},
        {"a service", "WMS:https://example.com/?", "can't open the file"},
        {"a raster in its own name", "<VRTDataset rasterXSize=\"9\" rasterYSize=\"9\"/>",
         "can't open the file"},
        {"a request of GDAL's", "GTIFF_DIR:1:" ZOL_SAMPLES "/grid/n43.tif", "can't open the file"},
        {"a virtual file that is not there", "/vsimem/nothing.tif", "no raster"},
        {"no columns", zero_columns.Path(), ""},
        {"fewer than no columns", negative.Path(), ""},
        {"too many", too_many.Path(), ""},
        {"2^31 columns", beyond.Path(), ""},
        {"no size of cells", no_cells.Path(), ""},
        {"cells that are lost in their coordinates", not_apart.Path(), "can't be told apart"},
        {"half a header", cut_head.Path(), ""},
        {"complex numbers", complex.Path(), "not plain numbers"},
        {"sheared", sheared.Path(), "rotated or sheared"},
        {"a quarter turn", quarter.Path(), "its rows run north"},
        {"rotated", ZOL_SAMPLES "/grid/rotated.tif", "rotated or sheared"},
        {"rotated and sheared", ZOL_SAMPLES "/grid/geomatrix.tif", "rotated or sheared"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string reason = reason_of(row.file);
        EXPECT_THAT(reason, HasSubstr(row.reason));
        EXPECT_NE(reason, "it opens");
        EXPECT_FALSE(Grid(row.file).IsValid());
    }
}

TEST(Raster, AHugeRasterOpensAndAnswersItsCorners) {
    Raster raster(200000, 100000, GDT_Byte, {"SPARSE_OK=YES", "TILED=YES"});
    const Grid grid(raster.Path());
    ASSERT_TRUE(grid.IsValid());
    EXPECT_TRUE(node_of(grid, 0, 0).read);
    EXPECT_TRUE(node_of(grid, 199999, 99999).read);
}

std::string bytes_of(Raster& raster) {
    vsi_l_offset size = 0;
    const auto* const bytes =
        reinterpret_cast<const char*>(VSIGetMemFileBuffer(raster.Path().c_str(), &size, FALSE));
    return {bytes, static_cast<std::size_t>(size)};
}

TEST(Raster, NodesOfALostPartAreUnreadableAndTheOthersStay) {
    // Five rows to a strip.
    Raster raster(20, 20, GDT_Byte, {"BLOCKYSIZE=5"});
    std::string bytes = bytes_of(raster);
    bytes.resize(bytes.size() - 1);
    const TemporaryFile tiff(bytes);
    const Grid strips(tiff.Path());
    ASSERT_TRUE(strips.IsValid());
    for (int row = 0; row < 20; ++row) {
        const Node node = node_of(strips, 3, row);
        // The last strip is the southern one.
        EXPECT_EQ(node.read, row >= 5) << row;
        EXPECT_EQ(node.value, row >= 5 ? 3 + 10 * (19 - row) : 0);
    }

    // So many rows short that trying all of them in vain would never end.
    const TemporaryFile far_short(grid_text(3, 2000, "1 2 3\n4 5 6\n7 8\n"));
    const Grid rows(far_short.Path());
    EXPECT_FALSE(node_of(rows, 0, 0).read);
    EXPECT_FALSE(node_of(rows, 0, 1000).read);
    EXPECT_EQ(node_of(rows, 2, 1998).value, 6);

    const TemporaryFile text(grid_text(3, 4, "1 2 3\n4 5 6\n7 8\n"));
    const Grid grid(text.Path());
    ASSERT_TRUE(grid.IsValid());
    double value = -77;
    bool masked = true;
    EXPECT_TRUE(grid.GetNodeValue(0, 3, value, masked));
    EXPECT_EQ(value, 1);
    EXPECT_FALSE(masked);
    value = -77;
    masked = true;
    EXPECT_FALSE(grid.GetNodeValue(0, 0, value, masked)) << "there is no such row in the file";
    EXPECT_EQ(value, -77) << "what was not read is not written";
    EXPECT_TRUE(masked);
    EXPECT_TRUE(grid.GetNodeValue(2, 2, value, masked));
    EXPECT_EQ(value, 6);
}

TEST(Raster, AFileThatChangesIsNotReadOn) {
    const std::string bytes = read_all(ZOL_SAMPLES "/grid/warp_52_dem.tif");
    TemporaryFile file(bytes);
    const Grid before(file.Path());
    const Grid seen(file.Path());
    ASSERT_EQ(node_of(seen, 0, 0).value, 2671);
    file.Rewrite(std::string(bytes.size(), '\0'));
    EXPECT_FALSE(node_of(before, 0, 0).read);
    EXPECT_EQ(node_of(seen, 0, 0).value, 2671) << "what was read stays";
}

TEST(Raster, AFileThatIsTakenAwayStaysOpen) {
    auto file = std::make_unique<TemporaryFile>(read_all(ZOL_SAMPLES "/grid/warp_52_dem.tif"));
    const Grid grid(file->Path());
    file.reset();
    EXPECT_EQ(node_of(grid, 0, 0).value, 2671);
}

}  // namespace
}  // namespace zol::engine::grid
