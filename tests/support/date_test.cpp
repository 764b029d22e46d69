// Calendar dates.
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "support/date.h"

namespace zol::testing {
namespace {

constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();

using Fields = std::array<std::int32_t, 4>;
using ErrorText = std::array<char, KV_ERROR_SIZE>;

Fields fields(const kv_span& span) {
    return {span.days, span.hours, span.minutes, span.seconds};
}

/// Days of the calendar by the standard library, seconds of the day by hand.
std::int64_t seconds_of(const kv_date& date) {
    using namespace std::chrono;
    const sys_days day = year{date.year} / date.month / date.day;
    return day.time_since_epoch().count() * std::int64_t{86400} +
           ((date.hour * std::int64_t{60} + date.minute) * 60 + date.second);
}

/// A time zone of the tests' own; the one before comes back.
class Zone {
public:
    explicit Zone(const char* name) {
        const char* const before = std::getenv("TZ");
        before_ = before == nullptr ? "" : before;
        ::setenv("TZ", name, 1);
        ::tzset();
    }
    Zone(const Zone&) = delete;
    Zone& operator=(const Zone&) = delete;
    ~Zone() {
        before_.empty() ? ::unsetenv("TZ") : ::setenv("TZ", before_.c_str(), 1);
        ::tzset();
    }

private:
    std::string before_;
};

TEST(Calendar, LeapYearsAndDaysOfMonths) {
    struct Row {
        std::int32_t year;
        int leap;
    };
    for (const Row& row : {Row{1900, 0}, Row{2000, 1}, Row{2024, 1}, Row{2023, 0}, Row{0, 1},
                           Row{-4, 1}, Row{-100, 0}, Row{-400, 1}, Row{-1, 0}, Row{kMin, 1}}) {
        SCOPED_TRACE(row.year);
        EXPECT_EQ(kv_is_leap(row.year), row.leap);
        EXPECT_EQ(kv_month_days(2, row.year), 28 + row.leap);
    }
    const std::vector<int> days = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31, 0};
    for (std::int32_t month = 0; month <= 13; ++month) {
        EXPECT_EQ(kv_month_days(month, 2023), days[static_cast<std::size_t>(month)]) << month;
    }
    EXPECT_EQ(kv_month_days(-1, 2023), 0);
}

TEST(Calendar, LeapCountIsOneTestForEachYear) {
    for (const std::int32_t first : {-5, -1, 0, 1, 4, 1896, 1900, 1999, 2000}) {
        std::int32_t count = 0;
        for (std::int32_t last = first; last < first + 450; ++last) {
            count += last >= 0 ? kv_is_leap(last) : 0;
            ASSERT_EQ(kv_leap_count(first, last), count) << first << " to " << last;
        }
    }
    EXPECT_EQ(kv_leap_count(5, 4), 0);
    EXPECT_EQ(kv_leap_count(-9, -1), 0);
    EXPECT_EQ(kv_leap_count(kMin, kMax), 520764785) << "year 0 among them";
}

TEST(Calendar, ValidDates) {
    struct Row {
        kv_date date;
        int valid;
    };
    for (const Row& row : std::vector<Row>{{{2024, 2, 29, 0, 0, 0}, 1},
                                           {{2023, 2, 29, 0, 0, 0}, 0},
                                           {{2024, 12, 31, 23, 59, 59}, 1},
                                           {{2024, 4, 31, 0, 0, 0}, 0},
                                           {{2024, 1, 1, 24, 0, 0}, 0},
                                           {{2024, 1, 1, 0, 60, 0}, 0},
                                           {{2024, 1, 1, 0, 0, 60}, 0},
                                           {{2024, 1, 1, -1, 0, 0}, 0},
                                           {{2024, 1, 1, 0, -1, 0}, 0},
                                           {{2024, 1, 1, 0, 0, kMin}, 0},
                                           {{2024, 0, 1, 0, 0, 0}, 0},
                                           {{2024, 13, 1, 0, 0, 0}, 0},
                                           {{2024, 1, 0, 0, 0, 0}, 0},
                                           {{0, 1, 1, 0, 0, 0}, 1},
                                           {{-1, 1, 1, 0, 0, 0}, 0},
                                           {{kMax, 1, 1, 0, 0, 0}, 1}}) {
        const kv_date& date = row.date;
        SCOPED_TRACE(::testing::Message()
                     << date.year << '-' << date.month << '-' << date.day << ' ' << date.hour << ':'
                     << date.minute << ':' << date.second);
        EXPECT_EQ(kv_date_valid(date), row.valid);
    }
}

TEST(DateErrors, TheFirstBadDateIsToldAndResultsAreLeft) {
    constexpr kv_date kGood = {2024, 1, 1, 0, 0, 0};
    constexpr kv_date kBad = {2024, 1, 32, 0, 0, 0};
    struct Row {
        kv_date first;
        kv_date second;
        const char* error;
    };
    for (const Row& row : {Row{kBad, kGood, "First date structure is not valid"},
                           Row{kGood, kBad, "Second date structure is not valid"},
                           Row{kBad, kBad, "First date structure is not valid"}}) {
        SCOPED_TRACE(row.error);
        ErrorText error{};
        std::int32_t order = 77;
        EXPECT_EQ(kv_date_compare(row.first, row.second, &order, error.data()), 0);
        EXPECT_EQ(order, 77);
        EXPECT_STREQ(error.data(), row.error);
        error.fill('#');
        kv_span span = {1, 2, 3, 4};
        EXPECT_EQ(kv_date_difference(row.first, row.second, &span, error.data()), 0);
        EXPECT_EQ(fields(span), (Fields{1, 2, 3, 4}));
        EXPECT_STREQ(error.data(), row.error);
    }
    ErrorText error{};
    std::int32_t seconds = 77;
    EXPECT_EQ(kv_date_seconds(kBad, &seconds, error.data()), 0);
    EXPECT_EQ(seconds, 0);
    EXPECT_STREQ(error.data(), "First date structure is not valid");
}

TEST(Dates, DifferencesByHand) {
    struct Row {
        const char* name;
        kv_date first;
        kv_date second;
        Fields expected;
    };
    for (const Row& row : std::vector<Row>{
             {"over new year", {2023, 12, 31, 23, 59, 59}, {2024, 1, 1, 0, 0, 0}, {0, 0, 0, 1}},
             {"back over new year",
              {2024, 1, 1, 0, 0, 0},
              {2023, 12, 31, 23, 59, 59},
              {0, 0, 0, -1}},
             {"a leap year", {2024, 1, 1, 0, 0, 0}, {2025, 1, 1, 0, 0, 0}, {366, 0, 0, 0}},
             {"the same", {2024, 2, 29, 1, 2, 3}, {2024, 2, 29, 1, 2, 3}, {0, 0, 0, 0}},
             {"fields borrow", {2024, 3, 1, 0, 0, 1}, {2024, 3, 3, 0, 0, 0}, {1, 23, 59, 59}}}) {
        SCOPED_TRACE(row.name);
        kv_span span{};
        ErrorText error{};
        EXPECT_EQ(kv_date_difference(row.first, row.second, &span, error.data()), 1);
        EXPECT_EQ(fields(span), row.expected);
        EXPECT_STREQ(error.data(), "");
    }
}

TEST(Dates, DifferenceAndOrderAgreeWithTheCalendarOfTheStandardLibrary) {
    std::mt19937 random(19930630);
    const auto between = [&](int low, int high) {
        return std::uniform_int_distribution<std::int32_t>(low, high)(random);
    };
    const auto any_date = [&](std::int32_t low, std::int32_t high) {
        const std::int32_t year = between(low, high);
        const std::int32_t month = between(1, 12);
        return kv_date{year,           month,          between(1, kv_month_days(month, year)),
                       between(0, 23), between(0, 59), between(0, 59)};
    };
    for (int step = 0; step < 20000; ++step) {
        // Close together as often as far apart.
        const std::int32_t low = step % 2 == 0 ? 0 : 1999;
        const std::int32_t high = step % 2 == 0 ? 32767 : 2001;
        const kv_date first = any_date(low, high);
        const kv_date second = any_date(low, high);
        const std::int64_t expected = seconds_of(second) - seconds_of(first);
        kv_span span{};
        std::int32_t order = 77;
        std::int32_t within_year = 77;
        ErrorText error{};
        ASSERT_EQ(kv_date_difference(first, second, &span, error.data()), 1);
        // Truncation toward zero gives all the fields one sign.
        ASSERT_EQ(fields(span), (Fields{static_cast<std::int32_t>(expected / 86400),
                                        static_cast<std::int32_t>(expected / 3600 % 24),
                                        static_cast<std::int32_t>(expected / 60 % 60),
                                        static_cast<std::int32_t>(expected % 60)}));
        ASSERT_EQ(kv_date_compare(first, second, &order, error.data()), 1);
        ASSERT_EQ(order, expected < 0 ? 1 : expected > 0 ? -1 : 0);
        ASSERT_EQ(kv_date_seconds(first, &within_year, error.data()), 1);
        ASSERT_EQ(within_year, seconds_of(first) - seconds_of({first.year, 1, 1, 0, 0, 0}));
    }
}

TEST(Dates, TheLongestDifferenceWrapsAndDoesNotTakeLong) {
    kv_span span{};
    ErrorText error{};
    EXPECT_EQ(
        kv_date_difference({0, 1, 1, 0, 0, 0}, {kMax, 12, 31, 23, 59, 59}, &span, error.data()), 1);
    // A second short of the last day's end.
    const std::int64_t days = std::int64_t{kMax} * 365 + kv_leap_count(0, kMax - 1) + 365;
    EXPECT_EQ(fields(span), (Fields{static_cast<std::int32_t>(days), 0, 0, -1}));
}

TEST(Spans, NormaliseCarriesAndGivesOneSign) {
    struct Row {
        kv_span span;
        Fields expected;
    };
    for (const Row& row : std::vector<Row>{{{0, 0, 0, 59}, {0, 0, 0, 59}},
                                           {{0, 0, 0, 60}, {0, 0, 1, 0}},
                                           {{0, 0, 0, -61}, {0, 0, -1, -1}},
                                           {{0, 23, 59, 60}, {1, 0, 0, 0}},
                                           {{1, -1, 0, 0}, {0, 23, 0, 0}},
                                           {{-1, 1, 0, 0}, {0, -23, 0, 0}},
                                           {{0, 1, -1, 0}, {0, 0, 59, 0}},
                                           {{0, -1, 0, 1}, {0, 0, -59, -59}},
                                           {{2, 0, 0, -1}, {1, 23, 59, 59}},
                                           {{-2, 0, 30, 0}, {-1, -23, -30, 0}},
                                           {{1, -25, 0, 0}, {0, -1, 0, 0}},
                                           {{0, 0, 0, kMin}, {-24855, -3, -14, -8}},
                                           {{0, 0, 0, kMax}, {24855, 3, 14, 7}},
                                           {{kMax, 24, 0, 0}, {kMin, 0, 0, 0}}}) {
        kv_span span = row.span;
        SCOPED_TRACE(::testing::Message() << span.days << ' ' << span.hours << ' ' << span.minutes
                                          << ' ' << span.seconds);
        kv_span_normalise(&span);
        EXPECT_EQ(fields(span), row.expected);
        kv_span_normalise(&span);
        EXPECT_EQ(fields(span), row.expected) << "normalised twice";
    }
}

TEST(Spans, FromSecondsAndSubtraction) {
    kv_span span{};
    kv_span_from_seconds(&span, kMin);
    EXPECT_EQ(fields(span), (Fields{-24855, -3, -14, -8}));
    kv_span_from_seconds(&span, 90061);
    EXPECT_EQ(fields(span), (Fields{1, 1, 1, 1}));
    kv_span_subtract(&span, {2, 0, 3, -kMax});
    EXPECT_EQ(fields(span), (Fields{-1, 1, -2, kMin}));
}

TEST(ClockTexts, DateAndTimeOfATimeInTheLocalZone) {
    struct Row {
        const char* zone;
        std::int64_t time;
        const char* date;
        const char* clock;
    };
    for (const Row& row :
         {Row{"UTC0", 741476948, "30Jun1993", "21:49:08"},
          Row{"UTC0", 739584000, "09Jun1993", "00:00:00"},
          Row{"EST5", 739584000, "08Jun1993", "19:00:00"}, Row{"UTC0", -1, "31Dec1969", "23:59:59"},
          Row{"UTC0", 253402300799, "31Dec9999", "23:59:59"}, Row{"UTC0", 253402300800, "", ""},
          Row{"UTC0", -30610224001, "", ""},
          Row{"UTC0", std::numeric_limits<std::int64_t>::max(), "", ""},
          Row{"UTC0", std::numeric_limits<std::int64_t>::min(), "", ""}}) {
        SCOPED_TRACE(row.time);
        const Zone zone(row.zone);
        std::array<char, 10> date{};
        std::array<char, 9> clock{};
        kv_date_text(row.time, date.data());
        kv_time_text(row.time, clock.data());
        EXPECT_STREQ(date.data(), row.date);
        EXPECT_STREQ(clock.data(), row.clock);
    }
}

TEST(ClockTexts, TodayAndNowAreLocal) {
    using Clock = std::array<std::int32_t, 6>;
    const auto by_library = [](std::time_t time) {
        const std::tm* const local = std::localtime(&time);
        return Clock{local->tm_year + 1900, local->tm_mon + 1, local->tm_mday,
                     local->tm_hour,        local->tm_min,     local->tm_sec};
    };
    // Half a day apart: one of the two has another date than the other.
    for (const char* zone_name : {"EAST-12", "WEST12"}) {
        SCOPED_TRACE(zone_name);
        const Zone zone(zone_name);
        Clock seen{};
        std::time_t before = 0;
        do {
            before = std::time(nullptr);
            kv_date_today(&seen[0], &seen[1], &seen[2]);
            kv_time_now(&seen[3], &seen[4], &seen[5]);
        } while (std::time(nullptr) != before);
        EXPECT_EQ(seen, by_library(before));
    }
}

TEST(MonthNames, TheFirstThreeLettersInAnyCase) {
    struct Row {
        const char* name;
        const char* number;
        const char* printed;
    };
    for (const Row& row : std::vector<Row>{
             {"Jan", "01", ""},
             {"JUNE", "06", ""},
             {"sept", "09", ""},
             {"dECx", "12", ""},
             {"Xyz", "00", "**kv_date_month_number, unknown month string \"Xyz\".\n"},
             {"Ju", "00", "**kv_date_month_number, unknown month string \"Ju\".\n"},
             {"", "00", "**kv_date_month_number, unknown month string \"\".\n"},
             {nullptr, "00", "**kv_date_month_number, unknown month string \"\".\n"},
             {"%s%n", "00", "**kv_date_month_number, unknown month string \"%s%n\".\n"}}) {
        for (const bool verbose : {true, false, true}) {
            SCOPED_TRACE(::testing::Message() << row.number << ' ' << verbose);
            kv_set_verbose(verbose);
            std::array<char, 3> number{};
            ::testing::internal::CaptureStdout();
            kv_date_month_number(row.name, number.data());
            EXPECT_EQ(::testing::internal::GetCapturedStdout(), verbose ? row.printed : "");
            EXPECT_STREQ(number.data(), row.number);
        }
    }
}

}  // namespace
}  // namespace zol::testing
