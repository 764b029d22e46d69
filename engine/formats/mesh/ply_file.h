// PLY: points and polygons with any properties, as text or as binary numbers in either order
// of bytes.
//
// docs/formats/meshes.md says what becomes of the properties.
#pragma once

#include "engine/formats/file.h"
#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

/// Throws ReadError.
MeshData read_ply(const File& file);

}  // namespace zol::engine
