// The JSON file beside a mesh that says what its format can't: `mine.stl.json` beside
// `mine.stl`. docs/formats/meshes.md has its keys.
#pragma once

#include <string>
#include <vector>

#include "engine/formats/mesh/mesh_data.h"
#include "engine/tri/property_library.h"

namespace zol::engine::tri {

/// Lets the sidecar of a file, when there is one, add to what the file says, or override it.
/// Throws ReadError that names the sidecar and the JSON path of what is wrong.
void apply_sidecar(const std::string& path, MeshLook& look,
                   std::vector<TypedAttribute>& attributes);

}  // namespace zol::engine::tri
