#include "engine/formats/table_survey.h"

#include <algorithm>
#include <cstring>

#include "engine/formats/parallel.h"
#include "engine/formats/plain_rows.h"
#include "engine/formats/read_error.h"
#include "engine/formats/row_reader.h"

namespace zol::engine {

namespace {

constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();
// More texts than this are no slips in a column of numbers.
constexpr std::size_t kFewTexts = 20;
constexpr std::size_t kNotWatched = std::numeric_limits<std::size_t>::max();

// How closely the cells of a column have to be looked at.
enum class Look : std::uint8_t { None, Glance, Full };

// What a row needs to know of a column, small enough to stay near.
struct Plan {
    std::size_t watch_place = kNotWatched;
    char point = '.';
    Look look = Look::Full;
};

// One worker's part of the survey.
class Surveyor {
public:
    Surveyor(const TextBlocks& blocks, const std::vector<CellFormat>& formats,
             const std::vector<std::size_t>& watched, std::unique_ptr<RowWatcher> watcher)
        : blocks_(blocks),
          formats_(formats),
          watched_(watched),
          plans_(formats.size()),
          values_(watched.size()),
          columns_(formats.size()),
          reader_({}, blocks.Dialect()),
          watcher_(std::move(watcher)) {
        for (std::size_t i = 0; i < formats.size(); ++i) {
            const CellFormat& format = formats[i];
            plans_[i].point = format.decimal_point;
            plans_[i].look = format.kind == CellFormat::Kind::Text    ? Look::None
                             : format.kind != CellFormat::Kind::Guess ? Look::Full
                             : format.HasUsualNumbers() && !format.missing.HasNumbers()
                                 ? Look::Glance
                                 : Look::Full;
        }
        for (std::size_t i = 0; i < watched.size(); ++i) {
            plans_[watched[i]].watch_place = i;
            plans_[watched[i]].look = Look::Full;
        }
    }

