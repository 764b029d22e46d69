// Rows and cells of delimited text, held against a reader that goes byte by byte.
#include "engine/formats/row_reader.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "engine/formats/plain_rows.h"

namespace {

using zol::engine::cell_text;
using zol::engine::CellList;
using zol::engine::PlainRows;
using zol::engine::RowReader;
using zol::engine::TextDialect;

TextDialect dialect(char delimiter) {
    TextDialect made;
    made.delimiter = delimiter;
    return made;
}

// Rows as text: cells between bars, a row a line, and how the reading ended.
std::string rows_of(const std::string& text, const TextDialect& how) {
    RowReader reader(text, how);
    CellList cells;
    std::string seen;
    for (;;) {
        switch (reader.Next(cells)) {
            case RowReader::Outcome::Row:
                for (const auto& cell : cells) {
                    seen += "|" + cell_text(cell, how);
                }
                seen += "\n";
                break;
            case RowReader::Outcome::End:
                return seen;
            case RowReader::Outcome::OpenQuote:
                return seen + "open quote";
            case RowReader::Outcome::TextBehindQuote:
                return seen + "text behind quote";
        }
    }
}

TEST(RowReader, TakesRowsApart) {
    struct Case {
        const char* name;
        std::string text;
        TextDialect dialect;
        const char* expected;
    };
    TextDialect old_mac = dialect(',');
    old_mac.row_end = '\r';
    TextDialect commented = dialect(',');
    commented.comment = '#';
    TextDialect escaped = dialect(',');
    escaped.escape = '\\';
    escaped.double_quote = false;
    TextDialect unquoted = dialect(',');
    unquoted.quote = 0;
    const Case cases[] = {
        {"plain", "a,b\nc,d\n", dialect(','), "|a|b\n|c|d\n"},
        {"no last row end", "a,b\nc,d", dialect(','), "|a|b\n|c|d\n"},
        {"windows", "a,b\r\nc,\r\n", dialect(','), "|a|b\n|c|\n"},
        {"old mac", "a,b\rc,d\r", old_mac, "|a|b\n|c|d\n"},
        {"blank rows", "\n  \na,b\n\r\n\n", dialect(','), "|a|b\n"},
        {"empty cells", "a,\n,,b\n", dialect(','), "|a|\n|||b\n"},
        {"rows of separators and an end-of-file mark", "a,b\n,\n , \n\x1a", dialect(','), "|a|b\n"},
        {"an empty text is a text", "\"\",\n", dialect(','), "||\n"},
        {"blanks around", " a , b c \n", dialect(','), "|a|b c\n"},
        {"quoted", "\"a,b\",\"c\nd\",\"e\"\"f\"\n", dialect(','), "|a,b|c\nd|e\"f\n"},
        {"blanks in quotes stay", "\" a \",b\n", dialect(','), "| a |b\n"},
        {"blank before quote", "1, \"a,b\" ,2\n", dialect(','), "|1|a,b|2\n"},
        {"quote inside a cell is a character", "5\" pipe,b\nc,d\n", dialect(','),
         "|5\" pipe|b\n|c|d\n"},
        {"empty quotes", "\"\",b\n", dialect(','), "||b\n"},
        {"open quote", "a,b\n\"c,d\n", dialect(','), "|a|b\nopen quote"},
        {"text behind quote", "\"a\"b,c\n", dialect(','), "text behind quote"},
        {"escaped quote", "\"a\\\"b\",\"c\\\\\"\n", escaped, "|a\"b|c\\\n"},
        {"comments", "#x\na,b\n#\"\nc,d\n", commented, "|a|b\n|c|d\n"},
        {"no quotes", "\"a,b\n", unquoted, "|\"a|b\n"},
        {"runs of blanks", "  1 \t 2\n3 4  \r\n", dialect(' '), "|1|2\n|3|4\n"},
        {"quoted among blanks", "1 \"a \"\"b\"\"\" 2\n", dialect(' '), "|1|a \"b\"|2\n"},
        {"tabs", "a\t\tb c\n", dialect('\t'), "|a||b c\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(rows_of(c.text, c.dialect), c.expected);
    }
}

// Byte by byte, as plainly as it can be said.
std::string plain_rows_of(const std::string& text) {
    std::string seen;
    std::string row;
    bool has_quotes = false;
    bool quoted = false;
    bool at_start = true;
    const auto end_row = [&] {
        if (has_quotes || row.find_first_not_of('|') != row.npos) {
            seen += row + "\n";
        }
        row = "|";
        has_quotes = false;
    };
    row = "|";
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quoted) {
            const bool doubled = c == '"' && i + 1 < text.size() && text[i + 1] == '"';
            quoted = c != '"' || doubled;
            i += doubled ? 1 : 0;
            row += quoted ? std::string(1, c) : "";
        } else if (c == '"' && at_start) {
            quoted = true;
            has_quotes = true;
        } else if (c == ',') {
            row += "|";
        } else if (c == '\n') {
            end_row();
        } else {
            row += c;
        }
        at_start = !quoted && (c == ',' || c == '\n');
    }
    end_row();
    return seen;
}

TEST(RowReader, AgreesWithAPlainReaderOnRandomTables) {
    std::mt19937 random(5);
    const std::vector<std::string> cells = {
        "",         "1",     "\"\"",      "\"a,b\"",           "12.5", "\"x\ny\"", "\"q\"\"\"",
        "5\" pipe", "words", "\"\n\n,\"", std::string(70, 'z')};
    for (int table = 0; table < 500; ++table) {
        std::string text;
        const std::size_t rows = random() % 30;
        for (std::size_t row = 0; row < rows; ++row) {
            const std::size_t columns = 1 + random() % 6;
            for (std::size_t i = 0; i < columns; ++i) {
                text += (i == 0 ? "" : ",") + cells[random() % cells.size()];
            }
            text += "\n";
        }
        ASSERT_EQ(rows_of(text, dialect(',')), plain_rows_of(text)) << text;
    }
}

// What PlainRows takes, a RowReader takes the same way.
TEST(PlainRows, AgreeWithTheReaderOrStandBack) {
    struct Case {
        const char* name;
        std::string text;
        bool is_plain;
    };
    const Case cases[] = {
        {"plain", "a,b\nc,d\n", true},
        {"windows", "a,b\r\nc,\r\n", true},
        {"an empty last cell", "a,\nc,d\n", true},
        {"no last row end", "a,b\nc,d", false},
        {"quotes", "a,b\n\"c\",d\n", false},
        {"an empty row", "a,b\n\nc,d\n", false},
        {"rows of separators", "a,b\n,\nc,d\n", false},
        {"a cell more and one less", "a,b,c\nd\n", false},
        {"a row less", "a,b\nc\n", false},
        {"nothing", "", false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        PlainRows rows;
        ASSERT_EQ(rows.Read(c.text, dialect(','), 2), c.is_plain);
        if (!c.is_plain) {
            continue;
        }
        std::string seen;
        for (std::size_t row = 0; row < rows.Count(); ++row) {
            seen += "|" + cell_text(rows.CellAt(row, 0), dialect(',')) + "|" +
                    cell_text(rows.CellAt(row, 1), dialect(',')) + "\n";
        }
        EXPECT_EQ(seen, rows_of(c.text, dialect(',')));
    }
}

}  // namespace
