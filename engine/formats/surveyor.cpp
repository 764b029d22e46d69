#include "engine/formats/surveyor.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <utility>

#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();
// Plain rows are read so many at a time: few enough that the places of their cells stay
// near while one column after the other is read.
constexpr std::size_t kRowsAtATime = 64;
constexpr std::size_t kBits = 64;

}  // namespace

Surveyor::Surveyor(const TextBlocks& blocks, const std::vector<CellFormat>& formats,
                   const std::vector<std::size_t>& watched, std::unique_ptr<RowWatcher> watcher)
    : blocks_(blocks),
      formats_(formats),
      watched_(watched),
      column_bits_(formats.size() / kBits + 1),
      plans_(formats.size()),
      values_(watched.size(), std::vector<double>(kRowsAtATime)),
      columns_(formats.size()),
      reader_({}, blocks.Dialect()),
      watcher_(std::move(watcher)) {
    for (std::size_t i = 0; i < watched.size(); ++i) {
        plans_[watched[i]].watched = true;
        plans_[watched[i]].watch_place = i;
    }
    bool has_point = false;
    for (std::size_t i = 0; i < formats.size(); ++i) {
        const CellFormat& format = formats[i];
        Plan& plan = plans_[i];
        const bool takes_any_number =
            format.kind == CellFormat::Kind::Guess || format.kind == CellFormat::Kind::Number;
        const bool has_usual_numbers =
            takes_any_number && format.HasUsualNumbers() && !format.missing.HasNumbers();
        if (format.kind == CellFormat::Kind::Text && !plan.watched) {
            plan.look = Look::None;
        } else if (has_usual_numbers) {
            plan.look = plan.watched ? Look::Value : Look::Glance;
            // Rows are marked with one decimal point; a column with another is rare.
            point_ = has_point ? point_ : format.decimal_point;
            has_point = true;
            plan.marked = format.decimal_point == point_;
        }
        if (plan.marked && plan.look == Look::Glance) {
            column_bits_[i / kBits].glanced |= std::uint64_t{1} << (i % kBits);
        }
    }
}

std::size_t Surveyor::Read(const TextBlocks::Text& text) {
    if (const void* nul = std::memchr(text.rows.data(), 0, text.rows.size())) {
        const auto at = static_cast<const char*>(nul) - text.rows.data();
        Fail(text, static_cast<std::size_t>(at),
             "a NUL byte stands at byte " +
                 std::to_string(text.offset + static_cast<std::uint64_t>(at)) +
                 "; this is no text table");
    }
    if (plain_.ReadMarked(text.rows, blocks_.Dialect(), formats_.size(), point_)) {
        for (std::size_t row = 0; row < plain_.Count(); row += kRowsAtATime) {
            ReadPlainRows(text, row, std::min(kRowsAtATime, plain_.Count() - row));
        }
        TakeMarksSeen();
        return plain_.Count();
    }
    reader_.Restart(text.rows);
    for (std::size_t rows = 0;; ++rows) {
        switch (reader_.Next(cells_)) {
            case RowReader::Outcome::Row:
                ReadRow(text, reader_.RowBegin());
                break;
            case RowReader::Outcome::End:
                return rows;
            case RowReader::Outcome::OpenQuote:
                Fail(text, reader_.RowBegin(), "a quote is opened and never closed");
            case RowReader::Outcome::TextBehindQuote:
                Fail(text, reader_.RowBegin(), "text stands behind a closing quote");
        }
    }
}

void Surveyor::ReadPlainRows(const TextBlocks::Text& text, std::size_t first, std::size_t count) {
    // No row behind the first with a fault matters.
    std::size_t sound = ReadMarkedColumns(text, first, count);
    for (std::size_t i = 0; i < plans_.size(); ++i) {
        sound = ReadColumn(text, i, first, sound);
    }
    if (watcher_) {
        const RowWatcher::Fault fault = watcher_->Rows(values_, sound);
        if (fault.reason != nullptr) {
            const std::size_t row = first + fault.row;
            const std::size_t column = watched_[fault.column];
            const TextCell cell = plain_.CellAt(row, column);
            FailInColumn(text, plain_.RowBegin(row), column, cell,
                         shown(cell.Raw()) + ' ' + fault.reason);
        }
    }
    if (sound == count) {
        return;
    }
    // Read again by itself, the row tells its fault.
    cells_.Clear();
    for (std::size_t i = 0; i < plans_.size(); ++i) {
        const TextCell cell = plain_.CellAt(first + sound, i);
        cells_.Add(cell.begin, cell.end, false);
    }
    ReadRow(text, plain_.RowBegin(first + sound));
}

