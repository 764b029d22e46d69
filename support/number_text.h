// Numbers as texts and back, the same in every locale and floating-point mode.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zol::support {

/// The number at the beginning of a text, as the C library's `atof` reads it in the "C"
/// locale: blanks, a sign, then a decimal number, a hexadecimal one, "inf", "infinity" or
/// "nan" in any case; what follows is not looked at. 0 when there is no number, infinity
/// when it is too large.
double read_double(std::string_view text);
/// The signed decimal number at the beginning of a text; the nearest that 64 bits hold
/// when it is beyond them, 0 when there is none.
std::int64_t read_int64(std::string_view text);
/// A text of nothing but hexadecimal digits, all bits set when it is beyond 64 of them.
std::uint64_t read_hex(std::string_view digits);

/// In fixed notation with so many decimals, ties to even; "inf", "-inf", "nan" or "-nan"
/// for what is no number.
void append_fixed(std::string& text, double number, int decimals);
void append_integer(std::string& text, std::int64_t number);
/// "0x" and 16 hexadecimal digits, letters as capitals.
void append_pointer(std::string& text, std::uint64_t word);

}  // namespace zol::support
