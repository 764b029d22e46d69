// Reads Wavefront OBJ files.
#pragma once

#include "engine/formats/file.h"
#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

/// Reads points (`v`) and faces (`f`), parted into triangles, with the look of their material;
/// lines, points and free forms are passed over. Attributes besides the usual ones: "name" for
/// the first object, "comment" for the lines of the first comment, "material" for each material
/// in use, and "vertex_colours" when colours stand behind points. Throws ReadError that names
/// the line of a fault.
MeshData read_obj(const File& file);

}  // namespace zol::engine