// Gives the count of rows in front of the first fault; so do the others.
std::size_t Surveyor::ReadColumn(const TextBlocks::Text& text, std::size_t i, std::size_t first,
                                 std::size_t count) {
    const Plan& plan = plans_[i];
    if (plan.look == Look::None || (plan.marked && plan.look == Look::Glance)) {
        return count;
    }
    if (plan.marked) {
        return ReadWatchedColumn(text, i, first, count);
    }
    for (std::size_t row = 0; row < count; ++row) {
        if (!ReadCell(text, i, plain_.CellAt(first + row, i), row)) {
            return row;
        }
    }
    return count;
}

// All columns that are looked at by their marks, row by row.
std::size_t Surveyor::ReadMarkedColumns(const TextBlocks::Text& text, std::size_t first,
                                        std::size_t count) {
    for (std::size_t row = 0; row < count; ++row) {
        for (std::size_t word = 0; word * kBits < plans_.size(); ++word) {
            ColumnBits& bits = column_bits_[word];
            const std::uint64_t others = plain_.OthersFrom(first + row, word * kBits);
            const std::uint64_t fractions = plain_.FractionsFrom(first + row, word * kBits);
            bits.has_fraction |= fractions;
            bits.has_whole |= ~(fractions | others);
            for (std::uint64_t left = others & bits.glanced; left != 0; left &= left - 1) {
                const std::size_t i =
                    word * kBits + static_cast<std::size_t>(std::countr_zero(left));
                if (!ReadCell(text, i, plain_.CellAt(first + row, i), row)) {
                    return row;
                }
            }
        }
    }
    return count;
}

void Surveyor::TakeMarksSeen() {
    for (std::size_t i = 0; i < plans_.size(); ++i) {
        const ColumnBits& bits = column_bits_[i / kBits];
        const std::uint64_t bit = std::uint64_t{1} << (i % kBits);
        if ((bits.glanced & bit) != 0) {
            columns_[i].has_number |= ((bits.has_whole | bits.has_fraction) & bit) != 0;
            columns_[i].has_fraction |= (bits.has_fraction & bit) != 0;
        }
    }
}

std::size_t Surveyor::ReadWatchedColumn(const TextBlocks::Text& text, std::size_t i,
                                        std::size_t first, std::size_t count) {
    std::vector<double>& values = values_[plans_[i].watch_place];
    // Along two of the axes most numbers are those of the row before.
    TextCell last;
    PlainRows::ColumnCells cells = plain_.CellsFrom(first, i);
    std::size_t row = 0;
    for (; row < count; ++row) {
        const TextCell cell = cells.Next();
        const auto length = cell.end - cell.begin;
        if (length == last.end - last.begin &&
            are_same_characters(cell.end, last.end, static_cast<std::size_t>(length))) {
            values[row] = values[row - 1];
            continue;
        }
        last = cell;
        Decimal number;
        if (read_short_decimal(cell.begin, cell.end, point_, number)) {
            columns_[i].Add(number);
            values[row] = number.Value();
        } else if (!ReadCell(text, i, cell, row)) {
            break;
        }
    }
    return row;
}

// The cells are in cells_.
void Surveyor::ReadRow(const TextBlocks::Text& text, std::size_t row_begin) {
    if (cells_.size() != formats_.size()) {
        CheckLength(text, row_begin);
    }
    for (std::size_t i = 0; i < plans_.size(); ++i) {
        if (plans_[i].look != Look::None && !ReadCell(text, i, cells_[i], 0)) {
            FailAtCell(text, row_begin, i, cells_[i]);
        }
    }
    if (watcher_) {
        const RowWatcher::Fault fault = watcher_->Rows(values_, 1);
        if (fault.reason != nullptr) {
            const std::size_t column = watched_[fault.column];
            const TextCell& cell = cells_[column];
            FailInColumn(text, row_begin, column, cell, shown(cell.Raw()) + ' ' + fault.reason);
        }
    }
}

