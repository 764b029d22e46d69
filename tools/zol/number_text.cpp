#include "tools/zol/number_text.h"

#include <charconv>
#include <cmath>
#include <iterator>

namespace zol::tool {

namespace {

template <class Real>
NumberText shortest(Real value) {
    const Real size = std::abs(value);
    const bool is_plain = size == 0 || (size >= Real(1e-5) && size < Real(1e16));
    const auto format = is_plain ? std::chars_format::fixed : std::chars_format::scientific;
    NumberText text;
    const auto end =
        std::to_chars(std::begin(text.characters), std::end(text.characters), value, format);
    text.length = static_cast<unsigned char>(end.ptr - text.characters);
    return text;
}

}  // namespace

NumberText number_text(double value) {
    return shortest(value);
}

NumberText number_text(float value) {
    return shortest(value);
}

NumberText rounded_text(double value, int digits) {
    if (!std::isfinite(value)) return number_text(value);
    NumberText text;
    const auto end = std::to_chars(std::begin(text.characters), std::end(text.characters), value,
                                   std::chars_format::scientific, digits - 1);
    // The largest number there is would be rounded up out of range.
    double rounded = value;
    std::from_chars(std::begin(text.characters), end.ptr, rounded);
    return number_text(rounded);
}

NumberText computed_text(double value) {
    constexpr int kDigits = 12;
    return rounded_text(value, kDigits);
}

NumberText coordinate_text(double value) {
    constexpr int kDigits = 15;
    return rounded_text(value, kDigits);
}

NumberText whole_text(long long value) {
    NumberText text;
    const auto end = std::to_chars(std::begin(text.characters), std::end(text.characters), value);
    text.length = static_cast<unsigned char>(end.ptr - text.characters);
    return text;
}

std::optional<double> parse_number(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

}  // namespace zol::tool
