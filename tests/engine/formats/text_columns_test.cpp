// Columns of a table of many blocks: decoded on demand, thrown out and decoded again,
// and what happens when the file changes underneath.
#include "engine/formats/text_columns.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <memory>
#include <random>
#include <sstream>
#include <string>

#include "engine/formats/read_error.h"
#include "engine/formats/table_survey.h"
#include "tests/engine/temporary_file.h"

namespace {

using zol::engine::CellFormat;
using zol::engine::File;
using zol::engine::ReadError;
using zol::engine::survey_table;
using zol::engine::TableSurvey;
using zol::engine::TextBlocks;
using zol::engine::TextColumns;
using zol::engine::TextDialect;
using zol::testing_support::TemporaryFile;

constexpr std::uint64_t kRows = 60000;

double number_in(std::uint64_t row) {
    return static_cast<double>(row * 7919 % 100003) / 1000;
}

// Every third text spans two lines, so that row ends and line ends differ.
std::string text_in(std::uint64_t row) {
    return row % 3 == 0 ? "two\nlines " + std::to_string(row % 50) : "plain, but quoted";
}

std::string table_text() {
    std::ostringstream text;
    text << std::fixed << std::setprecision(3);
    for (std::uint64_t row = 0; row < kRows; ++row) {
        text << number_in(row) << ",\"" << text_in(row) << "\","
             << (row % 10 == 9 ? std::string() : std::to_string(row)) << '\n';
    }
    return text.str();
}

std::vector<CellFormat> formats() {
    std::vector<CellFormat> made(3);
    made[0].kind = CellFormat::Kind::Number;
    made[1].kind = CellFormat::Kind::Text;
    made[2].kind = CellFormat::Kind::Guess;
    return made;
}

std::unique_ptr<TextColumns> open_columns(const std::string& path, TableSurvey* survey = nullptr) {
    TextBlocks blocks(std::make_shared<File>(path), TextDialect{}, 0);
    TableSurvey seen = survey_table(blocks, formats(), {}, nullptr);
    std::vector<CellFormat> settled = formats();
    settled[2].kind = CellFormat::Kind::Number;
    if (survey != nullptr) {
        *survey = std::move(seen);
    }
    return std::make_unique<TextColumns>(std::move(blocks), settled, "");
}

TEST(TextColumns, AnswerAWalkAndRandomRowsAlike) {
    const TemporaryFile file(table_text());
    TableSurvey survey;
    const auto columns = open_columns(file.Path(), &survey);
    ASSERT_EQ(columns->Blocks().Rows(), kRows);
    ASSERT_GT(columns->Blocks().Count(), 3U) << "the table is to span several blocks";
    EXPECT_TRUE(survey.columns[0].has_fraction);
    EXPECT_TRUE(survey.columns[2].has_number);
    EXPECT_FALSE(survey.columns[2].has_fraction);

    for (std::uint64_t row = 0; row < kRows; ++row) {
        ASSERT_EQ(columns->Number(0, row), number_in(row)) << row;
        ASSERT_EQ(columns->Text(1, row), text_in(row)) << row;
        ASSERT_EQ(std::isnan(columns->Number(2, row)), row % 10 == 9) << row;
    }
    // With room for hardly one block, every jump decodes anew.
    columns->LimitMemory(1);
    std::mt19937_64 random(3);
    for (int i = 0; i < 40; ++i) {
        const std::uint64_t row = random() % kRows;
        ASSERT_EQ(columns->Number(0, row), number_in(row));
        ASSERT_EQ(columns->Text(1, row), text_in(row));
    }
}

TEST(TextColumns, AreMissingWhenTheFileChanges) {
    TemporaryFile file(table_text());
    const TemporaryFile diagnostics("");
    const auto columns = open_columns(file.Path());
    ASSERT_EQ(columns->Number(0, 0), number_in(0));
    ::setenv("ZOL_DIAGNOSTICS", diagnostics.Path().c_str(), 1);
    file.Rewrite("1,a,2\n");
    EXPECT_EQ(columns->Number(0, 1), number_in(1)) << "decoded before the change";
    EXPECT_TRUE(std::isnan(columns->Number(0, kRows - 1)));
    EXPECT_EQ(columns->Text(1, kRows - 1), "");
    EXPECT_TRUE(std::isnan(columns->Number(2, kRows / 2)));
    ::unsetenv("ZOL_DIAGNOSTICS");
    std::ifstream in(diagnostics.Path());
    std::string line;
    std::getline(in, line);
    EXPECT_NE(line.find("has changed"), line.npos) << line;
    EXPECT_FALSE(std::getline(in, line)) << "one word is enough";
}

TEST(TableSurvey, NamesTheFirstFaultyLine) {
    std::string good = table_text();
    const std::size_t lines =
        1 + static_cast<std::size_t>(std::count(good.begin(), good.end(), '\n'));
    struct Case {
        std::string tail;
        std::string reason;
    };
    const Case cases[] = {
        {"x,a,1\n", "column '': 'x' is not a number"},
        {"1,a\n", "2 cells in the row, 3 columns in the table"},
        {"1,a,2,3\n", "4 cells in the row, 3 columns in the table"},
        {"1,\"a\" b,2\n", "text stands behind a closing quote"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.tail);
        // A second fault far behind the first must not be the one that is told.
        const TemporaryFile file(good + c.tail + good + "y,a,1\n");
        try {
            open_columns(file.Path());
            ADD_FAILURE() << "it opened";
        } catch (const ReadError& error) {
            EXPECT_EQ(error.what(), "line " + std::to_string(lines) + ": " + c.reason);
        }
    }
    const TemporaryFile open_quote(good + "1,\"a,2\n3,b,4\n");
    EXPECT_THROW(open_columns(open_quote.Path()), ReadError);
    const TemporaryFile extras("1,a,2,\n1,a,3, \n");
    EXPECT_EQ(open_columns(extras.Path())->Blocks().Rows(), 2U);
}

}  // namespace
