// Reads a number of a table cell, and keeps it as the decimal that was written
// where that is possible: 12.75 as 1275 and two decimals.
//
// A whole number up to 2^53 divided by a power of ten up to 10^22 is the correctly
// rounded double: both are exact doubles, and one division rounds once (W. D. Clinger,
// "How to read floating point numbers accurately", 1990). Such numbers pack small.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace zol::engine {

inline constexpr int kMaxScale = 22;
inline constexpr std::array<double, kMaxScale + 1> kPowersOfTen = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

struct Decimal {
    /// When `exact`, the number is digits / 10^scale; without decimals it may be any
    /// 64-bit whole number, with decimals digits are at most 2^53.
    std::int64_t digits = 0;
    int scale = 0;
    bool exact = false;
    /// The number when it is not exact.
    double rounded = 0.0;

    double Value() const {
        if (!exact) {
            return rounded;
        }
        const auto whole = static_cast<double>(digits);
        return scale == 0 ? whole : whole / kPowersOfTen[static_cast<std::size_t>(scale)];
    }
};

/// Reads all of `text` (no blanks around it) with `point` as decimal point. False
/// when it is not a number.
bool read_decimal(std::string_view text, char point, Decimal& decimal);

}  // namespace zol::engine
