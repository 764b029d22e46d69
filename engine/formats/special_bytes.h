// Finds a few byte values in a text.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace zol::engine {

/// Fills `places` with the offsets of the wanted bytes in a text, ascending, and the
/// text's size behind them; what stands behind that means nothing. Gives how many were
/// found. The text is shorter than 4 GiB.
std::size_t find_special_bytes(std::string_view text, const std::array<char, 3>& wanted,
                               std::vector<std::uint32_t>& places);

}  // namespace zol::engine
