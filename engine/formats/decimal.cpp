#include "engine/formats/decimal.h"

#include <charconv>
#include <string>

#include "engine/formats/number_text.h"

namespace zol::engine {

namespace {

constexpr std::int64_t kGreatestExact = std::int64_t{1} << 53;
// As many characters, the point among them, can't overflow 64 bits.
constexpr std::ptrdiff_t kMostCharacters = 18;

bool read_whole(std::string_view text, Decimal& decimal) {
    const char* first = text.data();
    const char* const last = first + text.size();
    // from_chars knows no plus; behind one it must not find a minus.
    const bool plus = first != last && *first == '+';
    first += plus ? 1 : 0;
    std::int64_t whole = 0;
    const auto end = std::from_chars(first, last, whole);
    if (end.ec != std::errc() || end.ptr != last || whole == 0 || (plus && *first == '-')) {
        return false;
    }
    decimal = {whole, 0, true};
    return true;
}

// Other decimal points, and the exponents of Fortran: 1.25D-02.
bool read_any(std::string_view text, char point, Decimal& decimal) {
    decimal.exact = false;
    const std::size_t exponent = text.find_first_of("Dd");
    const bool is_fortran = exponent != text.npos && exponent > 0 && exponent + 1 < text.size() &&
                            text.find_first_not_of("+-0123456789", exponent + 1) == text.npos;
    if (point == '.' && !is_fortran) {
        return parse_number(text, decimal.rounded);
    }
    if (point != '.' && text.find('.') != text.npos) {
        return false;
    }
    std::string usual(text);
    if (is_fortran) {
        usual[exponent] = 'e';
    }
    for (char& c : usual) {
        c = c == point ? '.' : c;
    }
    return parse_number(usual, decimal.rounded);
}

}  // namespace

bool read_decimal(std::string_view text, char point, Decimal& decimal) {
    const char* at = text.data();
    const char* const end = at + text.size();
    const bool negative = at != end && *at == '-';
    at += negative || (at != end && *at == '+') ? 1 : 0;

    std::int64_t digits = 0;
    const char* const first = at;
    const char* const stop = end - first > kMostCharacters ? first + kMostCharacters : end;
    while (at != stop && *at >= '0' && *at <= '9') {
        digits = digits * 10 + (*at - '0');
        ++at;
    }
    int scale = 0;
    std::ptrdiff_t points = 0;
    if (at != stop && *at == point) {
        points = 1;
        const char* const behind_point = ++at;
        while (at != stop && *at >= '0' && *at <= '9') {
            digits = digits * 10 + (*at - '0');
            ++at;
        }
        scale = static_cast<int>(at - behind_point);
    }
    const bool has_digits = at - first > points;
    // Minus zero has no whole number that stands for it.
    const bool minus_zero = negative && digits == 0;
    if (at == end && has_digits && !minus_zero && (scale == 0 || digits <= kGreatestExact)) {
        decimal.digits = negative ? -digits : digits;
        decimal.scale = scale;
        decimal.exact = true;
        return true;
    }
    return read_whole(text, decimal) || read_any(text, point, decimal);
}

}  // namespace zol::engine
