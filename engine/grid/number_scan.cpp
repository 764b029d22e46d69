#include "engine/grid/number_scan.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

namespace zol::engine::grid {

namespace {

constexpr std::size_t kLongestFault = 30;
// "-1.#QNAN" with room for zeros behind it.
constexpr std::size_t kLongestSpecial = 24;
// Any that stands for a number, with room to show one that does not.
constexpr std::size_t kLongestWord = 64;

enum Kind : std::uint8_t { kParting, kSign, kDigit, kPoint, kExponent, kOther, kKinds };

enum State : std::uint8_t {
    kBetween,
    kSigned,
    kWhole,
    kBarePoint,
    kFraction,
    kExponentBegun,
    kExponentSigned,
    kExponentDigits,
    kWord,
    /// A word or half a number has ended: to be looked at as a text.
    kEnded,
    kStates,
};

using KindOfByte = std::array<std::uint8_t, 256>;

constexpr KindOfByte kinds_of(bool comma_is_point, bool comma_parts, bool only_whole) {
    KindOfByte kinds{};
    kinds.fill(kOther);
    for (const char c : {' ', '\t', '\n', '\v', '\f', '\r'}) {
        kinds[static_cast<unsigned char>(c)] = kParting;
    }
    if (comma_parts) {
        kinds[','] = kParting;
        kinds[';'] = kParting;
    }
    // Every number is looked at as a text where 32 bits bound it.
    if (only_whole) {
        return kinds;
    }
    for (unsigned char c = '0'; c <= '9'; ++c) {
        kinds[c] = kDigit;
    }
    kinds['+'] = kSign;
    kinds['-'] = kSign;
    kinds['.'] = kPoint;
    kinds['e'] = kExponent;
    kinds['E'] = kExponent;
    if (comma_is_point) {
        kinds[','] = kPoint;
    }
    return kinds;
}

constexpr KindOfByte kPlain = kinds_of(false, false, false);
constexpr KindOfByte kWithComma = kinds_of(true, false, false);
constexpr KindOfByte kParted = kinds_of(false, true, false);
constexpr KindOfByte kPartedWhole = kinds_of(false, true, true);
constexpr KindOfByte kPlainWhole = kinds_of(false, false, true);

const KindOfByte& kinds_for(const NumberStyle& style) {
    if (style.only_whole) {
        return style.comma_parts ? kPartedWhole : kPlainWhole;
    }
    if (style.comma_parts) {
        return kParted;
    }
    return style.comma_is_point ? kWithComma : kPlain;
}

// A step is the next state, already in the place that it has in the index of the one after
// it, and a bit for a number that has ended.
constexpr unsigned kStateShift = 3;
constexpr std::uint8_t kNumberEnded = 0x80;
constexpr std::uint8_t kStateBits = 0x78;
static_assert(kKinds <= 1 << kStateShift && kStates << kStateShift <= kNumberEnded);

constexpr std::uint8_t step_to(State state) {
    return static_cast<std::uint8_t>(state << kStateShift);
}

constexpr auto kSteps = [] {
    std::array<std::uint8_t, std::size_t{kStates} << kStateShift> steps{};
    steps.fill(step_to(kWord));
    const auto set = [&](State from, Kind kind, State to) {
        steps[step_to(from) | kind] = step_to(to);
    };
    set(kBetween, kParting, kBetween);
    set(kBetween, kSign, kSigned);
    set(kBetween, kDigit, kWhole);
    set(kBetween, kPoint, kBarePoint);
    set(kSigned, kDigit, kWhole);
    set(kSigned, kPoint, kBarePoint);
    set(kWhole, kDigit, kWhole);
    set(kWhole, kPoint, kFraction);
    set(kWhole, kExponent, kExponentBegun);
    set(kBarePoint, kDigit, kFraction);
    set(kFraction, kDigit, kFraction);
    set(kFraction, kExponent, kExponentBegun);
    set(kExponentBegun, kSign, kExponentSigned);
    set(kExponentBegun, kDigit, kExponentDigits);
    set(kExponentSigned, kDigit, kExponentDigits);
    set(kExponentDigits, kDigit, kExponentDigits);
    for (const State half : {kSigned, kBarePoint, kExponentBegun, kExponentSigned, kWord}) {
        set(half, kParting, kEnded);
    }
    for (const State whole : {kWhole, kFraction, kExponentDigits}) {
        steps[step_to(whole) | kParting] = step_to(kBetween) | kNumberEnded;
    }
    return steps;
}();

bool equal_letters(std::string_view text, std::string_view lower) {
    return std::equal(text.begin(), text.end(), lower.begin(), lower.end(),
                      [](char a, char b) { return ('A' <= a && a <= 'Z' ? a | 0x20 : a) == b; });
}

/// What is not finite, as programs write it; a library of C's pads some of it with zeros.
bool is_special(std::string_view text) {
    constexpr std::array<std::string_view, 3> kUnsigned = {"nan", "inf", "infinity"};
    constexpr std::array<std::string_view, 6> kPadded = {"1.#qnan", "1.#snan",  "1.#inf",
                                                         "-1.#ind", "-1.#qnan", "-1.#inf"};
    if (text.size() > kLongestSpecial) {
        return false;
    }
    const std::string_view padded = text.substr(0, text.find_last_not_of('0') + 1);
    if (std::any_of(kPadded.begin(), kPadded.end(),
                    [&](std::string_view word) { return equal_letters(padded, word); })) {
        return true;
    }
    if (text.starts_with('+') || text.starts_with('-')) {
        text.remove_prefix(1);
    }
    return std::any_of(kUnsigned.begin(), kUnsigned.end(),
                       [&](std::string_view word) { return equal_letters(text, word); });
}

bool is_whole_of_32_bits(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    std::int32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end;
}

bool is_number_by_text(std::string_view text, const NumberStyle& style) {
    if (style.only_whole) {
        return is_whole_of_32_bits(text);
    }
    return is_special(text) || (style.knows_null && text == "null");
}

/// Fit for a line of a message.
std::string shown(std::string_view text) {
    std::string part(text.substr(0, kLongestFault));
    std::replace_if(
        part.begin(), part.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
    return part + (text.size() > kLongestFault ? "..." : "");
}

}  // namespace

NumberScan::NumberScan(const NumberStyle& style) : style_(style), kinds_(kinds_for(style).data()) {}

bool NumberScan::EndsInNumber(std::string_view before) {
    std::size_t start = before.size();
    while (start > 0 && kinds_[static_cast<unsigned char>(before[start - 1])] != kParting) {
        --start;
    }
    const std::string_view tail = before.substr(start);
    std::string joined;
    std::string_view text = tail;
    if (start == 0 && !begun_.empty()) {
        joined = begun_ + std::string(tail);
        text = joined;
    }
    if (is_number_by_text(text, style_)) {
        return true;
    }
    fault_ = shown(text);
    return false;
}

/// Keeps the start of what a piece breaks off in; of a very long text, enough to tell that
/// it is no word.
void NumberScan::KeepBegun(std::string_view piece) {
    std::size_t start = piece.size();
    while (start > 0 && kinds_[static_cast<unsigned char>(piece[start - 1])] != kParting) {
        --start;
    }
    if (start > 0) {
        begun_.clear();
    }
    if (begun_.size() < kLongestWord) {
        begun_ += piece.substr(start, kLongestWord);
    }
}

bool NumberScan::Feed(std::string_view piece) {
    std::uint8_t step = state_;
    std::uint64_t count = count_;
    const std::uint8_t* const kinds = kinds_;
    for (std::size_t at = 0; at < piece.size(); ++at) {
        step = kSteps[(step & kStateBits) | kinds[static_cast<unsigned char>(piece[at])]];
        count += unsigned{step} >> 7;
        if (step == step_to(kEnded)) [[unlikely]] {
            if (!EndsInNumber(piece.substr(0, at))) {
                count_ = count;
                return false;
            }
            ++count;
            step = step_to(kBetween);
        }
    }
    KeepBegun(piece);
    state_ = step;
    count_ = count;
    return true;
}

std::optional<double> number_of_text(std::string_view text, const NumberStyle& style) {
    NumberScan scan(style);
    if (!scan.Feed(text) || !scan.Finish() || scan.Count() != 1) {
        return std::nullopt;
    }
    std::string plain(text);
    std::replace(plain.begin(), plain.end(), ',', '.');
    const char* const start = plain.data() + (plain.starts_with('+') ? 1 : 0);
    double number = 0.0;
    const auto [stop, error] = std::from_chars(start, plain.data() + plain.size(), number);
    if (error != std::errc() || !std::isfinite(number)) {
        return std::nullopt;
    }
    return number;
}

}  // namespace zol::engine::grid