// False when the cell is not what its column has to hold. A watched number goes to the
// place of `row`.
bool Surveyor::ReadCell(const TextBlocks::Text& text, std::size_t i, const TextCell& cell,
                        std::size_t row) {
    if (plans_[i].look == Look::Glance) {
        const Glance glance = glance_at(cell.begin, cell.end, formats_[i].decimal_point);
        if (glance != Glance::Other) {
            columns_[i].has_number = true;
            columns_[i].has_fraction |= glance == Glance::Fraction;
            return true;
        }
    }
    return ReadWithCare(text, i, cell, row);
}

bool Surveyor::ReadWithCare(const TextBlocks::Text& text, std::size_t i, const TextCell& cell,
                            std::size_t row) {
    const CellFormat& format = formats_[i];
    const Plan& plan = plans_[i];
    Decimal number;
    const CellContent content = read_cell(cell, format, number);
    if (content == CellContent::Number) {
        columns_[i].Add(number);
        if (!IsAllowed(format, number)) {
            return false;
        }
    } else if (content == CellContent::Text) {
        if (plan.watched || format.kind != CellFormat::Kind::Guess) {
            return false;
        }
        ReadGuessedText(text, i, cell);
    }
    if (plan.watched) {
        values_[plan.watch_place][row] = content == CellContent::Number ? number.Value() : kMissing;
    }
    return true;
}

void Surveyor::ReadGuessedText(const TextBlocks::Text& text, std::size_t i, const TextCell& cell) {
    const std::string_view letters = trimmed(cell.Raw());
    Decimal number;
    if (blocks_.Dialect().delimiter != ',' && read_decimal(letters, ',', number)) {
        columns_[i].has_comma = true;
        columns_[i].has_number = true;
        return;
    }
    columns_[i].AddText(
        letters, text.offset + static_cast<std::uint64_t>(letters.data() - text.rows.data()));
    if (columns_[i].texts >= ColumnSurvey::kFewTexts) {
        // A column of texts, whatever follows.
        plans_[i].look = Look::None;
        column_bits_[i / kBits].glanced &= ~(std::uint64_t{1} << (i % kBits));
    }
}

bool Surveyor::IsAllowed(const CellFormat& format, const Decimal& number) const {
    if (format.kind != CellFormat::Kind::Whole) {
        return true;
    }
    std::int64_t whole = 0;
    return whole_of(number, whole) && whole >= format.least && whole <= format.greatest;
}

void Surveyor::Fail(const TextBlocks::Text& text, std::size_t at, const std::string& reason) const {
    throw ReadError("line " + std::to_string(blocks_.LineOf(text.offset + at)) + ": " + reason);
}

void Surveyor::FailInColumn(const TextBlocks::Text& text, std::size_t row_begin, std::size_t i,
                            const TextCell& cell, const std::string& reason) const {
    const auto at = static_cast<std::size_t>(cell.begin - text.rows.data());
    // A quoted cell may stand lines below the start of its row.
    Fail(text, std::max(at, row_begin), "column " + shown(formats_[i].name) + ": " + reason);
}

void Surveyor::FailAtCell(const TextBlocks::Text& text, std::size_t row_begin, std::size_t i,
                          const TextCell& cell) const {
    const CellFormat& format = formats_[i];
    Decimal number;
    if (read_cell(cell, format, number) == CellContent::Number) {
        FailInColumn(text, row_begin, i, cell,
                     shown(cell.Raw()) + " is not a whole number from " +
                         std::to_string(format.least) + " to " + std::to_string(format.greatest));
    }
    const bool is_first_row = row_begin == 0 && text.block == 0;
    FailInColumn(text, row_begin, i, cell,
                 shown(cell.Raw()) + " is not a number" +
                     (is_first_row ? "; if the line holds units, a sidecar can say so: "
                                     "\"headerRows\": [1, 2]"
                                   : ""));
}

void Surveyor::CheckLength(const TextBlocks::Text& text, std::size_t row_begin) const {
    const bool blank_extras =
        cells_.size() > formats_.size() &&
        std::all_of(cells_.begin() + formats_.size(), cells_.end(),
                    [](const TextCell& cell) { return trimmed(cell.Raw()).empty(); });
    if (!blank_extras) {
        Fail(text, row_begin,
             std::to_string(cells_.size()) + " cells in the row, " +
                 std::to_string(formats_.size()) + " columns in the table");
    }
}

}  // namespace zol::engine
