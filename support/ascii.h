// Letters, digits and blanks of ASCII alone, whatever locale the process has set.
#pragma once

#include <string_view>

namespace zol::support {

constexpr bool is_blank(int c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr bool is_digit(int c) {
    return c >= '0' && c <= '9';
}

constexpr char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool is_hex_digit(int c) {
    return is_digit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

/// Below, at or above 0 as `left` sorts before, with or behind `right`: by bytes, capital
/// letters taken for small ones.
constexpr int compare_ignoring_case(std::string_view left, std::string_view right) {
    for (std::size_t i = 0; i < left.size() && i < right.size(); ++i) {
        const auto a = static_cast<unsigned char>(lower(left[i]));
        const auto b = static_cast<unsigned char>(lower(right[i]));
        if (a != b) {
            return a < b ? -1 : 1;
        }
    }
    return left.size() == right.size() ? 0 : (left.size() < right.size() ? -1 : 1);
}

}  // namespace zol::support
