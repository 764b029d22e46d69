// Fixed notation: any number by way of the standard library, and most numbers with six
// decimals, which the text form of values is full of, by a short way of integers.
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>

#include "support/number_text.h"

namespace zol::support {

namespace {

constexpr int kDecimals = 6;
constexpr std::uint64_t kScale = 1'000'000;
constexpr int kFractionBits = 52;
constexpr int kExponentOfOne = 1023;
constexpr std::uint64_t kLow32 = 0xFFFFFFFF;

/// A number of millionths, without its sign.
struct Millionths {
    std::uint64_t whole;
    std::uint64_t rest;  // below a million
};

// rest / 2^scale as millionths, ties to even, for a scale from 32 to 95 and a rest below
// 2^53 and 2^scale. The product takes more than 64 bits: a high part, and 32 low ones.
std::uint64_t rounded_millionths(std::uint64_t rest, int scale) {
    const std::uint64_t low_product = (rest & kLow32) * kScale;
    const std::uint64_t high = (rest >> 32) * kScale + (low_product >> 32);
    const int high_scale = scale - 32;
    const std::uint64_t millionths = high >> high_scale;
    using Parts = std::pair<std::uint64_t, std::uint64_t>;
    const Parts left{high - (millionths << high_scale), low_product & kLow32};
    const Parts half = high_scale > 0 ? Parts{std::uint64_t{1} << (high_scale - 1), 0}
                                      : Parts{0, std::uint64_t{1} << 31};
    const bool up = left > half || (left == half && millionths % 2 != 0);
    return millionths + (up ? 1 : 0);
}

// False for numbers of 2^52 and above, and for what is no number.
bool split(double number, Millionths& parts) {
    const auto bits = std::bit_cast<std::uint64_t>(number);
    const auto exponent = static_cast<int>(bits >> kFractionBits & 0x7FF);
    int scale = kExponentOfOne + kFractionBits - exponent;
    if (scale <= 0) {
        return false;
    }
    if (scale > 95) {
        // Far below half a millionth.
        parts = {0, 0};
        return true;
    }
    const std::uint64_t one = std::uint64_t{1} << kFractionBits;
    const std::uint64_t digits = (bits & (one - 1)) | one;
    parts.whole = scale < 64 ? digits >> scale : 0;
    std::uint64_t rest = scale < 64 ? digits - (parts.whole << scale) : digits;
    if (scale < 32) {
        rest <<= 32 - scale;
        scale = 32;
    }
    parts.rest = rounded_millionths(rest, scale);
    if (parts.rest == kScale) {
        ++parts.whole;
        parts.rest = 0;
    }
    return true;
}

void append_millionths(std::string& text, const Millionths& parts, bool is_negative) {
    // A sign, 16 digits, a point and the decimals.
    std::array<char, 1 + 16 + 1 + kDecimals> digits;
    char* at = digits.data();
    if (is_negative) {
        *at++ = '-';
    }
    at = std::to_chars(at, digits.data() + digits.size(), parts.whole).ptr;
    *at = '.';
    std::uint64_t rest = parts.rest;
    for (int i = kDecimals; i > 0; --i) {
        at[i] = static_cast<char>('0' + rest % 10);
        rest /= 10;
    }
    text.append(digits.data(), at + 1 + kDecimals);
}

}  // namespace

void append_fixed(std::string& text, double number, int decimals) {
    if (Millionths parts{}; decimals == kDecimals && split(number, parts)) {
        append_millionths(text, parts, std::signbit(number));
        return;
    }
    // The greatest double has 309 digits before the point.
    constexpr std::size_t kMostBeforeDecimals = 1 + 309 + 1;
    const std::size_t before = text.size();
    text.resize(before + kMostBeforeDecimals + static_cast<std::size_t>(decimals));
    const auto end = std::to_chars(text.data() + before, text.data() + text.size(), number,
                                   std::chars_format::fixed, decimals);
    text.resize(static_cast<std::size_t>(end.ptr - text.data()));
}

}  // namespace zol::support
