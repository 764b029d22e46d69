// Text rasters: what is a number is read in full, and anything else is refused.
#include <cpl_vsi.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "platform/zolGridExport.h"
#include "tests/engine/grid/grid_asking.h"
#include "tests/engine/temporary_file.h"

namespace zol::engine::grid {
namespace {

using model::grid::Grid;
using testing::HasSubstr;
using testing_support::grid_text;
using testing_support::Node;
using testing_support::node_of;
using testing_support::reason_of;
using testing_support::TemporaryFile;

constexpr double kMasked = std::numeric_limits<double>::quiet_NaN();

/// An ESRI ASCII header of 3 x 2 nodes with other lines in the place of one.
std::string esri(const std::string& line, const std::string& instead,
                 const std::string& values = "1 2 3\n4 5 6\n") {
    std::string text = "ncols 3\nnrows 2\nxllcorner 100\nyllcorner 200\ncellsize 10\n";
    const std::size_t at = text.find(line);
    text.replace(at, line.size(), instead);
    return text + values;
}

std::string grass(const std::string& values, const std::string& more = "") {
    return "north: 20\nsouth: 0\neast: 30\nwest: 0\nrows: 2\ncols: 3\n" + more + values;
}

std::string surfer(const std::string& values) {
    return "DSAA\n3 2\n0 2\n0 1\n1 6\n" + values;
}

/// 40 x 30 nodes, of which one in the middle has another line.
std::string points(const std::string& line) {
    std::string text;
    for (int j = 0; j < 30; ++j) {
        for (int i = 0; i < 40; ++i) {
            const bool is_changed = i == 20 && j == 15;
            text += is_changed ? line : std::to_string(i) + " " + std::to_string(j) + " 7";
            text += '\n';
        }
    }
    return text;
}

TEST(TextRaster, ReadsNumbersAsTheyAreWritten) {
    struct Row {
        const char* name;
        std::string text;
        std::vector<double> values;
    };
    const Row rows[] = {
        {"signs, points and exponents",
         grid_text(3, 2, "+1 -2. .5\n1e3 -1.5E-2 0007\n"),
         {1, -2, 0.5, 1000, -0.015, 7}},
        {"decimal commas", grid_text(3, 2, "1,5 -2,25 0,5e1\n1 2 3\n"), {1.5, -2.25, 5, 1, 2, 3}},
        {"NaN and infinite",
         grid_text(3, 2, " nan -NaN inf\n-Infinity 1.#INF -1.#IND00\n"),
         {kMasked, kMasked, kMasked, kMasked, kMasked, kMasked}},
        {"null, where it is what is missing",
         esri("cellsize", "NODATA_value null\ncellsize", "1 null 3\n4 5 6\n"),
         {1, kMasked, 3, 4, 5, 6}},
        {"rows of any length, blanks of any kind",
         grid_text(3, 2, "1\n2\t3 4\r\n\r\n5 6"),
         {1, 2, 3, 4, 5, 6}},
        {"the mark of old systems at the end",
         grid_text(3, 2, "1 2 3\n4 5 6\n\x1a"),
         {1, 2, 3, 4, 5, 6}},
        {"GRASS", grass("1 2 -1\n1e3 5 6\n", "null: -1\n"), {1, 2, kMasked, 1000, 5, 6}},
        {"GRASS, whole",
         grass("1 2 3\n4 -2147483648 +6\n", "type: int\n"),
         {1, 2, 3, 4, -2147483648.0, 6}},
        {"Surfer, from the south", surfer("4 5 6\n1 2 3e0\n"), {1, 2, 3, 4, 5, 6}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const TemporaryFile file(row.text);
        const Grid grid(file.Path());
        ASSERT_TRUE(grid.IsValid()) << reason_of(file.Path());
        for (int cell = 0; cell < 6; ++cell) {
            const double expected = row.values[static_cast<std::size_t>(cell)];
            const Node node = node_of(grid, cell % 3, 1 - cell / 3);
            EXPECT_TRUE(node.read);
            EXPECT_EQ(node.masked, std::isnan(expected)) << cell;
            if (!std::isnan(expected)) {
                EXPECT_EQ(node.value, expected) << cell;
            }
        }
    }
}

TEST(TextRaster, WhatIsNoNumberSaysWhere) {
    struct Row {
        const char* name;
        std::string text;
        const char* reason;
    };
    const Row rows[] = {
        {"a word", grid_text(3, 2, "1 abc 3\n4 5 6\n"),
         "in column 2 of row 1 of its values stands \"abc\", no number"},
        {"a number with a tail", grid_text(3, 2, "1 2 3\n4 5x 6\n"), "stands \"5x\""},
        {"two points", grid_text(3, 2, "1 2 3\n4 5.5.5 6\n"), "stands \"5.5.5\""},
        {"a comma and a point", grid_text(3, 2, "1 2 3\n4 1,234.5 6\n"), "stands \"1,234.5\""},
        {"a sign alone", grid_text(3, 2, "1 2 3\n4 - 6\n"), "stands \"-\""},
        {"a sign inside", grid_text(3, 2, "1 2 3\n4 5-6\n"), "stands \"5-6\""},
        {"half an exponent", grid_text(3, 2, "1 2 3\n4 5 6e"), "stands \"6e\""},
        {"of another base", grid_text(3, 2, "1 2 3\n4 5 0x1A\n"), "stands \"0x1A\""},
        {"a byte of 0", grid_text(3, 2, std::string("1 2 3\n4 \0 6\n", 11)), "stands \"?\""},
        {"letters of other scripts", grid_text(3, 2, "1 2 3\n4 \xc3\xbc 6\n"), "stands \"??\""},
        {"null, where it is a word", grid_text(3, 2, "1 null 3\n4 5 6\n"), "stands \"null\""},
        {"too few", grid_text(3, 2, "1 2 3\n4 5\n"),
         "it holds 5 values, but its header says 3 x 2, which are 6"},
        {"too many", grid_text(3, 2, "1 2 3\n4 5 6\n7\n"), "it holds 7 values"},
        {"none", grid_text(3, 2, ""), "find data values"},
        {"a count with a tail", esri("ncols 3", "ncols 3o"), "ncols is \"3o\", no number"},
        {"part of a column", esri("ncols 3", "ncols 3.5"), "ncols is 3.5; 1 to 10000000"},
        {"no columns", esri("ncols 3", "ncols 0"), "ncols is 0; 1 to 10000000"},
        {"fewer than none", esri("ncols 3", "ncols -4"), "ncols is -4;"},
        {"2^31 columns", esri("ncols 3", "ncols 2147483648"), "ncols is 2147483648;"},
        {"2^31 - 1 rows", esri("nrows 2", "nrows 2147483647"), "nrows is 2147483647;"},
        {"no rows said", esri("nrows 2\n", ""), "its header has no nrows"},
        {"cells of no size", esri("cellsize 10", "cellsize 0"), "cellsize is 0;"},
        {"cells below 0", esri("cellsize 10", "dx 10\ndy -10"), "dy is -10;"},
        {"no cells", esri("cellsize 10\n", ""), "its header has no cellsize"},
        {"a place in words", esri("xllcorner 100", "xllcorner here"), "xllcorner is \"here\""},
        {"no place", esri("xllcorner 100", "xllcorne 100"), "does not say where it lies"},
        {"places of two kinds", esri("xllcorner 100", "xllcenter 100"),
         "does not say where it lies"},
        {"what is missing in words", esri("cellsize", "NODATA_value none\ncellsize"),
         "NODATA_value is \"none\""},
        {"half a header", "ncols 2\nnrows 1\nxllcor", "its header has no cellsize"},
        {"GRASS, its own missing word", grass("1 * 3\n4 5 6\n"),
         "\"*\", no number; missing nodes are read as the number"},
        {"GRASS, degrees and minutes",
         "north: 45:30:00N\nsouth: 0\neast: 30\nwest: 0\nrows: 2\ncols: 3\n1 2 3\n4 5 6\n",
         "north is \"45:30:00N\", no number"},
        {"GRASS, turned",
         "north: 0\nsouth: 20\neast: 30\nwest: 0\nrows: 2\ncols: 3\n1 2 3\n4 5 6\n",
         "is not less than"},
        {"GRASS, whole, yet parts", grass("1 2 3\n4 5.5 6\n", "type: int\n"),
         "\"5.5\", no whole number of 32 bits"},
        {"GRASS, whole, yet too large", grass("1 2 3\n4 2147483648 6\n", "type: int\n"),
         "\"2147483648\", no whole number of 32 bits"},
        {"Surfer, a word", surfer("1 2 3\n4 x 6\n"), "in column 2 of row 2"},
        {"Surfer, a comma", surfer("1 2 3\n4 5,5 6\n"), "stands \"5,5\""},
        {"Surfer, too few", surfer("1 2 3\n4 5\n"), "it holds 5 values"},
        {"points, a word", points("20 15 foo"), "behind 1862 numbers stands \"foo\""},
        {"points, a tail", points("20 15 3x"), "stands \"3x\""},
        {"points, a quotation", points("20 15 \"3\""), "stands \"\"3\"\""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const TemporaryFile file(row.text);
        EXPECT_THAT(reason_of(file.Path()), HasSubstr(row.reason));
    }
    EXPECT_TRUE(Grid(TemporaryFile(points("20 15 3")).Path()).IsValid());
}

TEST(TextRaster, IsLookedAtToItsEndHoweverItIsRead) {
    // More than is read at a time, with a number of several letters at each place of its end.
    constexpr int kColumns = 1000;
    constexpr int kRows = 40;
    for (std::size_t shift = 0; shift < 8; ++shift) {
        SCOPED_TRACE(shift);
        // A first line that starts with a letter is one of the header.
        std::string values(shift + 1, ' ');
        for (int i = 0; i < kColumns * kRows; ++i) values += "nan    \n";
        const TemporaryFile whole(grid_text(kColumns, kRows, values));
        EXPECT_EQ(reason_of(whole.Path()), "it opens");
        values.replace(values.rfind("nan"), 3, "nam");
        const TemporaryFile broken(grid_text(kColumns, kRows, values));
        EXPECT_THAT(reason_of(broken.Path()), HasSubstr("in column 1000 of row 40 of its"));
    }
}

TEST(TextRaster, IsLookedAtInVirtualFilesToo) {
    const auto packed = [](const TemporaryFile& file, const std::string& text) {
        const std::string name = "/vsigzip/" + file.Path();
        VSILFILE* const out = VSIFOpenL(name.c_str(), "wb");
        VSIFWriteL(text.data(), 1, text.size(), out);
        VSIFCloseL(out);
        return name;
    };
    const TemporaryFile good("");
    EXPECT_EQ(node_of(Grid(packed(good, grid_text(3, 2, "1 2 3\n4 5 6\n"))), 2, 0).value, 6);
    EXPECT_THAT(reason_of(good.Path()), HasSubstr("it is compressed"));
    const TemporaryFile bad("");
    EXPECT_THAT(reason_of(packed(bad, grid_text(3, 2, "1 2 3\n4 5 6?\n"))),
                HasSubstr("stands \"6?\""));
}

}  // namespace
}  // namespace zol::engine::grid
