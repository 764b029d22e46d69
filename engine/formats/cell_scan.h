// Finds the cells of a delimited text 64 bytes at a time, and tells those that are
// usual numbers from the rest without a look at each of them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "engine/formats/byte_classes.h"

namespace zol::engine {

/// A bit for each cell of a text, in their order.
class CellBits {
public:
    bool At(std::size_t cell) const { return (words_[cell / 64] >> (cell % 64) & 1) != 0; }
    /// The bits of 64 cells from one on, which is below the count of cells; those behind the
    /// last cell mean nothing.
    std::uint64_t From(std::size_t cell) const {
        const std::size_t shift = cell % 64;
        const std::uint64_t* const word = words_.data() + cell / 64;
        return shift == 0 ? *word : word[0] >> shift | word[1] << (64 - shift);
    }

    /// Makes room for so many cells and one step more.
    void Reserve(std::size_t cells) { words_.resize(std::max(words_.size(), cells / 64 + 3)); }
    /// Puts bits behind those of the first `cells` cells, for which there is room.
    void Put(std::size_t cells, std::uint64_t bits) {
        const std::size_t shift = cells % 64;
        std::uint64_t* const word = words_.data() + cells / 64;
        word[0] = shift == 0 ? bits : word[0] | bits << shift;
        word[1] = shift == 0 ? 0 : bits >> (64 - shift);
    }

private:
    std::vector<std::uint64_t> words_;
};

/// The cells of a text. Reused from text to text, it allocates little.
struct CellScan {
    /// Cells that have a separator or a row end behind them, and how many of these are row ends.
    std::size_t cells = 0;
    std::size_t row_ends = 0;
    /// The place of the separator or row end behind each cell, ascending. What stands
    /// behind `cells` of them means nothing.
    std::vector<std::uint32_t> ends;

    // The marks. A cell without one is a whole number: up to nine digits, or eight behind
    // a minus.

    /// Digits with one point in front of the last of them, perhaps behind a minus.
    CellBits fractions;
    /// Anything else, or more digits: it has to be read with care.
    CellBits others;
};

/// Fills a scan but for its marks. The text is shorter than 4 GiB.
void scan_cells(std::string_view text, CellSyntax syntax, CellScan& scan,
                Instructions instructions = best_instructions());
/// Fills all of it. A '\r' in front of a row end counts as part of that.
void scan_and_mark_cells(std::string_view text, CellSyntax syntax, CellScan& scan,
                         Instructions instructions = best_instructions());

}  // namespace zol::engine
