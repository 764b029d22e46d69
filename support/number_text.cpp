#include "support/number_text.h"

#include <fast_float/fast_float.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "support/ascii.h"

namespace zol::support {

namespace {

std::string_view without_leading_blanks(std::string_view text) {
    while (!text.empty() && is_blank(static_cast<unsigned char>(text.front()))) {
        text.remove_prefix(1);
    }
    return text;
}

bool is_hexadecimal(std::string_view text) {
    return text.size() > 2 && text[0] == '0' && lower(text[1]) == 'x' &&
           (is_hex_digit(text[2]) || text[2] == '.');
}

// The exponent of 2, to within a digit, of a hexadecimal number that no double holds.
std::int64_t exponent_of(std::string_view text) {
    const std::size_t end = text.find_first_not_of("0123456789abcdefABCDEF.");
    const std::string_view digits = text.substr(0, end);
    const std::size_t point = std::min(digits.find('.'), digits.size());
    const std::size_t leading = std::min(digits.find_first_not_of("0."), digits.size());
    // No text is long enough to bring a larger exponent back.
    constexpr std::int64_t kMost = std::int64_t{1} << 60;
    const std::int64_t written = end < text.size() ? read_int64(text.substr(end + 1)) : 0;
    return std::clamp(written, -kMost, kMost) +
           4 * (static_cast<std::int64_t>(point) - static_cast<std::int64_t>(leading));
}

// Not by the C library, which heeds the rounding mode.
double read_hexadecimal(std::string_view text) {
    double number = 0.0;
    const auto read =
        std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::hex);
    if (read.ec == std::errc::result_out_of_range) {
        return exponent_of(text) > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return number;
}

}  // namespace

double read_double(std::string_view text) {
    text = without_leading_blanks(text);
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) {
        text.remove_prefix(1);
    }
    double number = 0.0;
    if (is_hexadecimal(text)) {
        number = read_hexadecimal(text.substr(2));
    } else if (text.empty() || text.front() == '-' ||
               fast_float::from_chars(text.data(), text.data() + text.size(), number).ec ==
                   std::errc::invalid_argument) {
        // Without a number there is no sign either.
        return 0.0;
    }
    return negative ? -number : number;
}

std::int64_t read_int64(std::string_view text) {
    text = without_leading_blanks(text);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
    std::int64_t number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    if (read.ec == std::errc::result_out_of_range) {
        return text.front() == '-' ? std::numeric_limits<std::int64_t>::min()
                                   : std::numeric_limits<std::int64_t>::max();
    }
    return number;
}

std::uint64_t read_hex(std::string_view digits) {
    std::uint64_t word = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), word, 16);
    return read.ec == std::errc::result_out_of_range ? std::numeric_limits<std::uint64_t>::max()
                                                     : word;
}

void append_integer(std::string& text, std::int64_t number) {
    std::array<char, std::numeric_limits<std::int64_t>::digits10 + 2> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    text.append(digits.data(), end.ptr);
}

void append_pointer(std::string& text, std::uint64_t word) {
    text += "0x";
    for (int shift = 60; shift >= 0; shift -= 4) {
        text += "0123456789ABCDEF"[word >> shift & 0xF];
    }
}

}  // namespace zol::support
