// The fast way through the numbers of a table: up to 16 characters at once, eight in
// a machine word, without a branch on their count.
//
// The arithmetic on bytes in a word is well known: a byte is zero where subtracting
// one borrows, and three multiplications add up eight digits (D. Lemire, "Quickly
// parsing eight digits", 2018).
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "engine/formats/decimal.h"

namespace zol::engine {

/// Bytes in front of a text that read_short_decimal may look at.
inline constexpr std::size_t kBytesBefore = 16;

namespace short_decimal {

inline constexpr std::uint64_t kZeros = 0x3030303030303030;

inline std::uint64_t load(const char* at) {
    std::uint64_t word;
    std::memcpy(&word, at, sizeof word);
    return word;
}

// Keeps the last `count` (0 to 8) characters and puts '0' in front of them.
inline std::uint64_t last_characters(std::uint64_t word, std::size_t count) {
    const std::uint64_t kept = count == 0 ? 0 : ~std::uint64_t{0} << (64 - 8 * count);
    return (word & kept) | (kZeros & ~kept);
}

// The highest bit of each byte that is `wanted`, from the lowest such byte on.
inline std::uint64_t places_of(std::uint64_t word, char wanted) {
    const std::uint64_t same = word ^ (0x0101010101010101U * static_cast<unsigned char>(wanted));
    return (same - 0x0101010101010101U) & ~same & 0x8080808080808080U;
}

inline bool are_digits(std::uint64_t word) {
    return (((word + 0x4646464646464646U) | (word - kZeros)) & 0x8080808080808080U) == 0;
}

inline std::uint64_t value_of(std::uint64_t word) {
    word -= kZeros;
    word = word * 10 + (word >> 8);
    constexpr std::uint64_t kPairs = 0x000000FF000000FF;
    return ((word & kPairs) * 0x000F424000000064U +
            ((word >> 16) & kPairs) * 0x0000271000000001U) >>
           32;
}

// Takes the byte at bit `at` (its highest bit) out of a word; the bytes before it move
// up, and `filler` comes in at the front.
inline std::uint64_t without(std::uint64_t word, int at, std::uint64_t filler) {
    const int shift = at - 7;
    const std::uint64_t below = (std::uint64_t{1} << shift) - 1;
    const std::uint64_t above = shift == 56 ? 0 : ~std::uint64_t{0} << (shift + 8);
    return (word & above) | ((word & below) << 8) | filler;
}

}  // namespace short_decimal

/// True when two texts of a length, given by their ends, are known to have the same
/// characters: up to 16 are compared. kBytesBefore bytes in front of both texts may be read.
[[gnu::always_inline]] inline bool are_same_characters(const char* a_end, const char* b_end,
                                                       std::size_t length) {
    using namespace short_decimal;
    if (std::endian::native != std::endian::little || length - 1 >= 16) {
        return false;
    }
    const std::uint64_t high = load(a_end - 8) ^ load(b_end - 8);
    if (length <= 8) {
        return high >> (64 - 8 * length) == 0;
    }
    const std::uint64_t low = load(a_end - 16) ^ load(b_end - 16);
    return (high | low >> (128 - 8 * length)) == 0;
}

/// What a cell is at a glance.
enum class Glance {
    /// Up to nine digits, perhaps behind a minus: a whole number of 32 bits.
    Whole,
    /// Up to 16 characters, digits with one point among them.
    Fraction,
    /// Something that has to be read with care.
    Other
};

/// Tells a usual number without reading its value. The kBytesBefore bytes in front of
/// `begin` may be read.
[[gnu::always_inline]] inline Glance glance_at(const char* begin, const char* end, char point) {
    using namespace short_decimal;
    if constexpr (std::endian::native != std::endian::little) {
        return Glance::Other;
    }
    begin += begin != end && *begin == '-' ? 1 : 0;
    const auto length = static_cast<std::size_t>(end - begin);
    if (length - 1 >= 16) {
        return Glance::Other;
    }
    std::uint64_t high = last_characters(load(end - 8), length < 8 ? length : 8);
    std::uint64_t low = last_characters(load(end - 16), length < 8 ? 0 : length - 8);
    const std::uint64_t in_high = places_of(high, point);
    const std::uint64_t in_low = places_of(low, point);
    if ((in_high | in_low) == 0) {
        return length <= 9 && are_digits(high) && are_digits(low) ? Glance::Whole : Glance::Other;
    }
    // A point becomes a digit; a second one is left and no digit. Of the lowest marks only
    // the lowest is sure to be a point.
    if (in_high != 0) {
        const int at = std::countr_zero(in_high) - 7;
        high = (high & ~(std::uint64_t{0xFF} << at)) | (std::uint64_t{'0'} << at);
    } else {
        const int at = std::countr_zero(in_low) - 7;
        low = (low & ~(std::uint64_t{0xFF} << at)) | (std::uint64_t{'0'} << at);
    }
    return length > 1 && are_digits(high) && are_digits(low) ? Glance::Fraction : Glance::Other;
}

namespace short_decimal {

// Up to eight characters: most numbers of a table.
[[gnu::always_inline]] inline bool read_word(const char* end, std::size_t length, char point,
                                             std::uint64_t& digits, int& scale) {
    std::uint64_t word = last_characters(load(end - 8), length);
    if (const std::uint64_t found = places_of(word, point); found != 0) {
        const int at = std::countr_zero(found);
        scale = 7 - (at >> 3);
        word = without(word, at, '0');
        if (length == 1) {
            return false;
        }
    }
    digits = value_of(word);
    return are_digits(word);
}

// Nine to 16 characters.
[[gnu::always_inline]] inline bool read_two_words(const char* end, std::size_t length, char point,
                                                  std::uint64_t& digits, int& scale) {
    std::uint64_t high = load(end - 8);
    std::uint64_t low = last_characters(load(end - 16), length - 8);
    if (const std::uint64_t in_high = places_of(high, point); in_high != 0) {
        const int at = std::countr_zero(in_high);
        scale = 7 - (at >> 3);
        high = without(high, at, low >> 56);
        low = low << 8 | '0';
    } else if (const std::uint64_t in_low = places_of(low, point); in_low != 0) {
        const int at = std::countr_zero(in_low);
        scale = 15 - (at >> 3);
        low = without(low, at, '0');
    }
    digits = value_of(high) + value_of(low) * 100000000U;
    return are_digits(high) && are_digits(low);
}

}  // namespace short_decimal

/// Reads digits with at most one `point` among them and a minus in front; false for
/// everything else, a longer number, or one that needs more care. The kBytesBefore
/// bytes in front of `begin` may be read.
[[gnu::always_inline]] inline bool read_short_decimal(const char* begin, const char* end,
                                                      char point, Decimal& decimal) {
    if constexpr (std::endian::native != std::endian::little) {
        return false;
    }
    const bool negative = begin != end && *begin == '-';
    begin += negative ? 1 : 0;
    const auto length = static_cast<std::size_t>(end - begin);
    if (length - 1 >= 16) {
        return false;
    }
    std::uint64_t magnitude = 0;
    int scale = 0;
    const bool is_number =
        length <= 8 ? short_decimal::read_word(end, length, point, magnitude, scale)
                    : short_decimal::read_two_words(end, length, point, magnitude, scale);
    // Minus zero has no whole number that stands for it.
    if (!is_number || (negative && magnitude == 0)) {
        return false;
    }
    const auto digits = static_cast<std::int64_t>(magnitude);
    decimal.digits = negative ? -digits : digits;
    decimal.scale = scale;
    decimal.exact = true;
    return true;
}

}  // namespace zol::engine
