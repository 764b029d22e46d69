// The clock and its texts.
#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>
#include <string_view>

#include "support/date.h"

namespace {

constexpr std::array<std::string_view, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

bool verbose = true;

/// The text "Wed Jun 30 21:49:08 1993"; empty for a time that doesn't have this form. English
/// in every locale.
std::string_view clock_text(std::int64_t time) {
    constexpr std::size_t kLength = 24;
    const std::time_t seconds = time;
    const char* const text = std::ctime(&seconds);
    const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
    return text != nullptr && std::strlen(text) == kLength + 1 && text[kLength] == '\n' &&
                   std::all_of(text + 20, text + kLength, is_digit)
               ? std::string_view(text, kLength)
               : std::string_view();
}

std::string date_text(std::int64_t time) {
    const std::string_view clock = clock_text(time);
    if (clock.empty()) {
        return {};
    }
    std::string text;
    text.append(clock.substr(8, 2)).append(clock.substr(4, 3)).append(clock.substr(20, 4));
    std::replace(text.begin(), text.begin() + 1, ' ', '0');
    return text;
}

std::string time_text(std::int64_t time) {
    const std::string_view clock = clock_text(time);
    return clock.empty() ? std::string() : std::string(clock.substr(11, 8));
}

void hand_out(const std::string& from, char* to) {
    std::memcpy(to, from.c_str(), from.size() + 1);
}

std::int64_t now() {
    return std::time(nullptr);
}

char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool same_letters(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return upper(a) == upper(b); });
}

/// 0 where there is no number.
std::int32_t number_at(std::string_view text, std::size_t place, std::size_t length) {
    std::int32_t number = 0;
    if (place + length <= text.size()) {
        std::from_chars(text.data() + place, text.data() + place + length, number);
    }
    return number;
}

}  // namespace

void kv_set_verbose(bool on) {
    verbose = on;
}

void kv_date_text(std::int64_t time, char* text) {
    hand_out(date_text(time), text);
}

void kv_time_text(std::int64_t time, char* text) {
    hand_out(time_text(time), text);
}

void kv_date_month_number(const char* month, char* text) {
    const char* const given = month == nullptr ? "" : month;
    const std::string_view name = std::string_view(given).substr(0, 3);
    const auto* const found =
        std::find_if(kMonths.begin(), kMonths.end(),
                     [&](std::string_view each) { return same_letters(name, each); });
    const bool known = found != kMonths.end();
    if (!known && verbose) {
        std::printf("**kv_date_month_number, unknown month string \"%s\".\n", given);
    }
    const auto number = known ? static_cast<int>(found - kMonths.begin()) + 1 : 0;
    text[0] = static_cast<char>('0' + number / 10);
    text[1] = static_cast<char>('0' + number % 10);
    text[2] = '\0';
}

void kv_date_today(std::int32_t* year, std::int32_t* month, std::int32_t* day) {
    const std::string text = date_text(now());
    *year = *month = *day = 0;
    if (!text.empty()) {
        std::array<char, 3> month_number{};
        kv_date_month_number(text.substr(2, 3).c_str(), month_number.data());
        *month = number_at(month_number.data(), 0, 2);
        *year = number_at(text, 5, 4);
        *day = number_at(text, 0, 2);
    }
}

void kv_time_now(std::int32_t* hour, std::int32_t* minute, std::int32_t* second) {
    const std::string text = time_text(now());
    *hour = number_at(text, 0, 2);
    *minute = number_at(text, 3, 2);
    *second = number_at(text, 6, 2);
}
