#include "engine/block/cell_index.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <numeric>
#include <random>
#include <unordered_map>
#include <vector>

namespace zol::engine::block {
namespace {

constexpr std::uint64_t kAllCells = std::numeric_limits<std::uint64_t>::max();

/// Puts block i in cells[i] and compares with a plain map, around each cell too.
CellIndex fill_and_compare(std::uint64_t n_cells, const std::vector<std::uint64_t>& cells) {
    CellIndex index(n_cells, static_cast<std::uint32_t>(cells.size()));
    std::unordered_map<std::uint64_t, std::int64_t> expected;
    std::uint64_t duplicates = 0;
    for (std::uint32_t block = 0; block < cells.size(); ++block) {
        index.Insert(cells[block], block);
        if (!expected.emplace(cells[block], block).second) ++duplicates;
    }
    EXPECT_EQ(index.Duplicates(), duplicates);
    const auto compare = [&](std::uint64_t cell) {
        const auto found = expected.find(cell);
        EXPECT_EQ(index.Find(cell), found == expected.end() ? -1 : found->second) << cell;
    };
    for (const std::uint64_t cell : cells) {
        compare(cell);
        compare(cell + 1);
        compare(cell - 1);
    }
    compare(n_cells);
    compare(kAllCells);
    return index;
}

std::vector<std::uint64_t> in_order(std::size_t count) {
    std::vector<std::uint64_t> cells(count);
    std::iota(cells.begin(), cells.end(), 0U);
    return cells;
}

TEST(CellIndex, KeepsNothingWhileRowsFollowTheLattice) {
    EXPECT_EQ(fill_and_compare(5000, in_order(5000)).MemoryBytes(), 0U);
    EXPECT_EQ(fill_and_compare(1U << 30, in_order(100)).MemoryBytes(), 0U);
    EXPECT_EQ(fill_and_compare(0, {}).MemoryBytes(), 0U);
}

TEST(CellIndex, LeavesTheOrderAtAnyRow) {
    for (const std::uint64_t n_cells : {std::uint64_t{100}, std::uint64_t{1} << 40}) {
        for (const std::size_t row : {0U, 1U, 50U, 98U}) {
            SCOPED_TRACE(row);
            std::vector<std::uint64_t> cells = in_order(100);
            std::swap(cells[row], cells[row + 1]);
            fill_and_compare(n_cells, cells);
        }
    }
}

TEST(CellIndex, FirstBlockOfACellStays) {
    for (const std::uint64_t n_cells : {std::uint64_t{10}, std::uint64_t{1} << 50}) {
        fill_and_compare(n_cells, {0, 1, 2, 1, 0, 5, 5, 2});
        fill_and_compare(n_cells, {7, 7, 7, 0, 7});
    }
}

TEST(CellIndex, SparseAndHugeLattices) {
    std::mt19937_64 random(99);
    for (const std::uint64_t n_cells :
         {std::uint64_t{3000}, std::uint64_t{40000}, std::uint64_t{1} << 33, kAllCells}) {
        SCOPED_TRACE(n_cells);
        std::vector<std::uint64_t> cells(4000);
        for (std::uint64_t& cell : cells) cell = random() % n_cells;
        const CellIndex index = fill_and_compare(n_cells, cells);
        EXPECT_LE(index.MemoryBytes(), 36 * cells.size()) << "whatever the count of cells";
    }
}

}  // namespace
}  // namespace zol::engine::block
