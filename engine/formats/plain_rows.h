// The short cut through rows that are nothing but cells and separators.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "engine/formats/cell_scan.h"
#include "engine/formats/text_dialect.h"

namespace zol::engine {

/// Rows of one width, none of them quoted, commented or empty, each with a row end: what
/// most tables consist of. A RowReader reads the same rows, only with more care.
class PlainRows {
public:
    /// Takes a text, shorter than 4 GiB, apart; false when it holds anything else. The text
    /// outlives the use of its cells.
    bool Read(std::string_view text, const TextDialect& dialect, std::size_t columns);
    /// The same, and marks the cells as numbers with `point` as decimal point.
    bool ReadMarked(std::string_view text, const TextDialect& dialect, std::size_t columns,
                    char point);

    std::size_t Count() const { return count_; }
    /// `column` is below the count of columns, `row` below Count.
    TextCell CellAt(std::size_t row, std::size_t column) const {
        return CellsFrom(row, column).Next();
    }
    /// The cells of one column from a row on. For the innermost of loops: it holds all that
    /// it needs, where CellAt has to work out each place anew.
    class ColumnCells {
    public:
        TextCell Next() {
            const char* const end = text_ + *end_;
            const char* const begin = end_ == first_end_ ? text_ : text_ + end_[-1] + 1;
            end_ += columns_;
            return {begin, WithoutReturn(begin, end, is_last_), false};
        }

    private:
        friend class PlainRows;
        ColumnCells(const PlainRows& rows, std::size_t row, std::size_t column)
            : text_(rows.text_),
              first_end_(rows.scan_.ends.data()),
              end_(first_end_ + row * rows.columns_ + column),
              columns_(rows.columns_),
              is_last_(column + 1 == columns_) {}

        const char* text_;
        const std::uint32_t* first_end_;
        const std::uint32_t* end_;
        std::size_t columns_;
        bool is_last_;
    };
    ColumnCells CellsFrom(std::size_t row, std::size_t column) const {
        return {*this, row, column};
    }
    /// Of rows that were read marked: a bit for each of 64 cells of a row from `column` on.
    /// Bits behind the row's last cell mean nothing.
    std::uint64_t FractionsFrom(std::size_t row, std::size_t column) const {
        return scan_.fractions.From(row * columns_ + column);
    }
    std::uint64_t OthersFrom(std::size_t row, std::size_t column) const {
        return scan_.others.From(row * columns_ + column);
    }
    /// Where a row begins, from the start of the text.
    std::size_t RowBegin(std::size_t row) const {
        return row == 0 ? 0 : scan_.ends[row * columns_ - 1] + std::size_t{1};
    }

private:
    // Windows ends a row with two characters.
    static const char* WithoutReturn(const char* begin, const char* end, bool ends_row) {
        return ends_row && begin != end && end[-1] == '\r' ? end - 1 : end;
    }
    static bool MayBePlain(std::string_view text, const TextDialect& dialect);
    bool Settle(std::string_view text, const TextDialect& dialect, std::size_t columns);

    const char* text_ = nullptr;
    std::size_t columns_ = 0;
    std::size_t count_ = 0;
    CellScan scan_;
};

}  // namespace zol::engine
