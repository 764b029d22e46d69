// The columns of a delimited table, decoded block by block when they are asked for.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/formats/cell_reader.h"
#include "engine/formats/packed_numbers.h"
#include "engine/formats/packed_texts.h"
#include "engine/formats/plain_rows.h"
#include "engine/formats/text_blocks.h"

namespace zol::engine {

/// Values by column and row. A block of rows is decoded for the columns that were
/// asked for so far, and kept packed: memory follows the columns that are used, up to
/// a limit beyond which the blocks decoded first make room and are decoded again when
/// they are wanted. A walk from row to row is recognised and decoded ahead, by several
/// threads at a time that end before the call returns.
///
/// Rows are below Blocks().Rows(). When the file changes after it was opened, values
/// that are not decoded yet are missing, and one line on the diagnostics channel says
/// so. Not for two threads at a time.
class TextColumns {
public:
    /// `encoding` is that of texts which aren't UTF-8; empty for the usual one.
    TextColumns(TextBlocks blocks, std::vector<CellFormat> formats, std::string encoding);

    /// NaN when the cell is missing or no number. The same in every floating-point mode.
    double Number(std::size_t column, std::uint64_t row) {
        const Column& asked = columns_[column];
        const std::uint64_t index = row - asked.first_row;
        return index < asked.window.size() ? asked.window[index] : NumberInRun(column, row);
    }
    /// The whole number of a cell, to the last digit; false when it is none.
    bool Whole(std::size_t column, std::uint64_t row, std::int64_t& whole);
    /// The text of a cell of a Text column, empty when missing. Valid until the next call.
    std::string_view Text(std::size_t column, std::uint64_t row);

    /// True when the file changed before the cell was decoded.
    bool IsLost(std::size_t column, std::uint64_t row);

    const TextBlocks& Blocks() const { return blocks_; }
    const CellFormat& Format(std::size_t column) const { return formats_[column]; }

    /// Keeps at most about `bytes` of decoded values.
    void LimitMemory(std::size_t bytes) { limit_ = bytes; }

private:
    // One column's values in one block.
    struct Run {
        PackedNumbers numbers;
        PackedTexts texts;
        bool lost = false;
        std::size_t Bytes() const;
    };
    class Decoder;
    // What a worker needs for a block, kept for the next.
    struct Scratch {
        std::vector<char> buffer;
        PlainRows plain;
    };
    struct Column {
        std::vector<std::unique_ptr<Run>> runs;
        // The run that answered last, and its rows.
        const Run* current = nullptr;
        std::uint64_t first_row = 0;
        std::uint64_t rows = 0;
        // The numbers of that run, unpacked when a walk came to it; else empty.
        std::vector<double> window;
        bool asked = false;
    };

    double NumberInRun(std::size_t column, std::uint64_t row);
    const Run& RunOf(std::size_t column, std::uint64_t row, std::size_t& index);
    void Decode(std::size_t first_block, std::size_t behind);
    void DecodeBlock(std::size_t block, Scratch& scratch, std::vector<Decoder>& decoders);
    void MakeMissing(std::size_t first_block, std::size_t behind, const std::string& reason);
    void KeepWithinLimit(std::size_t wanted_from, std::size_t wanted_behind);

    TextBlocks blocks_;
    std::vector<CellFormat> formats_;
    std::string encoding_;
    std::vector<Column> columns_;
    std::vector<Scratch> scratches_;
    // In the order of decoding, to make room in the same order.
    std::deque<std::pair<std::size_t, std::size_t>> kept_;
    std::size_t kept_bytes_ = 0;
    std::size_t limit_ = std::size_t{1} << 30;
    // A walk is expected to come to this block next.
    std::size_t next_in_walk_ = 0;
    std::size_t ahead_ = 1;
    bool reported_ = false;
};

}  // namespace zol::engine
