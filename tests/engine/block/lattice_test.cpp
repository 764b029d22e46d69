#include "engine/block/lattice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "engine/formats/read_error.h"

namespace zol::engine::block {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(Axis, GivesASharedFaceToTheCellAbove) {
    std::vector<double> uneven;
    for (int i = 0; i < 1000; ++i) uneven.push_back(0.1 + 0.01 * (i % 7));
    const Axis axes[] = {Axis::Regular(0, 1, 1),
                         Axis::Regular(0, 0.1, 1'000'003),
                         Axis::Regular(-123456.7, 0.3, 1'000'003),
                         Axis::Regular(4.5e6, 4e-9, 1000),
                         Axis::Regular(0, 25, 4'000'000'000),
                         Axis::FromWidths(uneven),
                         Axis::Tensor({-1e9, 0, 1e-9, 7})};
    for (const Axis& axis : axes) {
        SCOPED_TRACE(std::to_string(axis.Lower(0)) + " " + std::to_string(axis.Upper(0)));
        const std::int64_t step = std::max<std::int64_t>(1, axis.Count() / 9973);
        for (std::int64_t i = 0; i < axis.Count(); i += step) {
            ASSERT_EQ(axis.CellOf(axis.Lower(i)), i);
            ASSERT_EQ(axis.CellOf(std::nextafter(axis.Lower(i), -kInfinity)), i - 1);
            ASSERT_EQ(axis.CellOf(axis.Lower(i) + (axis.Upper(i) - axis.Lower(i)) / 2), i);
        }
        const double end = axis.Lower(axis.Count());
        EXPECT_EQ(axis.CellOf(end), axis.Count() - 1);
        for (const double outside : {std::nextafter(end, kInfinity), kInfinity, -kInfinity, kNaN}) {
            EXPECT_EQ(axis.CellOf(outside), -1);
        }
    }
}

TEST(Axis, IsRegularWhenWidthsAreEnoughAlike) {
    EXPECT_EQ(Axis::FromWidths({0.1, 0.1, 0.1}).Upper(2), 0.1 * 3);
    const Axis alike = Axis::FromWidths({10, 10 + 5e-9, 10 - 4e-9});
    EXPECT_TRUE(alike.IsRegular());
    EXPECT_DOUBLE_EQ(alike.Upper(2), 30 + 1e-9);
    const Axis unlike = Axis::FromWidths({10, 10 + 2e-8, 10});
    EXPECT_FALSE(unlike.IsRegular());
    EXPECT_EQ(unlike.MinimumSize(), 10);
    EXPECT_EQ(unlike.MaximumSize(), 10 + 2e-8);
}

TEST(Axis, RefusesCellsThatDoublesCanNotTellApart) {
    EXPECT_THROW(Axis::Regular(0, 1, 0), ReadError);
    EXPECT_THROW(Axis::Regular(0, 0, 5), ReadError);
    EXPECT_THROW(Axis::Regular(0, -1, 5), ReadError);
    EXPECT_THROW(Axis::Regular(0, kNaN, 5), ReadError);
    EXPECT_THROW(Axis::Regular(kInfinity, 1, 5), ReadError);
    EXPECT_THROW(Axis::Regular(0, 1e308, 5), ReadError);
    EXPECT_THROW(Axis::Regular(1e17, 1, 5), ReadError);
    EXPECT_THROW(Axis::Regular(4.5e6, 1e-9, 5), ReadError);
    EXPECT_THROW(Axis::Regular(-1e17, 1, 5), ReadError);
    EXPECT_THROW(Axis::Tensor({1}), ReadError);
    EXPECT_THROW(Axis::Tensor({0, 1, 1, 2}), ReadError);
    EXPECT_THROW(Axis::Tensor({0, kInfinity, 2}), ReadError);
    EXPECT_THROW(Axis::Tensor({0, kNaN, 2}), ReadError);
    EXPECT_THROW(Axis::FromWidths({}), ReadError);
    EXPECT_THROW(Axis::FromWidths({1, 1e17, 1}), ReadError);
}

TEST(Lattice, NumbersBlocksInTheOrderOfTheFile) {
    struct Row {
        const char* order;
        Cell of_first;
        Cell of_second;
        Cell of_last;
    };
    const Row rows[] = {
        {"xyz", {0, 0, 0}, {1, 0, 0}, {1, 2, 3}},   {"zyx", {0, 0, 0}, {0, 0, 1}, {1, 2, 3}},
        {"xy-z", {0, 0, 3}, {1, 0, 3}, {1, 2, 0}},  {"yxz", {0, 0, 0}, {0, 1, 0}, {1, 2, 3}},
        {"-zx-y", {0, 2, 3}, {0, 2, 2}, {1, 0, 0}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.order);
        LatticeGeometry lattice(Axis::Regular(0, 10, 2), Axis::Tensor({0, 1, 5, 6}),
                                Axis::Regular(-2, 0.5, 4), parse_cell_order(row.order).value());
        ASSERT_EQ(lattice.NBlocks(), 24);
        const auto cell = [&](std::int64_t block) {
            const geometry::Extent box = lattice.BlockExtent(block);
            return Cell{static_cast<std::int64_t>(box.x0 / 10), box.y0 == 5 ? 2 : box.y0 == 1,
                        static_cast<std::int64_t>((box.z0 + 2) / 0.5)};
        };
        EXPECT_EQ(cell(0), row.of_first);
        EXPECT_EQ(cell(1), row.of_second);
        EXPECT_EQ(cell(23), row.of_last);
        for (std::int64_t block = 0; block < 24; ++block) {
            const geometry::Extent box = lattice.BlockExtent(block);
            EXPECT_EQ(lattice.Find({box.x0, box.y0, box.z0}), block);
        }
        EXPECT_EQ(lattice.Find({20, 6, 0}), lattice.Find({10, 5, -0.5}));
        EXPECT_EQ(lattice.Find({20, 6, 0.1}), -1);
        EXPECT_EQ(lattice.Find({kNaN, 3, -1}), -1);
    }
}

TEST(CellOrder, RefusesWhatIsNotThreeAxes) {
    for (const char* text :
         {"", "xy", "xyzx", "xxz", "xyz-", "x--yz", "XYZ", "x,y,z", "+xyz", "xyw"}) {
        EXPECT_FALSE(parse_cell_order(text).has_value()) << text;
    }
    const JsonDocument document(R"({"order":"xyy"})", JsonDocument::Dialect::Strict);
    try {
        read_cell_order(document.Root().Get("order"));
        FAIL() << "a wrong order is accepted";
    } catch (const ReadError& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("$.order is no order of cells"));
    }
}

}  // namespace
}  // namespace zol::engine::block
