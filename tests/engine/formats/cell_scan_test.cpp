// Cells found and marked 64 bytes at a time, against one byte at a time: the same with
// the instructions of every processor.
#include "engine/formats/cell_scan.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using zol::engine::CellScan;
using zol::engine::CellSyntax;
using zol::engine::has_instructions;
using zol::engine::Instructions;

constexpr Instructions kAll[] = {Instructions::Any, Instructions::Sse2, Instructions::Avx2};

enum class CellMark : unsigned { Whole, Fraction, Other };

struct Cell {
    std::uint32_t end = 0;
    CellMark mark = CellMark::Other;

    bool operator==(const Cell&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Cell& cell) {
    return out << cell.end << ':' << static_cast<unsigned>(cell.mark);
}

CellMark mark_of(std::string_view cell, char point, bool before_row_end) {
    const std::size_t length = cell.size();
    if (before_row_end && !cell.empty() && cell.back() == '\r') {
        cell.remove_suffix(1);
    }
    if (!cell.empty() && cell.front() == '-') {
        cell.remove_prefix(1);
    }
    std::size_t digits = 0;
    std::size_t points = 0;
    for (const char c : cell) {
        digits += c >= '0' && c <= '9' ? 1 : 0;
        points += c == point ? 1 : 0;
    }
    const bool has_last_digit = !cell.empty() && cell.back() != point;
    if (digits == 0 || digits + points != cell.size() || points > 1 || !has_last_digit) {
        return CellMark::Other;
    }
    // A '\r' counts as a character.
    return points == 1 ? CellMark::Fraction : length <= 9 ? CellMark::Whole : CellMark::Other;
}

std::vector<Cell> plain_scan(std::string_view text, const CellSyntax& syntax) {
    std::vector<Cell> cells;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool row_end = text[i] == syntax.row_end;
        if (row_end || text[i] == syntax.delimiter) {
            cells.push_back({static_cast<std::uint32_t>(i),
                             mark_of(text.substr(begin, i - begin), syntax.point, row_end)});
            begin = i + 1;
        }
    }
    return cells;
}

std::vector<Cell> cells_of(const CellScan& scan) {
    std::vector<Cell> cells;
    for (std::size_t i = 0; i < scan.cells; ++i) {
        const bool other = scan.others.At(i);
        const bool fraction = scan.fractions.At(i);
        EXPECT_FALSE(other && fraction);
        EXPECT_EQ((scan.others.From(i) & 1) != 0, other);
        cells.push_back({scan.ends[i], other      ? CellMark::Other
                                       : fraction ? CellMark::Fraction
                                                  : CellMark::Whole});
    }
    return cells;
}

void expect_plain_cells(const std::string& text, const CellSyntax& syntax) {
    SCOPED_TRACE(text);
    const std::vector<Cell> expected = plain_scan(text, syntax);
    const auto rows =
        static_cast<std::size_t>(std::count(text.begin(), text.end(), syntax.row_end));
    for (const Instructions instructions : kAll) {
        if (!has_instructions(instructions)) {
            continue;
        }
        SCOPED_TRACE(static_cast<int>(instructions));
        // Reused from text to text, as its users do.
        static CellScan marked;
        static CellScan bare;
        scan_and_mark_cells(text, syntax, marked, instructions);
        ASSERT_EQ(cells_of(marked), expected);
        EXPECT_EQ(marked.row_ends, rows);
        scan_cells(text, syntax, bare, instructions);
        ASSERT_EQ(bare.cells, expected.size());
        for (std::size_t i = 0; i < bare.cells; ++i) {
            ASSERT_EQ(bare.ends[i], expected[i].end);
        }
        EXPECT_EQ(bare.row_ends, rows);
    }
}

TEST(CellScan, TellsNumbersFromTheRest) {
    const std::string cells[] = {"0",
                                 "7000005",
                                 "123456789",
                                 "1234567890",
                                 "-12345678",
                                 "-123456789",
                                 "-1",
                                 "-",
                                 "--1",
                                 "1-",
                                 "+1",
                                 "1.5",
                                 ".5",
                                 "5.",
                                 ".",
                                 "-.",
                                 "-.5",
                                 "1..5",
                                 "1.5.2",
                                 "1e5",
                                 "1 ",
                                 " 1",
                                 "",
                                 "\r",
                                 "1\r",
                                 "1.5\r",
                                 "1\r2",
                                 "\r1",
                                 "a",
                                 "1.5a",
                                 "1.123456789012345678901234567890",
                                 "\xC3\xA9",
                                 "5.\r",
                                 std::string(64, '1'),
                                 std::string(130, '1') + ".5",
                                 std::string(200, '.')};
    for (const std::string& cell : cells) {
        // At every place of a step, in the middle of a row and at its end.
        for (std::size_t offset = 0; offset < 70; ++offset) {
            const std::string before = std::string(offset, 'x') + ",";
            expect_plain_cells(before + cell + ",2\n" + cell + "\n", {',', '\n', '.'});
        }
    }
}

TEST(CellScan, AgreesWithAPlainScanOfRandomTexts) {
    std::mt19937 random(7);
    const CellSyntax syntaxes[] = {
        {',', '\n', '.'}, {';', '\n', ','}, {'\t', '\r', '.'}, {'-', '\n', '.'}, {'5', '\n', '.'}};
    // Mostly what numbers are made of.
    const std::string letters = "0123456789012345678901234567890123456789..--,,;;\t\n\n\r\ra +\xE9";
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        const std::size_t length = random() % 300;
        while (text.size() < length) {
            text += letters[random() % letters.size()];
        }
        expect_plain_cells(text, syntaxes[random() % std::size(syntaxes)]);
    }
}

TEST(CellScan, FindsTextsOfNothingButSeparators) {
    for (std::size_t length = 0; length < 400; ++length) {
        expect_plain_cells(std::string(length, ','), {});
        expect_plain_cells(std::string(length, '1'), {});
    }
}

}  // namespace
