// netCDF rasters: nodes lie where the coordinate variables say, whatever GDAL makes of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/zolGridExport.h"
#include "tests/engine/grid/grid_asking.h"
#include "tests/engine/grid/netcdf_writer.h"
#include "tests/engine/temporary_file.h"

namespace zol::engine::grid {
namespace {

using model::grid::Grid;
using testing::HasSubstr;
using testing_support::NetcdfWriter;
using testing_support::node_of;
using testing_support::read_all;
using testing_support::reason_of;
using testing_support::TemporaryFile;

const std::vector<double> kEastward = {100, 110, 120, 130};
const std::vector<double> kWestward = {130, 120, 110, 100};
const std::vector<double> kNorthward = {20, 25, 30};
const std::vector<double> kSouthward = {30, 25, 20};

/// The value behind the i-th x and the j-th y of the file is i + 10 j.
std::vector<double> values_of(std::size_t columns, std::size_t rows) {
    std::vector<double> values;
    for (std::size_t j = 0; j < rows; ++j) {
        for (std::size_t i = 0; i < columns; ++i) {
            values.push_back(static_cast<double>(i + 10 * j));
        }
    }
    return values;
}

struct Coordinates {
    const char* x_name;
    const char* y_name;
    const char* x_unit = "";
    const char* y_unit = "";
};

std::string file_of(const Coordinates& names, const std::vector<double>& x,
                    const std::vector<double>& y) {
    return NetcdfWriter()
        .Dimension(names.y_name, static_cast<std::uint32_t>(y.size()))
        .Dimension(names.x_name, static_cast<std::uint32_t>(x.size()))
        .Variable(names.y_name, {0}, y, names.y_unit)
        .Variable(names.x_name, {1}, x, names.x_unit)
        .Variable("z", {0, 1}, values_of(x.size(), y.size()))
        .Bytes();
}

TEST(Netcdf, NodesLieWhereTheCoordinatesSayInWhateverOrder) {
    // Bare ones, which GDAL passes over, and two kinds that it knows.
    const Coordinates kinds[] = {{"x", "y"},
                                 {"easting", "northing"},
                                 {"column", "row"},
                                 {"lon", "lat"},
                                 {"a", "b", "degrees_east", "degrees_north"}};
    struct Order {
        const std::vector<double>* x;
        const std::vector<double>* y;
        double south_west;
    };
    const Order orders[] = {{&kEastward, &kNorthward, 0},
                            {&kEastward, &kSouthward, 20},
                            {&kWestward, &kNorthward, 3},
                            {&kWestward, &kSouthward, 23}};
    for (const Coordinates& kind : kinds) {
        for (const Order& order : orders) {
            SCOPED_TRACE(std::string(kind.x_name) + " " + std::to_string(order.south_west));
            const TemporaryFile file(file_of(kind, *order.x, *order.y));
            const Grid grid(file.Path());
            ASSERT_TRUE(grid.IsValid()) << reason_of(file.Path());
            geometry::Point2D lower;
            geometry::Point2D upper;
            double along_x = 0.0;
            double along_y = 0.0;
            grid.GetExtent(lower, upper);
            grid.GetSpacing(along_x, along_y);
            EXPECT_DOUBLE_EQ(lower.x, 100);
            EXPECT_DOUBLE_EQ(lower.y, 20);
            EXPECT_DOUBLE_EQ(upper.x, 130);
            EXPECT_DOUBLE_EQ(upper.y, 30);
            EXPECT_DOUBLE_EQ(along_x, 10);
            EXPECT_DOUBLE_EQ(along_y, 5);
            EXPECT_EQ(node_of(grid, 0, 0).value, order.south_west);
            // The opposite corners add up to 23.
            EXPECT_EQ(node_of(grid, 3, 2).value, 23 - order.south_west);
        }
    }
}

TEST(Netcdf, AnAxisOfOneNodeHasTheSpacingOfTheOther) {
    const TemporaryFile file(file_of({"x", "y"}, {100}, kSouthward));
    const Grid grid(file.Path());
    ASSERT_TRUE(grid.IsValid());
    double along_x = 0.0;
    double along_y = 0.0;
    grid.GetSpacing(along_x, along_y);
    EXPECT_EQ(along_x, 5);
    EXPECT_EQ(along_y, 5);
    EXPECT_EQ(node_of(grid, 0, 2).value, 0);
}

TEST(Netcdf, WhatIsNoGridSaysWhy) {
    struct Row {
        const char* name;
        std::string bytes;
        const char* reason;
    };
    const Row rows[] = {
        {"x not evenly apart", file_of({"x", "y"}, {100, 110, 125, 130}, kNorthward),
         "coordinates \"x\" are not evenly apart: number 3 of 4 is 125, not 120"},
        {"y neither, by less than GDAL minds",
         file_of({"lon", "lat", "degrees_east", "degrees_north"}, kEastward, {20, 25, 30.06, 35}),
         "coordinates \"lat\" are not evenly apart: number 3 of 4 is 30.06, not 30"},
        {"columns that run east",
         file_of({"lat", "lon", "degrees_north", "degrees_east"}, kNorthward, kEastward),
         "its rows run north"},
        {"no records yet",
         NetcdfWriter()
             .Dimension("time", 0)
             .Dimension("y", 3)
             .Dimension("x", 4)
             .Variable("y", {1}, kNorthward)
             .Variable("x", {2}, kEastward)
             .Variable("ash", {0, 1, 2}, {})
             .Bytes(),
         "its variable \"ash\" has no records yet: \"time\" is of length 0"},
        {"no rows yet",
         NetcdfWriter().Dimension("y", 0).Dimension("x", 4).Variable("ash", {0, 1}, {}).Bytes(),
         "its variable \"ash\" has no records yet: \"y\" is of length 0"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const TemporaryFile file(row.bytes);
        EXPECT_THAT(reason_of(file.Path()), HasSubstr(row.reason));
    }
}

TEST(Netcdf, AVariableIsNamedWhetherItIsTheOnlyOneOrNot) {
    const TemporaryFile one(file_of({"x", "y"}, kEastward, kNorthward));
    EXPECT_EQ(node_of(Grid(one.Path() + "#z"), 1, 2).value, 21);
    EXPECT_THAT(reason_of(one.Path() + "#w"), HasSubstr("it has no band \"w\""));

    std::vector<double> turned = values_of(4, 3);
    turned.front() = 77;
    const TemporaryFile two(NetcdfWriter()
                                .Dimension("y", 3)
                                .Dimension("x", 4)
                                .Variable("y", {0}, kSouthward)
                                .Variable("x", {1}, kEastward)
                                .Variable("roof", {0, 1}, values_of(4, 3))
                                .Variable("floor", {0, 1}, turned)
                                .Bytes());
    EXPECT_EQ(node_of(Grid(two.Path() + "#floor"), 0, 2).value, 77);
    EXPECT_EQ(node_of(Grid(two.Path() + "#roof"), 0, 2).value, 0);
    for (const char* element : {"", "#seam"}) {
        EXPECT_THAT(reason_of(two.Path() + element),
                    HasSubstr("it holds 2 rasters, \"#roof\" to \"#floor\""));
    }
}

TEST(Netcdf, AHeaderThatClaimsTooMuchIsNotBelieved) {
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

}  // namespace
}  // namespace zol::engine::grid
