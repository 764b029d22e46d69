// Takes numbers off the front of a line.
//
// Most numbers of a mesh are a few digits with a point: they are read in one pass over
// their bytes, as a whole number of at most 2^53 divided by a power of ten, which is
// correctly rounded (see engine/formats/decimal.h). The others go through a careful reader.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "engine/formats/decimal.h"

namespace zol::engine {

enum class Taken {
    Number,
    /// The line ends, or a comment of # begins.
    Nothing,
    /// A word that is no number; it is still in front.
    Rubbish
};

namespace line_numbers {

Taken take_real_with_care(std::string_view& rest, double& value);
Taken take_whole_with_care(std::string_view& rest, std::int64_t& value);

inline const char* behind_blanks(const char* at, const char* end) {
    while (at != end && (*at == ' ' || *at == '\t')) ++at;
    return at;
}

inline bool is_word_end(const char* at, const char* end) {
    return at == end || *at == ' ' || *at == '\t';
}

inline unsigned digit(const char* at) {
    return static_cast<unsigned>(static_cast<unsigned char>(*at)) - '0';
}

inline std::string_view from(const char* at, const char* end) {
    return {at, static_cast<std::size_t>(end - at)};
}

}  // namespace line_numbers

/// Takes the next word of `rest` as a finite number; read_real says what is one. The byte
/// behind `rest` must be readable and no part of a number, as it is in a line of TextLines
/// and in a std::string.
[[gnu::always_inline]] inline Taken take_real(std::string_view& rest, double& value) {
    using namespace line_numbers;
    constexpr std::uint64_t kGreatestExact = std::uint64_t{1} << 53;
    constexpr std::size_t kMostDigits = 18;
    const char* const end = rest.data() + rest.size();
    const char* const word = behind_blanks(rest.data(), end);
    if (word == end) {
        rest = {};
        return Taken::Nothing;
    }
    const char* at = word;
    const bool negative = *at == '-';
    at += negative ? 1 : 0;
    const char* const first = at;
    std::uint64_t digits = 0;
    for (; digit(at) < 10; ++at) digits = digits * 10 + digit(at);
    auto count = static_cast<std::size_t>(at - first);
    std::size_t scale = 0;
    if (*at == '.') {
        const char* const behind_point = ++at;
        for (; digit(at) < 10; ++at) digits = digits * 10 + digit(at);
        scale = static_cast<std::size_t>(at - behind_point);
        count += scale;
    }
    if (count - 1 >= kMostDigits || digits > kGreatestExact || !is_word_end(at, end)) {
        rest = from(word, end);
        return take_real_with_care(rest, value);
    }
    const double magnitude = static_cast<double>(digits) / kPowersOfTen[scale];
    value = negative ? -magnitude : magnitude;
    rest = from(at, end);
    return Taken::Number;
}

/// The same for a whole number of 64 bits.
[[gnu::always_inline]] inline Taken take_whole(std::string_view& rest, std::int64_t& value) {
    using namespace line_numbers;
    constexpr std::size_t kMostDigits = 18;
    const char* const end = rest.data() + rest.size();
    const char* const word = behind_blanks(rest.data(), end);
    if (word == end) {
        rest = {};
        return Taken::Nothing;
    }
    const char* at = word;
    std::uint64_t digits = 0;
    for (; digit(at) < 10; ++at) digits = digits * 10 + digit(at);
    if (static_cast<std::size_t>(at - word) - 1 >= kMostDigits || !is_word_end(at, end)) {
        rest = from(word, end);
        return take_whole_with_care(rest, value);
    }
    value = static_cast<std::int64_t>(digits);
    rest = from(at, end);
    return Taken::Number;
}

}  // namespace zol::engine