    std::size_t Read(const TextBlocks::Text& text) {
        if (const void* nul = std::memchr(text.rows.data(), 0, text.rows.size())) {
            const auto at = static_cast<const char*>(nul) - text.rows.data();
            Fail(text, static_cast<std::size_t>(at),
                 "a NUL byte stands at byte " +
                     std::to_string(text.offset + static_cast<std::uint64_t>(at)) +
                     "; this is no text table");
        }
        if (plain_.Read(text.rows, blocks_.Dialect(), formats_.size())) {
            for (std::size_t row = 0; row < plain_.Count(); ++row) {
                cells_.Clear();
                for (std::size_t i = 0; i < formats_.size(); ++i) {
                    const TextCell cell = plain_.CellAt(row, i);
                    cells_.Add(cell.begin, cell.end, false);
                }
                ReadRow(text, plain_.RowBegin(row));
            }
            return plain_.Count();
        }
        reader_.Restart(text.rows);
        std::size_t rows = 0;
        for (;; ++rows) {
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

    const std::vector<ColumnSurvey>& Columns() const { return columns_; }
    std::unique_ptr<RowWatcher> TakeWatcher() { return std::move(watcher_); }

private:
    [[noreturn]] void Fail(const TextBlocks::Text& text, std::size_t at,
                           const std::string& reason) const {
        throw ReadError("line " + std::to_string(blocks_.LineOf(text.offset + at)) + ": " + reason);
    }

    [[noreturn]] void FailInColumn(const TextBlocks::Text& text, std::size_t row_begin,
                                   std::size_t column, const std::string& reason) const {
        const auto at = static_cast<std::size_t>(cells_[column].begin - text.rows.data());
        // A quoted cell may stand lines below the start of its row.
        Fail(text, std::max(at, row_begin),
             "column " + shown(formats_[column].name) + ": " + reason);
    }

    void ReadRow(const TextBlocks::Text& text, std::size_t row_begin) {
        if (cells_.size() != formats_.size()) {
            CheckLength(text, row_begin);
        }
        for (std::size_t i = 0; i < plans_.size(); ++i) {
            const Plan& plan = plans_[i];
            if (plan.look == Look::None) {
                continue;
            }
            if (plan.look == Look::Glance) {
                const Glance glance = glance_at(cells_[i].begin, cells_[i].end, plan.point);
                if (glance != Glance::Other) {
                    columns_[i].has_number = true;
                    columns_[i].has_fraction |= glance == Glance::Fraction;
                    continue;
                }
            }
            ReadCell(text, row_begin, i);
        }
        if (watcher_) {
            std::size_t column = 0;
            if (const char* fault = watcher_->Row(values_, column)) {
                const TextCell& cell = cells_[watched_[column]];
                FailInColumn(text, row_begin, watched_[column], shown(cell.Raw()) + ' ' + fault);
            }
        }
    }

    void ReadCell(const TextBlocks::Text& text, std::size_t row_begin, std::size_t i) {
        const CellFormat& format = formats_[i];
        Plan& plan = plans_[i];
        Decimal number;
        const CellContent content = read_cell(cells_[i], format, number);
        if (content == CellContent::Number) {
            columns_[i].Add(number);
            CheckWhole(text, row_begin, i, number);
        } else if (content == CellContent::Text) {
            if (plan.watch_place != kNotWatched || format.kind != CellFormat::Kind::Guess) {
                const bool is_first_row = row_begin == 0 && text.block == 0;
                FailInColumn(text, row_begin, i,
                             shown(cells_[i].Raw()) + " is not a number" +
                                 (is_first_row ? "; if the line holds units, a sidecar can say so: "
                                                 "\"headerRows\": [1, 2]"
                                               : ""));
            }
            ReadGuessedText(text, i);
        }
        if (plan.watch_place != kNotWatched) {
            values_[plan.watch_place] = content == CellContent::Number ? number.Value() : kMissing;
        }
    }

    void ReadGuessedText(const TextBlocks::Text& text, std::size_t i) {
        const std::string_view cell = trimmed(cells_[i].Raw());
        Decimal number;
        if (blocks_.Dialect().delimiter != ',' && read_decimal(cell, ',', number)) {
            columns_[i].has_comma = true;
            columns_[i].has_number = true;
            return;
        }
        columns_[i].AddText(
            cell, text.offset + static_cast<std::uint64_t>(cell.data() - text.rows.data()));
        if (columns_[i].texts >= kFewTexts) {
            // A column of texts, whatever follows.
            plans_[i].look = Look::None;
        }
    }

    void CheckLength(const TextBlocks::Text& text, std::size_t row_begin) const {
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

    void CheckWhole(const TextBlocks::Text& text, std::size_t row_begin, std::size_t column,
                    const Decimal& number) const {
        const CellFormat& format = formats_[column];
        if (format.kind != CellFormat::Kind::Whole) {
            return;
        }
        std::int64_t whole = 0;
        if (!whole_of(number, whole) || whole < format.least || whole > format.greatest) {
            FailInColumn(text, row_begin, column,
                         shown(cells_[column].Raw()) + " is not a whole number from " +
                             std::to_string(format.least) + " to " +
                             std::to_string(format.greatest));
        }
    }

    const TextBlocks& blocks_;
    const std::vector<CellFormat>& formats_;
    const std::vector<std::size_t>& watched_;
    std::vector<Plan> plans_;
    std::vector<double> values_;
    CellList cells_;
    std::vector<ColumnSurvey> columns_;
    PlainRows plain_;
    RowReader reader_;
    std::unique_ptr<RowWatcher> watcher_;
};

}  // namespace

void ColumnSurvey::Add(const Decimal& number) {
    has_number = true;
    if (number.exact && number.scale == 0) {
        least_whole = std::min(least_whole, number.digits);
        greatest_whole = std::max(greatest_whole, number.digits);
    } else {
        has_fraction = true;
    }
}

void ColumnSurvey::AddText(std::string_view text, std::uint64_t offset) {
    // Blocks reach one worker in the order of the file.
    if (texts++ == 0) {
        first_text = shown(text);
        first_text_offset = offset;
    }
}

bool ColumnSurvey::HasStrayText() const {
    return has_number && texts > 0 && texts < kFewTexts;
}

void ColumnSurvey::Merge(const ColumnSurvey& other) {
    if (other.HasText() && (!HasText() || other.first_text_offset < first_text_offset)) {
        first_text = other.first_text;
        first_text_offset = other.first_text_offset;
    }
    texts += other.texts;
    has_comma = has_comma || other.has_comma;
    has_number = has_number || other.has_number;
    has_fraction = has_fraction || other.has_fraction;
    least_whole = std::min(least_whole, other.least_whole);
    greatest_whole = std::max(greatest_whole, other.greatest_whole);
}

TableSurvey survey_table(TextBlocks& blocks, const std::vector<CellFormat>& formats,
                         const std::vector<std::size_t>& watched,
                         const std::function<std::unique_ptr<RowWatcher>()>& make_watcher) {
    std::vector<std::unique_ptr<Surveyor>> surveyors;
    for (unsigned i = 0; i < worker_count(); ++i) {
        surveyors.push_back(std::make_unique<Surveyor>(blocks, formats, watched,
                                                       make_watcher ? make_watcher() : nullptr));
    }
    blocks.ReadAll(worker_count(), [&](unsigned worker, const TextBlocks::Text& text) {
        return surveyors[worker]->Read(text);
    });
    TableSurvey survey;
    survey.columns.resize(formats.size());
    for (const auto& surveyor : surveyors) {
        for (std::size_t i = 0; i < formats.size(); ++i) {
            survey.columns[i].Merge(surveyor->Columns()[i]);
        }
        if (make_watcher) {
            survey.watchers.push_back(surveyor->TakeWatcher());
        }
    }
    return survey;
}

std::string shown(std::string_view text) {
    constexpr std::size_t kMost = 80;
    std::string quoted = "'";
    quoted += text.substr(0, kMost);
    quoted += text.size() > kMost ? "...'" : "'";
    return quoted;
}

}  // namespace zol::engine
