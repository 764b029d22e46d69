// What a cell of a delimited table says: nothing, a number or a text.
#pragma once

#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/formats/decimal.h"
#include "engine/formats/short_decimal.h"
#include "engine/formats/text_dialect.h"

namespace zol::engine {

/// The texts that stand for "no value". One that is a number also stands for every
/// other way to write that number: -99 and -99.0.
class MissingTexts {
public:
    /// What every reader of tables takes for missing: an empty cell, NaN, NA and null.
    static MissingTexts Usual();
    explicit MissingTexts(const std::vector<std::string>& texts);

    bool HasText(std::string_view text) const {
        return text.empty()
                   ? empty_
                   : first_.test(static_cast<unsigned char>(text.front())) && IsListed(text);
    }
    bool HasNumbers() const { return !numbers_.empty(); }
    bool HasNumber(const Decimal& number) const { return HasNumbers() && IsListedNumber(number); }

private:
    bool IsListed(std::string_view text) const;
    bool IsListedNumber(const Decimal& number) const;

    std::vector<std::string> texts_;
    std::vector<double> numbers_;
    // First characters of texts_: most cells are told from all of them by one look.
    std::bitset<256> first_;
    bool empty_ = false;
};

/// How the cells of one column are to be read.
struct CellFormat {
    enum class Kind {
        /// Number or text, whichever the cells turn out to be.
        Guess,
        Number,
        /// A number without a fractional part, from least to greatest.
        Whole,
        /// Words for true and false, read as 1 and 0.
        Boolean,
        Text
    };

    std::string name;
    Kind kind = Kind::Guess;
    char decimal_point = '.';
    /// Parts groups of digits, 0 for none.
    char group_mark = 0;
    /// False when other characters may stand before and behind the digits: "$5", "7 %".
    bool bare_number = true;
    MissingTexts missing = MissingTexts::Usual();
    std::int64_t least = 0;
    std::int64_t greatest = 0;

    /// Numbers of its cells are digits with a decimal point, and nothing around them.
    bool HasUsualNumbers() const {
        return bare_number && group_mark == 0 && kind != Kind::Text && kind != Kind::Boolean;
    }
};

enum class CellContent { Missing, Number, Text };

/// Reads one cell; fills `number` when it is one. A cell of a Text column is Text or Missing.
CellContent read_any_cell(const TextCell& cell, const CellFormat& format, Decimal& number);

/// The same for a cell of a TextBlocks::Text, with a short cut for usual numbers.
inline CellContent read_cell(const TextCell& cell, const CellFormat& format, Decimal& number) {
    const bool is_usual = format.HasUsualNumbers() &&
                          read_short_decimal(cell.begin, cell.end, format.decimal_point, number) &&
                          !format.missing.HasNumber(number);
    return is_usual ? CellContent::Number : read_any_cell(cell, format, number);
}

/// The whole number that a decimal is; false when it has a fractional part or is
/// beyond 64 bits.
bool whole_of(const Decimal& number, std::int64_t& whole);

}  // namespace zol::engine
