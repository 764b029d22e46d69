// Numbers to and from text, the same in every locale.
#pragma once

#include <optional>
#include <string_view>

namespace zol::tool {

/// Room for the text of one number.
struct NumberText {
    char characters[40];
    unsigned char length = 0;

    operator std::string_view() const { return {characters, length}; }
};

/// The shortest decimal that reads back as the same number; plain notation from
/// 1e-5 up to 1e16. "nan", "inf" and "-inf" for what is not finite.
NumberText number_text(double value);
/// The shortest that reads back as the same float: 0.1f is "0.1".
NumberText number_text(float value);

/// A computed number for a person: rounded to so many digits, at most 17.
NumberText rounded_text(double value, int digits);
/// What is computed from values, without the last digits: those tell of rounding only.
NumberText computed_text(double value);
/// A coordinate that was computed: with 15 digits, where 0.1 + 0.2 is "0.3".
NumberText coordinate_text(double value);

NumberText whole_text(long long value);

/// A whole text as a finite decimal number; nothing when it is not one.
std::optional<double> parse_number(std::string_view text);

}  // namespace zol::tool
