// Brings texts of table cells to UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace zol::engine {

bool is_utf8(std::string_view text);

/// `text` as UTF-8. A text that is valid UTF-8 already stays as it is; any other is
/// taken to be in `encoding`, or in Windows code page 1252 when that is empty. Bytes
/// that the encoding doesn't have become U+FFFD.
std::string to_utf8(std::string_view text, const std::string& encoding);

/// True when the system can convert from the encoding of that name.
bool is_known_encoding(const std::string& encoding);

}  // namespace zol::engine
