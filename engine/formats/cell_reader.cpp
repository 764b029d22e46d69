#include "engine/formats/cell_reader.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace zol::engine {

namespace {

bool equal_but_for_case(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        const auto lower = [](char c) {
            return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        };
        return lower(x) == lower(y);
    });
}

bool read_boolean(std::string_view text, Decimal& number) {
    constexpr std::array<std::string_view, 3> kTrue = {"true", "yes", "1"};
    constexpr std::array<std::string_view, 3> kFalse = {"false", "no", "0"};
    const auto is = [&](std::string_view word) { return equal_but_for_case(text, word); };
    const bool yes = std::any_of(kTrue.begin(), kTrue.end(), is);
    if (!yes && std::none_of(kFalse.begin(), kFalse.end(), is)) {
        return false;
    }
    number = {yes ? 1 : 0, 0, true};
    return true;
}

// Takes away what surrounds the digits where the format allows it.
std::string plain_number(std::string_view text, const CellFormat& format) {
    if (!format.bare_number) {
        constexpr std::string_view kNumber = "+-0123456789.,";
        const std::size_t first = text.find_first_of(kNumber);
        const std::size_t last = text.find_last_of(kNumber);
        text = first == text.npos ? std::string_view() : text.substr(first, last - first + 1);
    }
    std::string plain(text);
    if (format.group_mark != 0) {
        std::erase(plain, format.group_mark);
    }
    return plain;
}

bool read_number(std::string_view text, const CellFormat& format, Decimal& number) {
    if (format.kind == CellFormat::Kind::Boolean) {
        return read_boolean(text, number);
    }
    if (format.bare_number && format.group_mark == 0) {
        return read_decimal(text, format.decimal_point, number);
    }
    return read_decimal(plain_number(text, format), format.decimal_point, number);
}

}  // namespace

MissingTexts MissingTexts::Usual() {
    return MissingTexts({"", "NaN", "nan", "NAN", "NA", "null", "NULL"});
}

MissingTexts::MissingTexts(const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        if (text.empty()) {
            empty_ = true;
            continue;
        }
        texts_.push_back(text);
        first_.set(static_cast<unsigned char>(text.front()));
        Decimal number;
        if (read_decimal(text, '.', number)) {
            numbers_.push_back(number.Value());
        }
    }
}

bool MissingTexts::IsListed(std::string_view text) const {
    return std::find(texts_.begin(), texts_.end(), text) != texts_.end();
}

bool MissingTexts::IsListedNumber(const Decimal& number) const {
    return std::find(numbers_.begin(), numbers_.end(), number.Value()) != numbers_.end();
}

CellContent read_any_cell(const TextCell& cell, const CellFormat& format, Decimal& number) {
    const std::string_view text = trimmed(cell.Raw());
    if (format.missing.HasText(text)) {
        return CellContent::Missing;
    }
    if (format.kind == CellFormat::Kind::Text) {
        return CellContent::Text;
    }
    if (read_number(text, format, number)) {
        return format.missing.HasNumber(number) ? CellContent::Missing : CellContent::Number;
    }
    // An empty cell and NaN are no numbers, whatever else is listed as missing.
    const bool no_number = text.empty() || equal_but_for_case(text, "nan");
    return no_number ? CellContent::Missing : CellContent::Text;
}

bool whole_of(const Decimal& number, std::int64_t& whole) {
    if (number.exact && number.scale == 0) {
        whole = number.digits;
        return true;
    }
    constexpr double kTwo63 = 9223372036854775808.0;
    const double value = number.Value();
    if (!(value >= -kTwo63 && value < kTwo63) || value != std::trunc(value)) {
        return false;
    }
    whole = static_cast<std::int64_t>(value);
    return true;
}

}  // namespace zol::engine
