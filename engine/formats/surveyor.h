// One worker's part of the survey of a table.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/formats/cell_reader.h"
#include "engine/formats/plain_rows.h"
#include "engine/formats/row_reader.h"
#include "engine/formats/row_watcher.h"
#include "engine/formats/table_survey.h"
#include "engine/formats/text_blocks.h"

namespace zol::engine {

/// Reads blocks of a table, in the order of the file. Plain rows are read some at a time,
/// column by column; others one by one. Both come to the same, errors included.
class Surveyor {
public:
    /// All but the watcher outlive the surveyor; the watcher may be null.
    Surveyor(const TextBlocks& blocks, const std::vector<CellFormat>& formats,
             const std::vector<std::size_t>& watched, std::unique_ptr<RowWatcher> watcher);

    /// Gives the count of rows. Throws ReadError at the first fault.
    std::size_t Read(const TextBlocks::Text& text);

    const std::vector<ColumnSurvey>& Columns() const { return columns_; }
    std::unique_ptr<RowWatcher> TakeWatcher() { return std::move(watcher_); }

private:
    // How closely the cells of a column have to be looked at.
    enum class Look : std::uint8_t {
        /// Not at all: it is known for texts.
        None,
        /// Is it a usual number?
        Glance,
        /// The same, and which one.
        Value,
        Full
    };
    struct Plan {
        Look look = Look::Full;
        // The marks of plain rows tell usual numbers of this column.
        bool marked = false;
        // Where its numbers go among those that are watched.
        std::size_t watch_place = 0;
        bool watched = false;
    };

    void ReadPlainRows(const TextBlocks::Text& text, std::size_t first, std::size_t count);
    std::size_t ReadColumn(const TextBlocks::Text& text, std::size_t i, std::size_t first,
                           std::size_t count);
    std::size_t ReadMarkedColumns(const TextBlocks::Text& text, std::size_t first,
                                  std::size_t count);
    void TakeMarksSeen();
    std::size_t ReadWatchedColumn(const TextBlocks::Text& text, std::size_t i, std::size_t first,
                                  std::size_t count);
    void ReadRow(const TextBlocks::Text& text, std::size_t row_begin);

    bool ReadCell(const TextBlocks::Text& text, std::size_t i, const TextCell& cell,
                  std::size_t row);
    bool ReadWithCare(const TextBlocks::Text& text, std::size_t i, const TextCell& cell,
                      std::size_t row);
    void ReadGuessedText(const TextBlocks::Text& text, std::size_t i, const TextCell& cell);
    bool IsAllowed(const CellFormat& format, const Decimal& number) const;

    [[noreturn]] void Fail(const TextBlocks::Text& text, std::size_t at,
                           const std::string& reason) const;
    [[noreturn]] void FailInColumn(const TextBlocks::Text& text, std::size_t row_begin,
                                   std::size_t i, const TextCell& cell,
                                   const std::string& reason) const;
    [[noreturn]] void FailAtCell(const TextBlocks::Text& text, std::size_t row_begin, std::size_t i,
                                 const TextCell& cell) const;
    void CheckLength(const TextBlocks::Text& text, std::size_t row_begin) const;

    const TextBlocks& blocks_;
    const std::vector<CellFormat>& formats_;
    const std::vector<std::size_t>& watched_;
    // 64 columns as bits, of plain rows.
    struct ColumnBits {
        // Those that are looked at by their marks.
        std::uint64_t glanced = 0;
        // What marks have shown in some row.
        std::uint64_t has_whole = 0;
        std::uint64_t has_fraction = 0;
    };

    char point_ = '.';
    std::vector<ColumnBits> column_bits_;
    std::vector<Plan> plans_;
    // The numbers of some rows, by watched column.
    std::vector<std::vector<double>> values_;
    CellList cells_;
    std::vector<ColumnSurvey> columns_;
    PlainRows plain_;
    RowReader reader_;
    std::unique_ptr<RowWatcher> watcher_;
};

}  // namespace zol::engine
