// Colours as headers, materials and sidecars write them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

/// The byte of a part from 0 to 1; one beyond counts as the nearer of these.
std::uint8_t colour_byte(double part);

/// Red, green and blue of "#RRGGBB"; nothing for any other text.
std::optional<std::array<std::uint8_t, 3>> colour_of_hex(std::string_view text);

/// Reads "r g b" or "r g b a" with parts from 0 to 1, "#RRGGBB", or the name of a colour, and
/// puts it into `look`. False, and nothing changed, when it is none of these.
bool read_colour(std::string_view text, MeshLook& look);

}  // namespace zol::engine
