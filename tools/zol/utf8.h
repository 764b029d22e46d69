// Telling UTF-8 from other bytes.
#pragma once

#include <cstddef>
#include <string_view>

namespace zol::tool {

/// Bytes of the character at the start of `text`, which is not empty; 0 when they
/// are not UTF-8.
std::size_t utf8_length(std::string_view text);

}  // namespace zol::tool
