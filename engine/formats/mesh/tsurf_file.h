// Reads GOCAD TSurf files.
#pragma once

#include "engine/formats/file.h"
#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

/// Reads all the surfaces of a file as one mesh, with the look of the one of most triangles.
/// Where z is a depth it is turned into a height, and the triangles with it. Values of points
/// are passed over. Attributes besides the usual ones: the keys of each header under their own
/// names, "coordinate_system", "units" and "property" for each property of the points. Throws
/// ReadError that names the line of a fault, and for other kinds of object.
MeshData read_tsurf(const File& file);

}  // namespace zol::engine
