#include "engine/tri/value_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <limits>

namespace zol::engine::tri {

namespace {

/// The digits of a field; -1 when anything else stands in it.
int field(std::string_view text, std::size_t at, std::size_t digits) {
    int value = 0;
    for (const char c : text.substr(at, digits)) {
        if (c < '0' || c > '9') return -1;
        value = value * 10 + (c - '0');
    }
    return value;
}

/// The fields have the digits of a date at most: more would not fit the calendar's types.
bool is_day(int year, int month, int day) {
    if (year < 1 || month < 1 || day < 1) return false;
    return std::chrono::year_month_day(std::chrono::year(year),
                                       std::chrono::month(static_cast<unsigned>(month)),
                                       std::chrono::day(static_cast<unsigned>(day)))
        .ok();
}

}  // namespace

std::string fixed_text(double value, int decimals) {
    if (std::isnan(value)) return "nan";
    // The greatest double has 309 digits.
    constexpr int kMostDecimals = 340;
    std::array<char, std::numeric_limits<double>::max_exponent10 + kMostDecimals + 8> buffer;
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed,
                      std::clamp(decimals, 0, kMostDecimals));
    std::string text(buffer.data(), end.ptr);
    if (text.find('.') != text.npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.ends_with('.')) text.pop_back();
    }
    return text == "-0" ? "0" : text;
}

DateOrder date_order(std::string_view text) {
    if (text.size() != 10) return DateOrder::None;
    if (text[4] == '/' && text[7] == '/') {
        return is_day(field(text, 0, 4), field(text, 5, 2), field(text, 8, 2))
                   ? DateOrder::YearFirst
                   : DateOrder::None;
    }
    if (text[2] != '/' || text[5] != '/') return DateOrder::None;
    const int first = field(text, 0, 2);
    const int second = field(text, 3, 2);
    const int year = field(text, 6, 4);
    const bool day_first = is_day(year, second, first);
    const bool month_first = is_day(year, first, second);
    if (day_first && month_first) return DateOrder::DayOrMonthFirst;
    if (day_first) return DateOrder::DayFirst;
    return month_first ? DateOrder::MonthFirst : DateOrder::None;
}

}  // namespace zol::engine::tri
