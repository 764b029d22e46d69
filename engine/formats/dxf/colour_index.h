// The 255 numbered colours of DXF drawings.
//
// 1 to 9 are named colours. From 10 to 249 come 24 hues, 15 degrees apart, ten entries each: five
// brightnesses, each pure and then half saturated. The last six are greys.
#pragma once

#include <cstdint>

namespace zol::engine {

inline constexpr int kColourByBlock = 0;
inline constexpr int kColourByLayer = 256;
/// White on black, black on white: of what names no colour.
inline constexpr int kColourOfNothing = 7;

/// 0x00RRGGBB of a number; black for one that is not from 1 to 255.
std::uint32_t colour_of_index(int index);

/// The number, from 1 to 255, of the nearest colour by the squared distance of red, green and
/// blue; the lowest of equals.
int nearest_colour_index(std::uint32_t colour);

}  // namespace zol::engine
