// Finds the reader of a mesh file.
#pragma once

#include <string>

#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

/// The file behind a name, and what the name carries behind its last '#'.
struct MeshName {
    std::string path;
    std::string element;
};

/// The name as a whole when a file of that name exists.
MeshName split_mesh_name(const std::string& name);

/// Reads the mesh of a file, which its content tells apart, and where that says nothing the
/// ending. There is one point at least. Throws ReadError.
MeshData read_mesh(const MeshName& name);
MeshData read_mesh(const std::string& name);

}  // namespace zol::engine
