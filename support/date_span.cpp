// Lengths of time.
#include "support/date.h"
#include "support/date_errors.h"

namespace {

constexpr std::int64_t kSecondsOfDay = 86400;

/// Modulo 2 to the 32nd.
std::int32_t wrapped(std::int64_t value) {
    return static_cast<std::int32_t>(value);
}

/// Moves full units of `limit` from one field to the next; what is less stays.
void carry(std::int32_t& from, std::int32_t limit, std::int32_t& to) {
    to = wrapped(std::int64_t{to} + from / limit);
    from %= limit;
}

/// Hours, minutes and seconds of less than a day.
void split(kv_span& span, std::int64_t seconds) {
    span.hours = wrapped(seconds / 3600);
    span.minutes = wrapped(seconds / 60 % 60);
    span.seconds = wrapped(seconds % 60);
}

/// A date, valid, as a span from the begin of a year that is not later.
kv_span since(std::int32_t year, const kv_date& date) {
    std::int32_t seconds = 0;
    kv_date_seconds(date, &seconds, nullptr);
    kv_span span{};
    kv_span_from_seconds(&span, seconds);
    if (date.year > year) {
        span.days = wrapped(span.days + (std::int64_t{date.year} - year) * 365 +
                            kv_leap_count(year, date.year - 1));
    }
    return span;
}

}  // namespace

void kv_span_from_seconds(kv_span* span, std::int32_t seconds) {
    span->days = wrapped(seconds / kSecondsOfDay);
    split(*span, seconds % kSecondsOfDay);
}

void kv_span_subtract(kv_span* left, const kv_span& right) {
    const auto subtract = [](std::int32_t& from, std::int32_t what) {
        from = wrapped(std::int64_t{from} - what);
    };
    subtract(left->days, right.days);
    subtract(left->hours, right.hours);
    subtract(left->minutes, right.minutes);
    subtract(left->seconds, right.seconds);
}

void kv_span_normalise(kv_span* span) {
    carry(span->seconds, 60, span->minutes);
    carry(span->minutes, 60, span->hours);
    carry(span->hours, 24, span->days);
    std::int64_t rest = (std::int64_t{span->hours} * 60 + span->minutes) * 60 + span->seconds;
    if (span->days < 0 && rest > 0) {
        rest -= kSecondsOfDay;
        ++span->days;
    } else if (span->days > 0 && rest < 0) {
        rest += kSecondsOfDay;
        --span->days;
    }
    split(*span, rest);
}

int kv_date_difference(const kv_date& first, const kv_date& second, kv_span* span, char* error) {
    if (!zol::support::check_dates(first, second, error)) {
        return 0;
    }
    const std::int32_t year = first.year < second.year ? first.year : second.year;
    kv_span difference = since(year, second);
    kv_span_subtract(&difference, since(year, first));
    kv_span_normalise(&difference);
    *span = difference;
    return 1;
}
