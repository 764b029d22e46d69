// The calendar: years, months, and what a valid date is.
#include <algorithm>
#include <array>
#include <string_view>
#include <tuple>

#include "support/date.h"
#include "support/date_errors.h"

namespace {

constexpr std::array<int, 12> kMonthDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
constexpr int kFebruary = 2;

/// 0 to `limit`, and not below, as one comparison of bits.
bool is_up_to(std::int32_t value, std::uint32_t limit) {
    return static_cast<std::uint32_t>(value) <= limit;
}

/// Leap years from 0, which is one, to `year`.
std::int32_t leap_years_to(std::int32_t year) {
    return year < 0 ? 0 : year / 4 - year / 100 + year / 400 + 1;
}

auto fields(const kv_date& date) {
    return std::tie(date.year, date.month, date.day, date.hour, date.minute, date.second);
}

}  // namespace

namespace zol::support {

bool check_date(const kv_date& date, std::string_view message, char* error) {
    const bool valid = kv_date_valid(date) != 0;
    if (!valid) {
        *std::copy(message.begin(), message.end(), error) = '\0';
    }
    return valid;
}

bool check_dates(const kv_date& first, const kv_date& second, char* error) {
    return check_date(first, kFirstDateInvalid, error) &&
           check_date(second, kSecondDateInvalid, error);
}

}  // namespace zol::support

int kv_is_leap(std::int32_t year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0) ? 1 : 0;
}

int kv_month_days(std::int32_t month, std::int32_t year) {
    if (month < 1 || month > 12) {
        return 0;
    }
    return month == kFebruary && kv_is_leap(year) != 0
               ? 29
               : kMonthDays[static_cast<std::size_t>(month) - 1];
}

std::int32_t kv_leap_count(std::int32_t first, std::int32_t last) {
    const std::int32_t from = std::max(first, 0);
    return from > last ? 0 : leap_years_to(last) - leap_years_to(from - 1);
}

int kv_date_valid(const kv_date& date) {
    const bool valid =
        date.year >= 0 && date.day >= 1 && date.day <= kv_month_days(date.month, date.year) &&
        is_up_to(date.hour, 23) && is_up_to(date.minute, 59) && is_up_to(date.second, 59);
    return valid ? 1 : 0;
}

int kv_date_compare(const kv_date& first, const kv_date& second, std::int32_t* order, char* error) {
    if (!zol::support::check_dates(first, second, error)) {
        return 0;
    }
    *order = fields(first) < fields(second) ? -1 : fields(first) > fields(second) ? 1 : 0;
    return 1;
}

int kv_date_seconds(const kv_date& date, std::int32_t* seconds, char* error) {
    *seconds = 0;
    if (!zol::support::check_date(date, zol::support::kFirstDateInvalid, error)) {
        return 0;
    }
    std::int32_t days = date.day - 1;
    for (std::int32_t month = 1; month < date.month; ++month) {
        days += kv_month_days(month, date.year);
    }
    *seconds = ((days * 24 + date.hour) * 60 + date.minute) * 60 + date.second;
    return 1;
}
