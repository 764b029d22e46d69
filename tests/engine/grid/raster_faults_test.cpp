// Rasters that do not open, and files that turn out bad later.
#include <cpl_vsi.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <memory>
#include <string>
#include <string_view>
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

TEST(Raster, WhatIsNoGridSaysWhy) {
    const TemporaryFile empty("");
    const TemporaryFile prose("Dear all,\nplease find the grid attached.\n");
    const TemporaryFile zip("PK\x03\x04 and so on");
    const TemporaryFile gzip("\x1f\x8b and so on");
    const TemporaryFile not_apart(
        "ncols 2\nnrows 1\nxllcorner 1e300\nyllcorner 0\ncellsize 1\n1 2\n");
    const TemporaryFile taken("");
    ::unlink(taken.Path().c_str());
    ASSERT_EQ(::mkfifo(taken.Path().c_str(), 0600), 0);
    Raster complex(2, 2, GDT_CFloat32);
    Raster sheared(2, 2);
    sheared.PutAt({0, 10, 1e-8, 0, 0, -10});
    Raster quarter(2, 2);
    quarter.PutAt({0, 0, 10, 0, 10, 0});

    const TemporaryFile mosaic("<VRTDataset rasterXSize=\"9\" rasterYSize=\"9\"/>");
    // A block of one band would pass.
    Raster side_by_side(
        8000, 8000, GDT_Byte,
        {"INTERLEAVE=PIXEL", "TILED=YES", "BLOCKXSIZE=8000", "BLOCKYSIZE=8000", "SPARSE_OK=TRUE"},
        5);

    struct Row {
        const char* name;
        std::string file;
        const char* reason;
    };
    const Row rows[] = {
        {"not there", "/no/such/file.tif", "No such file"},
        {"no name", "", "can't open the file"},
        {"empty", empty.Path(), "the file is empty"},
        {"prose", prose.Path(), "it is in no format that is read"},
        {"a zip archive", zip.Path(), "zip archive"},
        {"compressed", gzip.Path(), "it is compressed"},
        {"a folder", ZOL_SAMPLES, "it is a folder"},
        {"a pipe", taken.Path(), "not a regular file"},
        {"an address", "https://example.com/dem.tif", "/vsicurl/https://example.com/dem.tif"},
        {"a service", "WMS:https://example.com/?", "can't open the file"},
        {"a description of a mosaic", mosaic.Path(), "made of other files"},
        {"five bands in each block", side_by_side.Path(), "more than is read in one piece"},
        {"a raster in its own name", "<VRTDataset rasterXSize=\"9\" rasterYSize=\"9\"/>",
         "can't open the file"},
        {"a request of GDAL's", "GTIFF_DIR:1:" ZOL_SAMPLES "/grid/n43.tif", "can't open the file"},
        {"a virtual file that is not there", "/vsimem/nothing.tif", "it is in no format"},
        {"cells that are lost in their coordinates", not_apart.Path(), "can't be told apart"},
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

    // GDAL can't read a number of so many digits, nor find the rows behind it: to look for
    // each by looking for all ahead of it would never end.
    std::string text = "1 2 3\n4 5 6\n7 8 " + std::string(600, '0') + "\n";
    for (int row = 3; row < 2000; ++row) {
        text += "9 9 9\n";
    }
    const TemporaryFile long_number(grid_text(3, 2000, text));
    const Grid rows(long_number.Path());
    ASSERT_TRUE(rows.IsValid());
    EXPECT_FALSE(node_of(rows, 0, 0).read);
    EXPECT_FALSE(node_of(rows, 0, 1000).read);
    EXPECT_EQ(node_of(rows, 2, 1998).value, 6);

    double value = -77;
    bool masked = true;
    EXPECT_FALSE(strips.GetNodeValue(3, 0, value, masked));
    EXPECT_EQ(value, -77) << "what was not read is not written";
    EXPECT_TRUE(masked);
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

TEST(Raster, AHeaderBesideTheFileIsWatchedToo) {
    const std::vector<float> values = {1, 2, 3, 4, 5, 6};
    const TemporaryFile file(
        std::string_view(reinterpret_cast<const char*>(values.data()), values.size() * 4));
    const std::string header = file.Path() + ".hdr";
    const std::string text =
        "ncols 3\nnrows 2\nxllcorner 0\nyllcorner 0\ncellsize 1\nbyteorder LSBFIRST\n"
        "nbits 32\npixeltype FLOAT\n";
    std::ofstream(header) << text;
    const Grid kept(file.Path());
    const Grid changed(file.Path());
    ASSERT_TRUE(kept.IsValid());
    EXPECT_EQ(node_of(kept, 0, 0).value, 4);
    std::ofstream(header) << text << "xdim 1\n";
    EXPECT_FALSE(node_of(changed, 0, 0).read);
    EXPECT_EQ(node_of(kept, 2, 1).value, 3) << "what was read stays";
    ::unlink(header.c_str());
}

TEST(Raster, AFileThatIsTakenAwayStaysOpen) {
    auto file = std::make_unique<TemporaryFile>(read_all(ZOL_SAMPLES "/grid/warp_52_dem.tif"));
    const Grid grid(file->Path());
    file.reset();
    EXPECT_EQ(node_of(grid, 0, 0).value, 2671);
}

}  // namespace
}  // namespace zol::engine::grid
