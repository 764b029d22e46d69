#include "engine/grid/window_cache.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "engine/formats/read_error.h"

namespace zol::engine::grid {
namespace {

/// A grid whose cells hold their own place; counts how often its blocks were decoded.
class CountingReader final : public NodeReader {
public:
    CountingReader(Shape whole, Shape block, double* decoded, bool* fails)
        : whole_(whole), block_(block), decoded_(decoded), fails_(fails) {}

    Shape Block() const override { return block_; }
    bool IsNarrow() const override { return true; }
    void Read(Window& window) override {
        const Area& area = window.area;
        if (*fails_) throw ReadError("can't be read");
        const auto blocks = [](int start, int count, int block) {
            return (start + count - 1) / block - start / block + 1;
        };
        *decoded_ += static_cast<double>(blocks(area.column, area.columns, block_.columns)) *
                     blocks(area.row, area.rows, block_.rows) * block_.columns * block_.rows /
                     (static_cast<double>(whole_.columns) * whole_.rows);
        std::size_t cell = 0;
        for (int row = area.row; row < area.row + area.rows; ++row) {
            for (int column = area.column; column < area.column + area.columns; ++column) {
                window.floats[cell] = value_of(column, row);
                if (column == row) window.Flag(cell, kMasked);
                ++cell;
            }
        }
    }

    static float value_of(int column, int row) {
        return static_cast<float>((std::int64_t{column} * 31 + std::int64_t{row} * 17) % 9973);
    }

private:
    Shape whole_;
    Shape block_;
    double* decoded_;
    bool* fails_;
};

class Cache {
public:
    Cache(NodeReader::Shape whole, NodeReader::Shape block, std::size_t most_bytes)
        : cache_(std::make_unique<CountingReader>(whole, block, &decoded_, &fails_), whole.columns,
                 whole.rows, most_bytes) {}

    /// Whether the cell is answered right.
    bool Check(int column, int row) {
        const Window& window = cache_.Find(column, row);
        const Area& area = window.area;
        const bool is_inside = area.column <= column && column < area.column + area.columns &&
                               area.row <= row && row < area.row + area.rows;
        if (!is_inside) return false;
        const auto cell =
            static_cast<std::size_t>(row - area.row) * static_cast<std::size_t>(area.columns) +
            static_cast<std::size_t>(column - area.column);
        const bool masked = window.is_flagged && window.flags[cell] == kMasked;
        return window.floats[cell] == CountingReader::value_of(column, row) &&
               masked == (column == row);
    }

    /// How often the whole grid was decoded since the last question.
    double Decoded() { return std::exchange(decoded_, 0.0); }
    void Fail(bool fails) { fails_ = fails; }

private:
    double decoded_ = 0.0;
    bool fails_ = false;
    WindowCache cache_;
};

constexpr std::size_t kCellBytes = sizeof(float) + 1;

TEST(WindowCache, WalksInEitherOrderDecodeLittleMoreThanTheBoundForces) {
    struct Row {
        const char* name;
        NodeReader::Shape whole;
        NodeReader::Shape block;
        /// Cells that fit the bound.
        std::size_t most_cells;
        /// Decodings of the whole grid in a walk along rows, then one down columns, then one
        /// along rows again.
        double along_rows;
        double down_columns;
        double along_rows_again;
    };
    const Row rows[] = {
        {"all of it fits", {500, 400}, {100, 100}, 500000, 1.0, 0.0, 0.0},
        {"strips, half fits", {500, 400}, {500, 1}, 100000, 1.0, 3.6, 1.1},
        {"strips, a tenth fits", {1000, 500}, {1000, 1}, 50000, 1.0, 11.5, 1.1},
        {"tiles, a row of tiles fits", {640, 640}, {64, 64}, 200000, 1.0, 1.0, 1.0},
        {"tiles, no row of tiles fits", {640, 640}, {64, 64}, 20000, 4.0, 4.0, 4.0},
        {"narrow strips", {3, 50000}, {3, 1}, 30000, 1.0, 6.6, 1.1},
        {"sizes that divide nothing", {509, 401}, {64, 48}, 60000, 1.3, 1.3, 1.3},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Cache cache(row.whole, row.block, row.most_cells * kCellBytes);
        int wrong = 0;
        const auto walk_along_rows = [&] {
            for (int r = 0; r < row.whole.rows; ++r) {
                for (int c = 0; c < row.whole.columns; ++c) wrong += cache.Check(c, r) ? 0 : 1;
            }
            return cache.Decoded();
        };
        EXPECT_LE(walk_along_rows(), row.along_rows * 1.1);
        for (int c = 0; c < row.whole.columns; ++c) {
            for (int r = 0; r < row.whole.rows; ++r) wrong += cache.Check(c, r) ? 0 : 1;
        }
        EXPECT_LE(cache.Decoded(), row.down_columns * 1.1 + 0.001);
        EXPECT_LE(walk_along_rows(), row.along_rows_again * 1.1 + 0.001);
        EXPECT_EQ(wrong, 0);
    }
}

TEST(WindowCache, ASingleNodeOfAHugeGridReadsATile) {
    Cache cache({2147483647, 2147483647}, {512, 512}, WindowCache::kMostBytes);
    for (const int column : {0, 1000000000, 2147483646}) {
        EXPECT_TRUE(cache.Check(column, 2147483646 - column));
    }
    EXPECT_LE(cache.Decoded(), 3 * 512.0 * 512 / 2147483647 / 2147483647);
}

TEST(WindowCache, NothingIsKeptOfAWindowThatCouldNotBeRead) {
    // Room for two windows; the one that fails takes the place of a good one.
    Cache cache({512, 1024}, {256, 256}, std::size_t{2} * 65536 * kCellBytes);
    EXPECT_TRUE(cache.Check(0, 0));
    EXPECT_TRUE(cache.Check(0, 300));
    cache.Fail(true);
    EXPECT_THROW(cache.Check(0, 600), ReadError);
    EXPECT_THROW(cache.Check(0, 600), ReadError);
    EXPECT_TRUE(cache.Check(0, 300));
    cache.Fail(false);
    for (const int row : {0, 300, 600, 900, 0}) {
        EXPECT_TRUE(cache.Check(0, row));
    }
}

}  // namespace
}  // namespace zol::engine::grid
