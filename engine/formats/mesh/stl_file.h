// STL: triangles without a topology, each with three corners of its own, as text or as
// binary records. Corners of the same coordinates become one point.
//
// docs/formats/meshes.md has both layouts.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "engine/formats/file.h"
#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

/// True when the file is as long as the count of facets behind its header says: a sure sign
/// of the binary form, whatever the header says.
bool is_binary_stl(const File& file);

/// True for the beginning of a file in the text form.
bool is_text_stl(std::string_view head);

/// Reads either form. Throws ReadError.
MeshData read_stl(const File& file);

}  // namespace zol::engine
