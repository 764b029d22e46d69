// Colours as a header writes them.
#pragma once

#include <string_view>

#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

/// Reads "r g b" or "r g b a" with parts from 0 to 1, "#RRGGBB", or the name of a colour, and
/// puts it into `look`. False, and nothing changed, when it is none of these.
bool read_colour(std::string_view text, MeshLook& look);

}  // namespace zol::engine
