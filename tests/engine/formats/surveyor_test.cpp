// Plain rows are surveyed column by column, others row by row. A comment mark that stands
// nowhere makes rows no plain ones, so that both ways can be held against each other.
#include "engine/formats/surveyor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "engine/formats/read_error.h"
#include "engine/formats/table_survey.h"
#include "tests/engine/temporary_file.h"

namespace {

using zol::engine::CellFormat;
using zol::engine::ColumnSurvey;
using zol::engine::File;
using zol::engine::MissingTexts;
using zol::engine::ReadError;
using zol::engine::RowWatcher;
using zol::engine::survey_table;
using zol::engine::TableSurvey;
using zol::engine::TextBlocks;
using zol::engine::TextDialect;
using zol::testing_support::TemporaryFile;

constexpr double kMostWatched = 1e7;

// Writes down what it sees, and finds large numbers wrong.
class Notes final : public RowWatcher {
public:
    explicit Notes(std::string& seen) : seen_(seen) {}

    Fault Rows(const std::vector<std::vector<double>>& columns, std::size_t count) override {
        for (std::size_t row = 0; row < count; ++row) {
            for (std::size_t i = 0; i < columns.size(); ++i) {
                if (columns[i][row] > kMostWatched) {
                    return {row, i, "is too much"};
                }
                // A bit pattern tells minus zero from zero.
                seen_ +=
                    std::to_string(columns[i][row]) + (std::signbit(columns[i][row]) ? "-;" : ";");
            }
        }
        return {count, 0, nullptr};
    }

private:
    std::string& seen_;
};

// All that a survey comes to, or why it fails.
std::string outcome_of(const std::string& path, const TextDialect& dialect,
                       const std::vector<CellFormat>& formats,
                       const std::vector<std::size_t>& watched) {
    TextBlocks blocks(std::make_shared<File>(path), dialect, 0);
    std::string seen;
    TableSurvey survey;
    try {
        // The table is of one block, so that one of the watchers sees all of it.
        survey =
            survey_table(blocks, formats, watched, [&] { return std::make_unique<Notes>(seen); });
    } catch (const ReadError& error) {
        return error.what();
    }
    std::string outcome = std::to_string(blocks.Rows()) + " rows, watched " + seen + '\n';
    for (const ColumnSurvey& column : survey.columns) {
        // Of a column that is known for texts no more is asked.
        const bool is_text = column.texts >= ColumnSurvey::kFewTexts;
        outcome += is_text ? "many texts" : std::to_string(column.texts);
        outcome += ' ' + column.first_text + ' ' + std::to_string(column.first_text_offset);
        for (const bool fact : {column.has_number, column.has_comma, column.has_fraction}) {
            outcome += is_text ? '?' : fact ? '+' : '-';
        }
        // Told of whole numbers of ten digits or more only.
        for (const std::int64_t whole : {column.least_whole, column.greatest_whole}) {
            const bool is_long = whole > 999'999'999 || whole < -999'999'999;
            outcome += ' ' + (is_long && !is_text ? std::to_string(whole) : "short");
        }
        outcome += '\n';
    }
    return outcome;
}

CellFormat format(CellFormat::Kind kind) {
    CellFormat made;
    made.name = "c";
    made.kind = kind;
    made.least = -100;
    made.greatest = 100'000;
    return made;
}

// One of each kind of look that a column can get.
std::vector<CellFormat> formats() {
    std::vector<CellFormat> made;
    for (const auto kind :
         {CellFormat::Kind::Number, CellFormat::Kind::Guess, CellFormat::Kind::Guess,
          CellFormat::Kind::Text, CellFormat::Kind::Whole, CellFormat::Kind::Number,
          CellFormat::Kind::Guess, CellFormat::Kind::Guess, CellFormat::Kind::Boolean,
          CellFormat::Kind::Number, CellFormat::Kind::Guess}) {
        made.push_back(format(kind));
    }
    made[6].missing = MissingTexts({"", "-99"});
    made[7].decimal_point = ',';
    made[9].missing = MissingTexts({"-99.0"});
    return made;
}

TEST(Surveyor, ReadsPlainRowsAsItReadsOthers) {
    std::mt19937 random(11);
    const std::string numbers[] = {"0",   "7",       "-12",  "500005", "7000005", "-0",   "-0.0",
                                   "1.5", "-99.00",  "-99",  "102.5",  "0.25",    ".5",   "5.",
                                   "",    "1234567", "1e-5", "NaN",    " 12 ",    "+3.5", "99999"};
    const std::string oddities[] = {"x",
                                    "OX",
                                    "1,5",
                                    "12345678901",
                                    "1.2345678901234567",
                                    "1e300",
                                    "NA",
                                    "-9876543210",
                                    "two words",
                                    "20000000",
                                    "--",
                                    "1.5",
                                    "12345678901234567.",
                                    "inf",
                                    "\xC3\xA9"};
    TextDialect plain;
    plain.delimiter = ';';
    TextDialect careful = plain;
    careful.comment = '\x01';
    const std::vector<CellFormat> columns = formats();
    int failed = 0;
    constexpr int kTables = 300;
    for (int table = 0; table < kTables; ++table) {
        // Few oddities, so that many a table is sound.
        const unsigned rarity = 1U << (random() % 12);
        const std::string row_end = random() % 2 == 0 ? "\n" : "\r\n";
        const std::size_t rows = 1 + random() % 200;
        std::string text;
        for (std::size_t row = 0; row < rows; ++row) {
            text += std::to_string(random() % 5);
            for (std::size_t i = 1; i < columns.size(); ++i) {
                const bool odd = random() % rarity == 0 && random() % 3 == 0;
                const bool strict = columns[i].kind == CellFormat::Kind::Whole ||
                                    columns[i].kind == CellFormat::Kind::Boolean;
                text += ';' + (odd      ? oddities[random() % std::size(oddities)]
                               : strict ? std::to_string(random() % 2)
                                        : numbers[random() % std::size(numbers)]);
            }
            text += row_end;
        }
        SCOPED_TRACE(text);
        const TemporaryFile file(text);
        const std::string outcome = outcome_of(file.Path(), plain, columns, {0, 5, 9});
        ASSERT_EQ(outcome, outcome_of(file.Path(), careful, columns, {0, 5, 9}));
        failed += outcome.starts_with("line") ? 1 : 0;
    }
    EXPECT_GT(failed, kTables / 10);
    EXPECT_LT(failed, kTables * 9 / 10);
}

TEST(Surveyor, TellsTheFirstFaultOfPlainRows) {
    struct Case {
        const char* name;
        // What stands in rows 70 and 71 of two columns, the first of which is watched.
        const char* row_70[2];
        const char* row_71[2];
        const char* reason;
    };
    const Case cases[] = {
        {"a later column in an earlier row",
         {"1", "x"},
         {"y", "1"},
         "line 70: column 'c': 'x' is not a number"},
        {"two columns in one row",
         {"y", "x"},
         {"1", "1"},
         "line 70: column 'c': 'y' is not a number"},
        {"what is watched in an earlier row",
         {"20000000", "1"},
         {"1", "x"},
         "line 70: column 'c': '20000000' is too much"},
        {"a cell ahead of what is watched",
         {"20000000", "x"},
         {"1", "1"},
         "line 70: column 'c': 'x' is not a number"},
        {"what is watched in a later row",
         {"1", "x"},
         {"20000000", "1"},
         "line 70: column 'c': 'x' is not a number"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::string text;
        for (int line = 1; line < 200; ++line) {
            const char* const* cells = line == 70 ? c.row_70 : line == 71 ? c.row_71 : nullptr;
            text += cells == nullptr ? std::string("5,5\n")
                                     : std::string(cells[0]) + "," + cells[1] + "\n";
        }
        const TemporaryFile file(text);
        const std::vector<CellFormat> two(2, format(CellFormat::Kind::Number));
        EXPECT_EQ(outcome_of(file.Path(), TextDialect{}, two, {0}), c.reason);
    }
}

}  // namespace
