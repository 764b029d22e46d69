// The short cut through rows that are nothing but cells and separators.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "engine/formats/text_dialect.h"

namespace zol::engine {

/// Rows of one width, none of them quoted, commented or empty, each with a row end: what
/// most tables consist of. A RowReader reads the same rows, only with more care.
class PlainRows {
public:
    /// Takes a text, shorter than 4 GiB, apart; false when it holds anything else. The text
    /// outlives the use of its cells.
    bool Read(std::string_view text, const TextDialect& dialect, std::size_t columns);

    std::size_t Count() const { return count_; }
    /// `column` is below the count of columns, `row` below Count.
    TextCell CellAt(std::size_t row, std::size_t column) const {
        const std::size_t place = row * columns_ + column;
        const char* const end = text_ + ends_[place];
        const bool before_return = column + 1 == columns_ && end != text_ && end[-1] == '\r';
        const char* const begin = place == 0 ? text_ : text_ + ends_[place - 1] + 1;
        return {begin, before_return && begin != end ? end - 1 : end, false};
    }
    /// Where a row begins, from the start of the text.
    std::size_t RowBegin(std::size_t row) const {
        return row == 0 ? 0 : ends_[row * columns_ - 1] + std::size_t{1};
    }

private:
    const char* text_ = nullptr;
    std::size_t columns_ = 0;
    std::size_t count_ = 0;
    // The separator or row end behind each cell.
    std::vector<std::uint32_t> ends_;
};

}  // namespace zol::engine
