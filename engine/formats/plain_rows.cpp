#include "engine/formats/plain_rows.h"

#include "engine/formats/special_bytes.h"

namespace zol::engine {

bool PlainRows::Read(std::string_view text, const TextDialect& dialect, std::size_t columns) {
    const bool has_quotes = dialect.quote != 0 && text.find(dialect.quote) != text.npos;
    const bool ends_with_row = !text.empty() && text.back() == dialect.row_end;
    if (dialect.ByBlanks() || dialect.comment != 0 || has_quotes || !ends_with_row) {
        return false;
    }
    const std::size_t found =
        find_special_bytes(text, {dialect.row_end, dialect.delimiter, dialect.row_end}, ends_);
    if (found % columns != 0) {
        return false;
    }
    text_ = text.data();
    columns_ = columns;
    count_ = found / columns;
    std::size_t begin = 0;
    for (std::size_t last = columns - 1; last < found; last += columns) {
        // A row whose first cell is empty may be empty as a whole, and no row at all.
        bool is_plain = text[begin] > ' ' && text[begin] != dialect.delimiter &&
                        text[ends_[last]] == dialect.row_end;
        for (std::size_t i = last + 1 - columns; i < last; ++i) {
            is_plain = is_plain && text[ends_[i]] == dialect.delimiter;
        }
        if (!is_plain) {
            return false;
        }
        begin = ends_[last] + std::size_t{1};
    }
    return true;
}

}  // namespace zol::engine
