// Reads OFF files: the text form and the binary one, with all the letters in front of the name.
#pragma once

#include "engine/formats/file.h"
#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

/// Reads vertices and faces, which are parted into triangles; the colour is that of most
/// triangles whose face has one. Normals, texture coordinates and colours of vertices are
/// passed over. Throws ReadError that says where a fault is, and where the counts of the
/// header and the file disagree.
MeshData read_off(const File& file);

}  // namespace zol::engine
