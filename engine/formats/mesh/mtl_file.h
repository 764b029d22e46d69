// Reads materials: the MTL files that go with OBJ.
#pragma once

#include <string_view>

#include "engine/formats/file.h"
#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

/// Finds the material `name`, behind whose own name a comment may stand in the file, and puts
/// its colour (Kd), opacity (d, or 1 - Tr without a d) and texture (map_Kd, as a path from the
/// folder of `file`) into `look`; what it does not say is left. False when the file has no such
/// material. Statements that can't be read, and a texture outside the folder, are left out with
/// a word on the diagnostics channel. Throws ReadError for a file that can't be a list of
/// materials.
bool read_material(const File& file, std::string_view name, MeshLook& look);

}  // namespace zol::engine
