// Numbers as text, the same in every locale.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zol::engine {

/// The shortest decimal that reads back as the same double: "0.1", "100000",
/// "1e+20", "nan", "inf". Plain notation from 1e-5 up to 1e16.
std::string number_text(double value);
/// The same for a value that is stored as a float: shortest among floats.
std::string number_text(float value);

/// Reads a whole text as a decimal number, correctly rounded: optional sign,
/// digits with '.', optional exponent; "inf" and "infinity" in any letter case.
/// False when anything else stands in it, or the number is beyond a double.
bool parse_number(std::string_view text, double& value);

}  // namespace zol::engine
