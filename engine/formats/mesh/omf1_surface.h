// Meshes from the surfaces and grid surfaces of OMF 1 files.
#pragma once

#include <string>

#include "engine/formats/file.h"
#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

/// Reads the first surface of a file, or the first of the name when `element_name` is not
/// empty. Throws ReadError; for a name that is no surface it lists the elements that exist.
MeshData read_omf1_surface(const File& file, const std::string& element_name);

}  // namespace zol::engine
