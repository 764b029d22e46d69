// Calendar arithmetic on broken-down dates, by the Gregorian rule for all years. No time
// zones: only the clock is read, in local time. Results don't depend on the locale.
// The arithmetic may run in several threads; what reads the clock or makes texts of a time,
// and the verbose flag, is for one thread at a time.
#pragma once

#include <cstdint>

/// A point in time. Valid: year not negative, month 1 to 12, day of that month, hour to 23,
/// minute and second to 59.
struct kv_date {
    std::int32_t year;
    std::int32_t month;
    std::int32_t day;
    std::int32_t hour;
    std::int32_t minute;
    std::int32_t second;
};

/// A length of time. In a normalised span all fields that aren't 0 have one sign, and all but
/// `days` stay below their next unit.
struct kv_span {
    std::int32_t days;
    std::int32_t hours;
    std::int32_t minutes;
    std::int32_t seconds;
};

/// Bytes that the error text of a date function needs.
constexpr int KV_ERROR_SIZE = 35;

/// The date and the time of now, local. All zero when the clock can't be told in four digits
/// of the year.
void kv_date_today(std::int32_t* year, std::int32_t* month, std::int32_t* day);
void kv_time_now(std::int32_t* hour, std::int32_t* minute, std::int32_t* second);

/// Seconds since the epoch of the C library as local date text, such as "09Jun1993", into 10
/// bytes, and as time text, "hh:mm:ss", into 9. Empty for a year outside 1000 to 9999.
void kv_date_text(std::int64_t time, char* text);
void kv_time_text(std::int64_t time, char* text);

/// The number of a month, "01" to "12", into 3 bytes, from the first three letters of its
/// English name in any case. "00" for any other text, and with the verbose flag on, a line
/// on the standard output.
void kv_date_month_number(const char* month, char* text);

/// The flag is on when the process starts.
void kv_set_verbose(bool verbose);

/// 28 to 31; 0 for a month outside 1 to 12.
int kv_month_days(std::int32_t month, std::int32_t year);

/// 1 for a leap year, else 0; negative years have the same rule.
int kv_is_leap(std::int32_t year);

/// How many leap years lie between the two years, both included; 0 when `first` is above
/// `last`. A negative first year counts as 0.
std::int32_t kv_leap_count(std::int32_t first, std::int32_t last);

/// 1 for a valid date, else 0.
int kv_date_valid(const kv_date& date);

// The three that follow answer 1, or 0 for a date that is not valid. Then `error`, of
// KV_ERROR_SIZE bytes at least, holds "First date structure is not valid" or "Second date
// structure is not valid"; on success it is left alone.

/// `order` becomes 1 when the first date is later, -1 when it is earlier, 0 when both are the
/// same; it stays as it is for a date that is not valid.
int kv_date_compare(const kv_date& first, const kv_date& second, std::int32_t* order, char* error);

/// `span` becomes the normalised length from the first date to the second, negative when the
/// second is earlier; it stays as it is for a date that is not valid. Days that 32 bits can't
/// hold, some 5.8 million years, wrap.
int kv_date_difference(const kv_date& first, const kv_date& second, kv_span* span, char* error);

/// `seconds` becomes the second within the year, from 0; it is 0 for a date that is not valid.
int kv_date_seconds(const kv_date& date, std::int32_t* seconds, char* error);

/// The normalised span of so many seconds.
void kv_span_from_seconds(kv_span* span, std::int32_t seconds);

/// Takes `right` from `left`, each field for itself: not normalised.
void kv_span_subtract(kv_span* left, const kv_span& right);

/// Carries from each field to the next and gives all of them one sign; the length stays.
void kv_span_normalise(kv_span* span);
