#include "engine/formats/text_head.h"

#include <algorithm>
#include <array>
#include <span>

#include "engine/formats/decimal.h"
#include "engine/formats/geoeas.h"
#include "engine/formats/read_error.h"
#include "engine/formats/row_reader.h"

namespace zol::engine {

namespace {

constexpr std::size_t kSampleRows = 20;
// Rows that are looked at for decimal commas: whole numbers come first in many tables.
constexpr std::size_t kNumberRows = 1000;
// Lines of a title that may stand above the header.
constexpr std::size_t kMostTitles = 3;

struct Row {
    std::vector<std::string> cells;
    std::size_t end = 0;
};

// The first rows under a dialect; stops at what the dialect can't read.
std::vector<Row> sample_rows(std::string_view head, std::size_t begin, bool whole,
                             const TextDialect& dialect, std::size_t most) {
    std::vector<Row> rows;
    RowReader reader(head.substr(begin), dialect);
    CellList cells;
    while (rows.size() < most && reader.Next(cells) == RowReader::Outcome::Row &&
           (whole || reader.RowIsClosed())) {
        Row row;
        for (const TextCell& cell : cells) {
            row.cells.push_back(cell_text(cell, dialect));
        }
        row.end = begin + reader.RowEnd();
        rows.push_back(std::move(row));
    }
    return rows;
}

// Cells without an empty one that a separator at the end of the row leaves.
std::size_t width(const Row& row) {
    const bool trailing = row.cells.size() > 1 && row.cells.back().empty();
    return row.cells.size() - (trailing ? 1 : 0);
}

bool fits(const Row& row, std::size_t columns) {
    return row.cells.size() == columns ||
           (row.cells.size() == columns + 1 && row.cells.back().empty());
}

bool is_number(const std::string& text) {
    Decimal number;
    return read_decimal(text, '.', number) || read_decimal(text, ',', number);
}

// A header is told by a name; rows of data have numbers or nothing in every cell.
bool is_header(const Row& row) {
    return std::any_of(row.cells.begin(), row.cells.end(),
                       [](const std::string& cell) { return !cell.empty() && !is_number(cell); });
}

// True when the row at `header` and all behind it agree on a count of columns above 1.
bool is_table_from(const std::vector<Row>& rows, std::size_t header) {
    if (header >= rows.size() || width(rows[header]) < 2) {
        return false;
    }
    const std::size_t columns = width(rows[header]);
    return std::all_of(rows.begin() + static_cast<std::ptrdiff_t>(header) + 1, rows.end(),
                       [columns](const Row& row) { return fits(row, columns); });
}

// `rows` without the header.
char decimal_point_of(std::span<const Row> rows, char delimiter) {
    bool has_comma = false;
    for (const Row& row : rows) {
        for (const std::string& cell : row.cells) {
            Decimal number;
            if (read_decimal(cell, '.', number)) {
                if (cell.find('.') != cell.npos) {
                    return '.';
                }
            } else {
                has_comma = has_comma || read_decimal(cell, ',', number);
            }
        }
    }
    return has_comma && delimiter != ',' ? ',' : '.';
}

std::size_t skip_comments(std::string_view head, std::size_t begin, char row_end, char comment) {
    for (;;) {
        const std::size_t end = head.find(row_end, begin);
        const std::string_view line =
            trimmed(head.substr(begin, end == head.npos ? head.npos : end - begin));
        const bool passed_over =
            line.empty() || line.front() == comment ||
            std::string_view("#!%*").find(line.front()) != std::string_view::npos;
        if (!passed_over || end == head.npos) {
            return begin;
        }
        begin = end + 1;
    }
}

// The cells of the last comment line: some writers put the header there.
Row row_in_comment(std::string_view comments, const TextDialect& dialect) {
    while (!comments.empty() && (is_blank(comments.back()) || comments.back() == dialect.row_end)) {
        comments.remove_suffix(1);
    }
    const std::size_t line = comments.rfind(dialect.row_end);
    std::string_view last = line == comments.npos ? comments : comments.substr(line + 1);
    const std::size_t marks = last.find_first_not_of("#!%* \t");
    last = marks == last.npos ? std::string_view() : last.substr(marks);
    const std::vector<Row> rows = sample_rows(last, 0, true, dialect, 1);
    return rows.empty() ? Row{} : rows.front();
}

TextDialect dialect_of(const TextHints& hints, char row_end) {
    TextDialect dialect;
    dialect.row_end = row_end;
    dialect.quote = hints.quote.value_or('"');
    dialect.double_quote = hints.double_quote;
    dialect.escape = hints.escape;
    dialect.comment = hints.comment;
    return dialect;
}

// The separator under which the rows make a table, and the place of its header.
struct Choice {
    char delimiter;
    std::size_t header;
};

bool has_known_names(const Row& row, const TextHints& hints) {
    constexpr std::ptrdiff_t kEnough = 2;
    return hints.is_known_name &&
           std::count_if(row.cells.begin(), row.cells.end(), hints.is_known_name) >= kEnough;
}

std::optional<Choice> choose_delimiter(std::string_view head, std::size_t begin, bool whole,
                                       TextDialect dialect, const TextHints& hints) {
    constexpr std::array<char, 5> kDelimiters = {'\t', ';', ',', '|', ' '};
    std::array<std::vector<Row>, kDelimiters.size()> rows;
    for (std::size_t i = 0; i < kDelimiters.size(); ++i) {
        dialect.delimiter = kDelimiters[i];
        rows[i] = sample_rows(head, begin, whole, dialect, kSampleRows + kMostTitles);
        // Names that are looked for leave no doubt, even where rows disagree: the survey
        // of the table will name the line.
        if (!rows[i].empty() && has_known_names(rows[i].front(), hints)) {
            return Choice{kDelimiters[i], 0};
        }
    }
    for (std::size_t header = 0; header <= kMostTitles; ++header) {
        for (std::size_t i = 0; i < kDelimiters.size(); ++i) {
            // Below a title only names followed by rows are a header; else the last row of
            // a ragged table would be one.
            const bool is_below_title = header + 1 < rows[i].size() && is_header(rows[i][header]);
            if ((header == 0 || is_below_title) && is_table_from(rows[i], header)) {
                return Choice{kDelimiters[i], header};
            }
        }
    }
    for (std::size_t i = 0; i < kDelimiters.size(); ++i) {
        if (!rows[i].empty() && width(rows[i].front()) > 1) {
            return Choice{kDelimiters[i], 0};
        }
    }
    return std::nullopt;
}

// The cells of rows without a header, less one that a separator at each end leaves.
std::size_t width_of_all(const std::vector<Row>& rows) {
    const bool trailing = std::all_of(rows.begin(), rows.end(), [&](const Row& row) {
        return row.cells.size() > 1 && row.cells.back().empty();
    });
    return rows.front().cells.size() - (trailing ? 1 : 0);
}

void refuse_what_is_no_text(std::string_view head) {
    if (head.starts_with("\xFF\xFE") || head.starts_with("\xFE\xFF")) {
        throw ReadError("the text is UTF-16; save it as UTF-8");
    }
    if (const std::size_t nul = head.find('\0'); nul != head.npos) {
        throw ReadError("a NUL byte stands at byte " + std::to_string(nul) +
                        "; this is no text table (or UTF-16: save it as UTF-8)");
    }
}

}  // namespace

TextHead read_text_head(std::string_view head, bool whole, const TextHints& hints) {
    refuse_what_is_no_text(head);
    const std::size_t text_begin = head.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    const char row_end = guess_row_end(head);
    if (!hints.delimiter && !hints.header_rows) {
        if (auto geoeas = read_geoeas_head(head, text_begin, row_end)) {
            return *geoeas;
        }
    }
    TextHead found;
    found.dialect = dialect_of(hints, row_end);
    const std::size_t begin = skip_comments(head, text_begin, row_end, hints.comment);
    if (trimmed(head.substr(begin)).empty()) {
        throw ReadError(head.empty() ? "the file is empty" : "the file holds no rows");
    }
    std::size_t header = 0;
    if (hints.delimiter) {
        found.dialect.delimiter = *hints.delimiter;
    } else if (const auto choice = choose_delimiter(head, begin, whole, found.dialect, hints)) {
        found.dialect.delimiter = choice->delimiter;
        header = choice->header;
    } else if (!hints.header_rows && !hints.one_column_will_do) {
        throw ReadError(
            "no table of several columns: neither tab, semicolon, comma, bar nor "
            "blanks part the first line");
    }
    // Without any separator in it the whole line is the one cell of its row.

    std::size_t header_end = header + 1;
    bool has_header = true;
    if (hints.header_rows) {
        const std::vector<std::int64_t>& stated = *hints.header_rows;
        has_header = !stated.empty();
        header = has_header ? static_cast<std::size_t>(stated.front() - 1) : 0;
        header_end = has_header
                         ? static_cast<std::size_t>(*std::max_element(stated.begin(), stated.end()))
                         : 0;
    }
    const std::vector<Row> rows =
        sample_rows(head, begin, whole, found.dialect, header_end + kNumberRows);
    if (rows.size() < std::max<std::size_t>(header_end, 1)) {
        throw ReadError("the header can't be read; is there a quote that is never closed?");
    }
    if (!hints.header_rows && !is_header(rows[header])) {
        has_header = false;
        header_end = header;
    }
    if (!has_header && !hints.header_rows) {
        const Row named =
            row_in_comment(head.substr(text_begin, begin - text_begin), found.dialect);
        if (named.cells.size() == width_of_all(rows) && is_header(named)) {
            found.names = named.cells;
        }
    }
    if (!found.names.empty()) {
        // Taken from the comment.
    } else if (has_header) {
        found.names.assign(
            rows[header].cells.begin(),
            rows[header].cells.begin() + static_cast<std::ptrdiff_t>(width(rows[header])));
    } else {
        found.names.assign(width_of_all(rows), std::string());
    }
    found.decimal_point =
        decimal_point_of(std::span(rows).subspan(header_end), found.dialect.delimiter);
    found.data_begin = header_end == 0 ? begin : rows[header_end - 1].end;
    return found;
}

}  // namespace zol::engine
