// Finds the reader of a mesh file.
#pragma once

#include <string>

#include "engine/formats/file_name.h"
#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

/// Reads the mesh of a file, which its content tells apart, and where that says nothing the
/// ending. There is one point at least. Throws ReadError.
MeshData read_mesh(const FileName& name);
MeshData read_mesh(const std::string& name);

}  // namespace zol::engine
