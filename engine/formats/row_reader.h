// Takes a delimited text apart into rows and cells.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "engine/formats/text_dialect.h"

namespace zol::engine {

/// Reads the rows of a text, shorter than 4 GiB, that begins at the start of a row.
/// Rows without a character in any cell and comments are passed over. The text outlives
/// the reader's use of it, and its cells.
class RowReader {
public:
    RowReader(std::string_view text, const TextDialect& dialect);

    /// Goes on with another text of the same dialect, in the memory of the first.
    void Restart(std::string_view text);

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
    const char* ClosingQuoteAmongBlanks(const char* from) const;
    void PassOverRow(const char* from);
    bool IsPassedOver(const CellList& cells) const;
    const char* CellEnd(const char* at) const;

    // The next separator, quote or row end; the end of the text when there is none.
    const char* NextSpecial() {
        const char* place = text_.data() + places_[next_place_];
        next_place_ += place != end_ ? 1 : 0;
        return place;
    }

    std::string_view text_;
    const char* end_ = nullptr;
    TextDialect dialect_;
    std::vector<std::uint32_t> places_;
    std::size_t next_place_ = 0;
    const char* row_ = nullptr;
    const char* next_row_ = nullptr;
    bool closed_ = false;
};

}  // namespace zol::engine
