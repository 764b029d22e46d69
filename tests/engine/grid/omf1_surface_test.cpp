#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "engine/formats/read_error.h"
#include "engine/grid/source.h"
#include "platform/zolGridExport.h"
#include "tests/engine/omf1_writer.h"
#include "tests/engine/temporary_file.h"

namespace zol::engine::grid {
namespace {

using model::grid::Grid;
using testing::HasSubstr;
using testing_support::Omf1Writer;
using testing_support::TemporaryFile;

/// A file with one grid surface "floor" of 3 x 2 nodes, 10 and 5 apart, under the project's
/// origin (100, 200, 300); `more` are further members of the geometry.
std::string surface_file(const std::string& more, const std::vector<double>& offsets = {},
                         const std::string& tensors = R"("tensor_u":[10,10],"tensor_v":[5])") {
    Omf1Writer writer;
    writer.Object("p", "Project", R"("origin":[100,200,300],"elements":["t","e"])");
    writer.Object("t", "SurfaceElement", R"("name":"mesh","geometry":"tg")");
    writer.Object("tg", "SurfaceGeometry", R"("vertices":"none","triangles":"none")");
    writer.Object("e", "SurfaceElement", R"("name":"floor","geometry":"g")");
    std::string members = R"("origin":[1,2,3],)" + tensors + more;
    if (!offsets.empty()) {
        writer.Object("a", "ScalarArray", "\"array\":" + writer.Blob(offsets));
        members += R"(,"offset_w":"a")";
    }
    writer.Object("g", "SurfaceGridGeometry", members);
    return writer.Bytes();
}

const std::vector<double> kOffsets = {0, 1, 2, 10, 11, 12};

TEST(Omf1Surface, LiesInTheWorldWithHeightsForValues) {
    struct Row {
        const char* name;
        const char* axes;
        geometry::Point2D lower;
        geometry::Point2D upper;
        double south_west;
        double north_east;
    };
    const Row rows[] = {
        {"plain", "", {101, 202}, {121, 207}, 303, 315},
        {"u runs west, so offsets go down",
         R"(,"axis_u":[-1,0,0])",
         {81, 202},
         {101, 207},
         301,
         293},
        {"v runs south", R"(,"axis_v":[0,-1,0])", {101, 197}, {121, 202}, 293, 301},
        {"both", R"(,"axis_u":[-1,0,0],"axis_v":[0,-1,0])", {81, 197}, {101, 202}, 315, 303},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const TemporaryFile file(surface_file(row.axes, kOffsets));
        const Grid grid(file.Path());
        ASSERT_TRUE(grid.IsValid());
        EXPECT_EQ(grid.GetWidthNodeCount(), 3);
        EXPECT_EQ(grid.GetHeightNodeCount(), 2);
        geometry::Point2D lower;
        geometry::Point2D upper;
        grid.GetExtent(lower, upper);
        EXPECT_DOUBLE_EQ(lower.x, row.lower.x);
        EXPECT_DOUBLE_EQ(lower.y, row.lower.y);
        EXPECT_DOUBLE_EQ(upper.x, row.upper.x);
        EXPECT_DOUBLE_EQ(upper.y, row.upper.y);
        double value = 0.0;
        bool masked = true;
        EXPECT_TRUE(grid.GetNodeValue(0, 0, value, masked));
        EXPECT_EQ(value, row.south_west);
        EXPECT_FALSE(masked);
        EXPECT_TRUE(grid.GetNodeValue(2, 1, value, masked));
        EXPECT_EQ(value, row.north_east);
    }
}

TEST(Omf1Surface, IsFlatWithoutOffsetsAndMaskedWhereOneIsMissing) {
    double value = 0.0;
    bool masked = true;
    const TemporaryFile flat(surface_file(""));
    EXPECT_TRUE(Grid(flat.Path() + "#floor").GetNodeValue(2, 1, value, masked));
    EXPECT_EQ(value, 303);
    EXPECT_FALSE(masked);
    const double missing = std::numeric_limits<double>::quiet_NaN();
    const TemporaryFile holed(surface_file("", {0, 1, missing, 10, 11, 12}));
    const Grid grid(holed.Path());
    EXPECT_TRUE(grid.GetNodeValue(2, 0, value, masked));
    EXPECT_TRUE(masked);
    EXPECT_TRUE(grid.GetNodeValue(1, 0, value, masked));
    EXPECT_FALSE(masked);
}

TEST(Omf1Surface, WhatIsNoGridSaysWhy) {
    struct Row {
        const char* name;
        std::string bytes;
        const char* element;
        const char* reason;
    };
    const Row rows[] = {
        {"no such element", surface_file(""), "#roof",
         "no grid surface \"roof\"; its elements are \"mesh\" (SurfaceElement)"},
        {"a mesh", surface_file(""), "#mesh", "no grid surface \"mesh\""},
        {"standing up", surface_file(R"(,"axis_v":[0,0,1])"), "", "no level lattice"},
        {"turned", surface_file(R"(,"axis_u":[0.8,0.6,0],"axis_v":[-0.6,0.8,0])"), "",
         "no level lattice"},
        {"widths that differ", surface_file("", {}, R"("tensor_u":[10,11],"tensor_v":[5])"), "",
         "not evenly apart"},
        {"no widths", surface_file("", {}, R"("tensor_u":[],"tensor_v":[5])"), "", "is empty"},
        {"a width below 0", surface_file("", {}, R"("tensor_u":[-1],"tensor_v":[5])"), "",
         "no width of a cell"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const TemporaryFile file(row.bytes);
        try {
            open_source(file.Path() + row.element);
            ADD_FAILURE() << "it opens";
        } catch (const ReadError& error) {
            EXPECT_THAT(error.what(), HasSubstr(row.reason));
        }
    }
    // The one of the sample is a wall.
    EXPECT_FALSE(Grid(ZOL_SAMPLES "/omf/test_file.omf").IsValid());
}

TEST(Omf1Surface, AnArrayOfAnotherLengthMakesItsNodesUnreadable) {
    const TemporaryFile file(surface_file("", {0, 1, 2, 10, 11}));
    const Grid grid(file.Path());
    ASSERT_TRUE(grid.IsValid());
    double value = -77;
    bool masked = false;
    EXPECT_FALSE(grid.GetNodeValue(0, 0, value, masked));
    EXPECT_EQ(value, -77);
}

}  // namespace
}  // namespace zol::engine::grid
