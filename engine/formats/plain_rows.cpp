#include "engine/formats/plain_rows.h"

namespace zol::engine {

bool PlainRows::Read(std::string_view text, const TextDialect& dialect, std::size_t columns) {
    if (!MayBePlain(text, dialect)) {
        return false;
    }
    scan_cells(text, {dialect.delimiter, dialect.row_end}, scan_);
    return Settle(text, dialect, columns);
}

bool PlainRows::ReadMarked(std::string_view text, const TextDialect& dialect, std::size_t columns,
                           char point) {
    if (!MayBePlain(text, dialect)) {
        return false;
    }
    scan_and_mark_cells(text, {dialect.delimiter, dialect.row_end, point}, scan_);
    return Settle(text, dialect, columns);
}

bool PlainRows::MayBePlain(std::string_view text, const TextDialect& dialect) {
    const bool ends_with_row = !text.empty() && text.back() == dialect.row_end;
    const bool has_quotes = dialect.quote != 0 && text.find(dialect.quote) != text.npos;
    return !dialect.ByBlanks() && dialect.comment == 0 && !has_quotes && ends_with_row;
}

bool PlainRows::Settle(std::string_view text, const TextDialect& dialect, std::size_t columns) {
    text_ = text.data();
    columns_ = columns;
    count_ = scan_.row_ends;
    if (scan_.cells != count_ * columns) {
        return false;
    }
    // As many row ends as rows, each behind the last cell of one: none is left to stand
    // elsewhere.
    std::size_t begin = 0;
    for (std::size_t last = columns - 1; last < scan_.cells; last += columns) {
        // A row whose first cell is empty may be empty as a whole, and no row at all.
        const bool is_plain = text[begin] > ' ' && text[begin] != dialect.delimiter &&
                              text[scan_.ends[last]] == dialect.row_end;
        if (!is_plain) {
            return false;
        }
        begin = scan_.ends[last] + std::size_t{1};
    }
    return true;
}

}  // namespace zol::engine
