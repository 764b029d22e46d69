#include "engine/formats/table_survey.h"

#include <algorithm>
#include <cstring>

#include "engine/formats/parallel.h"
#include "engine/formats/read_error.h"
#include "engine/formats/row_reader.h"

namespace zol::engine {

namespace {

constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t kNotWatched = std::numeric_limits<std::size_t>::max();

// One worker's part of the survey.
class Surveyor {
public:
    Surveyor(const TextBlocks& blocks, const std::vector<CellFormat>& formats,
             const std::vector<std::size_t>& watched, std::unique_ptr<RowWatcher> watcher)
        : blocks_(blocks),
          formats_(formats),
          watched_(watched),
          watch_place_(formats.size(), kNotWatched),
          values_(watched.size()),
          columns_(formats.size()),
          watcher_(std::move(watcher)) {
        for (std::size_t i = 0; i < watched.size(); ++i) {
            watch_place_[watched[i]] = i;
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
        RowReader reader(text.rows, blocks_.Dialect());
        std::size_t rows = 0;
        for (;; ++rows) {
            switch (reader.Next(cells_)) {
                case RowReader::Outcome::Row:
                    ReadRow(text, reader.RowBegin());
                    break;
                case RowReader::Outcome::End:
                    return rows;
                case RowReader::Outcome::OpenQuote:
                    Fail(text, reader.RowBegin(), "a quote is opened and never closed");
                case RowReader::Outcome::TextBehindQuote:
                    Fail(text, reader.RowBegin(), "text stands behind a closing quote");
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
        for (std::size_t i = 0; i < formats_.size(); ++i) {
            const std::size_t place = watch_place_[i];
            const CellFormat& format = formats_[i];
            const bool settled = columns_[i].has_text && format.kind == CellFormat::Kind::Guess;
            if (place == kNotWatched && (settled || format.kind == CellFormat::Kind::Text)) {
                continue;
            }
            Decimal number;
            const CellContent content = read_cell(cells_[i], format, number);
            if (content == CellContent::Number) {
                columns_[i].Add(number);
                CheckWhole(text, row_begin, i, number);
            } else if (content == CellContent::Text) {
                const bool must_be_number =
                    place != kNotWatched || format.kind != CellFormat::Kind::Guess;
                if (must_be_number) {
                    FailInColumn(text, row_begin, i, shown(cells_[i].Raw()) + " is not a number");
                }
                columns_[i].has_text = true;
            }
            if (place != kNotWatched) {
                values_[place] = content == CellContent::Number ? number.Value() : kMissing;
            }
        }
        if (watcher_) {
            std::size_t column = 0;
            if (const char* fault = watcher_->Row(values_, column)) {
                const TextCell& cell = cells_[watched_[column]];
                FailInColumn(text, row_begin, watched_[column], shown(cell.Raw()) + ' ' + fault);
            }
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
    std::vector<std::size_t> watch_place_;
    std::vector<double> values_;
    CellList cells_;
    std::vector<ColumnSurvey> columns_;
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

void ColumnSurvey::Merge(const ColumnSurvey& other) {
    has_text = has_text || other.has_text;
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
