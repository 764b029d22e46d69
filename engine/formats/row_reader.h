// Takes a delimited text apart into rows and cells.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "engine/formats/special_bytes.h"
#include "engine/formats/text_dialect.h"

namespace zol::engine {

/// Reads the rows of a text that begins at the start of a row. Empty rows, rows of
/// blanks and comments are passed over. The text outlives the reader and its cells.
class RowReader {
public:
    RowReader(std::string_view text, const TextDialect& dialect);

    enum class Outcome {
        Row,
        /// Nothing but passed-over rows was left.
        End,
        /// The text ends inside a quoted cell.
        OpenQuote,
        /// Something other than blanks stands between a closing quote and the end of its cell.
        TextBehindQuote
    };

    /// Reads the next row's cells. After OpenQuote or TextBehindQuote the row's
    /// place is in RowBegin, and there is nothing more to read.
    Outcome Next(CellList& cells);

    /// Where the row that Next has read begins and where the next one does, from
    /// the start of the text.
    std::size_t RowBegin() const { return static_cast<std::size_t>(row_ - text_.data()); }
    std::size_t RowEnd() const { return static_cast<std::size_t>(next_row_ - text_.data()); }
    /// False when the row that was read had no row end of its own: the text ended.
    bool RowIsClosed() const { return closed_; }

private:
    Outcome ReadDelimited(CellList& cells);
    Outcome ReadByBlanks(CellList& cells);
    const char* ClosingQuote(const char* from);
    void PassOverRow(const char* from);
    bool IsPassedOver(const CellList& cells) const;
    const char* CellEnd(const char* at) const;

    std::string_view text_;
    const char* end_;
    TextDialect dialect_;
    SpecialBytes specials_;
    const char* row_;
    const char* next_row_;
    bool closed_ = false;
};

}  // namespace zol::engine
